#include "desktop/harness/wayland/WaylandClipboardProbe.h"

#include "desktop/harness/HarnessError.h"
#include "wlr-data-control-unstable-v1-client-protocol.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace quillmender::harness {

ClipboardContents WaylandClipboardProbe::read(std::chrono::milliseconds deadline) {
    ClipboardContents contents;
    const DataControl::Offer *offer = control_.current(kind_);
    if (offer == nullptr)
        return contents;
    contents.targets = offer->types;
    // An order to the owner, which answers it with nothing, and some not at all.
    contents.targets.removeAll("SAVE_TARGETS");
    for (const QByteArray &type : std::as_const(contents.targets))
        contents.representations.append({type, type, 8, receive(*offer, type, deadline)});
    return contents;
}

std::optional<QByteArray> WaylandClipboardProbe::readType(const QByteArray &type,
                                                          std::chrono::milliseconds deadline) {
    const DataControl::Offer *offer = control_.current(kind_);
    if (offer == nullptr || !offer->types.contains(type))
        return std::nullopt;
    return receive(*offer, type, deadline);
}

std::optional<QByteArray> WaylandClipboardProbe::readText(std::chrono::milliseconds deadline) {
    for (const char *type : {"text/plain;charset=utf-8", "UTF8_STRING", "text/plain"}) {
        if (const auto bytes = readType(type, deadline))
            return bytes;
    }
    return std::nullopt;
}

QString WaylandClipboardProbe::text() {
    return QString::fromUtf8(readText().value_or(QByteArray()));
}

QByteArray WaylandClipboardProbe::receive(const DataControl::Offer &offer, const QByteArray &type,
                                          std::chrono::milliseconds deadline) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        throw HarnessError(QStringLiteral("no pipe"));
    zwlr_data_control_offer_v1_receive(offer.object.get(), type.constData(), ends[1]);
    wl_display_flush(control_.client().display());
    ::close(ends[1]);
    ::fcntl(ends[0], F_SETFL, O_NONBLOCK);
    QByteArray bytes;
    const auto isAtTheEnd = [&] {
        std::array<char, 65536> part{};
        ssize_t count = 0;
        while ((count = ::read(ends[0], part.data(), part.size())) > 0)
            bytes.append(part.data(), count);
        return count == 0 || errno != EAGAIN;
    };
    const bool isWhole = becomesTrue(isAtTheEnd, deadline);
    ::close(ends[0]);
    if (!isWhole)
        throw HarnessError(QStringLiteral("the owner of the clipboard does not come to the end of "
                                          "%1: %2 bytes")
                               .arg(QString::fromUtf8(type))
                               .arg(bytes.size()));
    return bytes;
}

} // namespace quillmender::harness
