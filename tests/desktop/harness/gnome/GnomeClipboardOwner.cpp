#include "desktop/harness/gnome/GnomeClipboardOwner.h"

#include "desktop/harness/Waiter.h"

#include <QDBusArgument>
#include <QDBusUnixFileDescriptor>

#include <csignal>
#include <poll.h>
#include <unistd.h>

namespace quillmender::harness {

namespace {

constexpr int writeDeadlineMs = 20000;

void writeAll(int pipe, const QByteArray &bytes, const std::stop_token &stop) {
    qsizetype written = 0;
    while (written < bytes.size() && !stop.stop_requested()) {
        pollfd state{.fd = pipe, .events = POLLOUT, .revents = 0};
        if (::poll(&state, 1, writeDeadlineMs) <= 0 || (state.revents & (POLLERR | POLLHUP)) != 0)
            break;
        const ssize_t count =
            ::write(pipe, bytes.constData() + written, static_cast<size_t>(bytes.size() - written));
        if (count < 0 && errno != EAGAIN)
            break;
        written += std::max<ssize_t>(0, count);
    }
    ::close(pipe);
}

} // namespace

GnomeClipboardOwner::GnomeClipboardOwner(const QDBusConnection &bus,
                                         QList<ClipboardRepresentation> offer)
    : control_(bus),
      offer_(std::move(offer)) {
    std::signal(SIGPIPE, SIG_IGN);
    const auto listen = [this](const char *name, const char *slot) {
        control_.bus().connect(RemoteControl::service(), control_.path(),
                               RemoteControl::interface(), QLatin1String(name), this, slot);
    };
    listen("SelectionOwnerChanged", SLOT(handleOwner(QDBusMessage)));
    listen("SelectionTransfer", SLOT(handleTransfer(QDBusMessage)));
    QStringList types;
    for (const ClipboardRepresentation &each : std::as_const(offer_))
        types.append(QString::fromUtf8(each.target));
    control_.call(QStringLiteral("EnableClipboard"), {QVariantMap()});
    control_.call(QStringLiteral("SetSelection"),
                  {QVariantMap{{QStringLiteral("mime-types"), types}}});
    waitUntil([this] { return owns_; }, QStringLiteral("the clipboard is taken"));
}

GnomeClipboardOwner::~GnomeClipboardOwner() = default;

void GnomeClipboardOwner::handleOwner(const QDBusMessage &signal) {
    const auto options = qdbus_cast<QVariantMap>(signal.arguments().value(0));
    owns_ = options.value(QStringLiteral("session-is-owner")).toBool();
}

void GnomeClipboardOwner::handleTransfer(const QDBusMessage &signal) {
    const QByteArray type = signal.arguments().value(0).toString().toUtf8();
    const uint serial = signal.arguments().value(1).toUInt();
    requests_.append(type);
    const auto pipe = control_.call(QStringLiteral("SelectionWrite"), {serial})
                          .value(0)
                          .value<QDBusUnixFileDescriptor>();
    QByteArray bytes;
    for (const ClipboardRepresentation &each : std::as_const(offer_)) {
        if (each.target == type)
            bytes = each.bytes;
    }
    // A reader can be slow, and can be the one that waits for this event loop.
    writers_.emplace_back([descriptor = ::dup(pipe.fileDescriptor()), bytes](
                              const std::stop_token &stop) { writeAll(descriptor, bytes, stop); });
    control_.tryCall(QStringLiteral("SelectionWriteDone"), {serial, true});
}

} // namespace quillmender::harness
