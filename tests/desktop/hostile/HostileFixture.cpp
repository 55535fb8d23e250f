#include "desktop/hostile/HostileFixture.h"

#include <QFile>

#include <algorithm>
#include <array>

namespace quillmender {

using harness::TestApplication;
using harness::waitUntil;

void HostileFixture::start() {
    start({});
}

void HostileFixture::start(const harness::Desktop::Options &options) {
    startDesktop(options);
    startProgram();
    watchResponsiveness();
}

TestApplication &HostileFixture::openLetter(Route route) {
    if (route == Route::accessibility) {
        source_ = TestApplication::mousepad(desktop(), letter);
        text_ = source_->focusedText();
        waitUntil([&] { return text_->text() == letter; }, QStringLiteral("the letter is open"));
    } else {
        QFile file(desktop().folders().home() + QStringLiteral("/letter.txt"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(letter.toUtf8());
        file.close();
        source_.emplace(desktop(), QStringLiteral("env"),
                        QStringList{QStringLiteral("NO_AT_BRIDGE=1"), QStringLiteral("mousepad"),
                                    QStringLiteral("--disable-server"), file.fileName()});
    }
    selectByKeyboard(input(), letter, wrong);
    waitUntilSelected(wrong);
    if (text_)
        waitUntil([&] { return text_->selectedText() == wrong; }, QStringLiteral("it is selected"));
    return *source_;
}

void HostileFixture::forgetSource() {
    text_.reset();
    source_.reset();
}

void HostileFixture::askForAnswer() {
    answerLater(right);
    pressHotKey();
    waitForPanel(wrong);
    click(QStringLiteral("Fix My Grammar"));
    waitForRequest();
}

void HostileFixture::waitForTemporaryText() {
    harness::ClipboardProbe probe(desktop().display());
    // What marks a text that no clipboard manager is to keep.
    waitUntil([&] { return probe.readTarget("x-kde-passwordManagerHint").has_value(); },
              QStringLiteral("the clipboard is borrowed"));
}

void HostileFixture::waitUntilClipboardIsBack() {
    harness::ClipboardProbe probe(desktop().display());
    waitUntil([&] { return !probe.readTarget("x-kde-passwordManagerHint").has_value(); },
              QStringLiteral("the clipboard is given back"));
}

bool HostileFixture::isPanelGone() {
    return desktop().windows().titled(QStringLiteral("Quillmender")) == XCB_WINDOW_NONE;
}

bool HostileFixture::isSessionReplaced() {
    bool isFailure = false;
    waitUntil(
        [&] {
            isFailure = panelShows(notReplaced);
            return isFailure || isPanelGone();
        },
        QStringLiteral("the session is over"));
    return !isFailure;
}

void HostileFixture::expectText(const QString &text) {
    if (!text_)
        return expectTextByCopying(text);
    harness::becomesTrue([&] { return text_->text() == text; });
    EXPECT_EQ(text_->text(), text);
}

void HostileFixture::waitUntilSourceActs() {
    // The selection that it had is another one when it has come to these keys.
    input().chord({XK_Control_L, XK_Home});
    input().chord({XK_Shift_L, XK_Right});
    waitUntilSelected(letter.left(1));
}

void HostileFixture::sendToWindowManager(xcb_window_t window, const char *type, quint32 first,
                                         quint32 second) {
    harness::XcbConnection &connection = desktop().connection();
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = connection.atom(type);
    std::ranges::copy(std::array{first, second}, event.data.data32);
    xcb_send_event(connection.get(), 0, connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&event));
    connection.roundTrip();
}

void HostileFixture::expectNeverBlocked() {
    using namespace std::chrono_literals;
    const auto longest = responsiveness_->longestWait();
    const auto machine = responsiveness_->longestWaitOfBystander();
    RecordProperty("longestWaitMs", static_cast<int>(longest.count()));
    RecordProperty("longestWaitOfBystanderMs", static_cast<int>(machine.count()));
    constexpr int workOfTheProgram = 5;
    // A call that waits for a partner that is silent takes seconds. The toolkit itself stops for a
    // third of a second at a silent accessibility bus.
    EXPECT_LE(longest, 500ms + workOfTheProgram * machine)
        << "the main thread was blocked; the machine itself takes " << machine.count() << " ms";
}

void HostileFixture::TearDown() {
    if (responsiveness_)
        expectNeverBlocked();
    responsiveness_.reset();
    SessionFixture::TearDown();
    forgetSource();
}

} // namespace quillmender
