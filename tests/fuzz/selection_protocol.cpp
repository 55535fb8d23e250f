#include "desktop/harness/XServer.h"
#include "desktop/x11/ScriptedOwner.h"
#include "fuzz/Require.h"
#include "platform/linux/x11/selection/SelectionReader.h"
#include "platform/linux/x11/selection/SelectionText.h"
#include "support/RunTask.h"

#include <QCoreApplication>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <fuzzer/FuzzedDataProvider.h>

using namespace quillmender;
using namespace quillmender::x11;
using fuzz::require;

namespace {

constexpr std::array targetNames{"UTF8_STRING",   "STRING",    "TEXT",
                                 "COMPOUND_TEXT", "text/html", "image/png"};
constexpr std::array typeNames{"UTF8_STRING", "STRING", "ATOM", "INTEGER", "COMPOUND_TEXT", "INCR"};
constexpr std::size_t mostBytes = 200;

X11Property takeProperty(FuzzedDataProvider &input, ScriptedOwner &owner) {
    X11Property property;
    property.type = owner.atom(input.PickValueInArray(typeNames));
    property.format = input.PickValueInArray({std::uint8_t{8}, std::uint8_t{16}, std::uint8_t{32}});
    property.value = QByteArray::fromStdString(input.ConsumeRandomLengthString(mostBytes));
    property.value.chop(property.value.size() % (property.format / 8));
    // An announcement that nothing follows would only wait for the deadline.
    if (property.type == owner.atom("INCR"))
        property.type = owner.atom("ATOM");
    return property;
}

/// Announces a transfer and then hands over chunks that need not fit each other.
class ChunkSender : public QObject {
  public:
    ChunkSender(ScriptedOwner &owner, const xcb_selection_request_event_t &request,
                std::deque<X11Property> chunks)
        : QObject(&owner),
          owner_(owner),
          request_(request),
          chunks_(std::move(chunks)) {
        const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(connection().xcb(), request.requestor, XCB_CW_EVENT_MASK,
                                     &events);
        connect(&connection(), &X11Connection::eventReceived, this, &ChunkSender::handleEvent);
        writeCardinals(connection(), request.requestor, request.property, owner.atom("INCR"), {1});
        owner.notify(request, request.property);
    }

  private:
    X11Connection &connection() { return owner_.connection(); }

    void handleEvent(const xcb_generic_event_t *event) {
        if (eventType(event) != XCB_PROPERTY_NOTIFY)
            return;
        const auto &change = eventCast<xcb_property_notify_event_t>(event);
        const bool isMine = change.window == request_.requestor &&
                            change.atom == request_.property && change.state == XCB_PROPERTY_DELETE;
        if (!isMine || isEnded_)
            return;
        if (chunks_.empty()) {
            isEnded_ = true;
            writeProperty(connection(), request_.requestor, request_.property,
                          {owner_.atom("STRING"), 8, {}});
        } else {
            writeProperty(connection(), request_.requestor, request_.property, chunks_.front());
            chunks_.pop_front();
        }
        xcb_flush(connection().xcb());
    }

    ScriptedOwner &owner_;
    xcb_selection_request_event_t request_;
    std::deque<X11Property> chunks_;
    bool isEnded_ = false;
};

void offerOne(FuzzedDataProvider &input, ScriptedOwner &owner, const char *name) {
    enum class Way { whole, refused, wrongProperty, chunks, kMaxValue = chunks };
    switch (input.ConsumeEnum<Way>()) {
    case Way::whole:
        owner.offer(name, takeProperty(input, owner));
        return;
    case Way::refused:
        owner.offerSpecially(
            name, [&owner](const auto &request) { owner.notify(request, XCB_ATOM_NONE); });
        return;
    case Way::wrongProperty:
        owner.offerSpecially(
            name, [&owner](const auto &request) { owner.notify(request, request.target); });
        return;
    case Way::chunks:
        std::deque<X11Property> chunks;
        while (chunks.size() < 4 && input.ConsumeBool())
            chunks.push_back(takeProperty(input, owner));
        owner.offerSpecially(name, [&owner, chunks](const auto &request) {
            new ChunkSender(owner, request, chunks);
        });
        return;
    }
}

X11Connection &reader(const QByteArray &display) {
    static const auto connection = X11Connection::open(display);
    require(connection != nullptr, "the X server is there");
    return *connection;
}

QByteArray startedDisplay() {
    static int count = 1;
    static std::array<char, 1> name{};
    static std::array<char *, 1> arguments{name.data()};
    static const QCoreApplication application(count, arguments.data());
    static harness::XServer server({}, QProcessEnvironment::systemEnvironment(),
                                   QStringLiteral("/dev/null"));
    return server.display().toLatin1();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const QByteArray display = startedDisplay();
    X11Connection &connection = reader(display);
    FuzzedDataProvider input(data, size);
    ScriptedOwner owner(display);
    for (const char *name : targetNames) {
        if (input.ConsumeBool())
            offerOne(input, owner, name);
    }
    if (input.ConsumeBool())
        owner.targetsAnswer = takeProperty(input, owner);

    const SelectionContents contents =
        test::runTask(SelectionReader(connection, connection.atom("CLIPBOARD")).readAll()).contents;
    require(toSelectionContents(connection, toPasteboardItems(connection, contents)) == contents,
            "what is read is what is offered again");
    findText(connection, contents);
    test::runTask(SelectionReader(connection, connection.atom("CLIPBOARD")).readText());
    return 0;
}
