#include "desktop/harness/gnome/GnomeClipboardProbe.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

#include <QDBusArgument>
#include <QDBusUnixFileDescriptor>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace quillmender::harness {

namespace {

// A list of names alone in a structure.
QStringList namesIn(const QVariant &value) {
    if (value.canConvert<QStringList>() && value.userType() != qMetaTypeId<QDBusArgument>())
        return value.toStringList();
    QStringList names;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentType() != QDBusArgument::StructureType)
        return names;
    argument.beginStructure();
    argument >> names;
    argument.endStructure();
    return names;
}

} // namespace

GnomeClipboardProbe::GnomeClipboardProbe(const QDBusConnection &bus) : control_(bus) {
    control_.bus().connect(RemoteControl::service(), control_.path(), RemoteControl::interface(),
                           QStringLiteral("SelectionOwnerChanged"), this,
                           SLOT(handleOwner(QDBusMessage)));
    control_.call(QStringLiteral("EnableClipboard"), {QVariantMap()});
    // Of an empty clipboard nothing is told.
    constexpr std::chrono::milliseconds longEnough{700};
    becomesTrue([this] { return isTold_; }, longEnough);
}

void GnomeClipboardProbe::handleOwner(const QDBusMessage &signal) {
    const auto options = qdbus_cast<QVariantMap>(signal.arguments().value(0));
    types_.clear();
    for (const QString &type : namesIn(options.value(QStringLiteral("mime-types"))))
        types_.append(type.toUtf8());
    isTold_ = true;
}

ClipboardContents GnomeClipboardProbe::read(std::chrono::milliseconds deadline) {
    ClipboardContents contents;
    contents.targets = types_;
    // An order to the owner, which answers it with nothing, and some not at all.
    contents.targets.removeAll("SAVE_TARGETS");
    for (const QByteArray &type : std::as_const(contents.targets))
        contents.representations.append({type, type, 8, receive(type, deadline)});
    return contents;
}

std::optional<QByteArray> GnomeClipboardProbe::readText(std::chrono::milliseconds deadline) {
    for (const char *type : {"text/plain;charset=utf-8", "UTF8_STRING", "text/plain"}) {
        if (types_.contains(type))
            return receive(type, deadline);
    }
    return std::nullopt;
}

QByteArray GnomeClipboardProbe::receive(const QByteArray &type,
                                        std::chrono::milliseconds deadline) {
    std::optional<QVariantList> answer;
    // For a moment after its end the shell takes the reading before for one that goes on.
    waitUntil(
        [&] {
            answer = control_.tryCall(QStringLiteral("SelectionRead"), {QString::fromUtf8(type)});
            return answer.has_value();
        },
        QStringLiteral("the clipboard is read as %1").arg(QString::fromUtf8(type)), deadline);
    const auto pipe = answer->value(0).value<QDBusUnixFileDescriptor>();
    ::fcntl(pipe.fileDescriptor(), F_SETFL, O_NONBLOCK);
    QByteArray bytes;
    const auto isAtTheEnd = [&] {
        std::array<char, 65536> part{};
        ssize_t count = 0;
        while ((count = ::read(pipe.fileDescriptor(), part.data(), part.size())) > 0)
            bytes.append(part.data(), count);
        return count == 0 || errno != EAGAIN;
    };
    if (!becomesTrue(isAtTheEnd, deadline))
        throw HarnessError(QStringLiteral("the owner of the clipboard does not come to the end of "
                                          "%1: %2 bytes")
                               .arg(QString::fromUtf8(type))
                               .arg(bytes.size()));
    return bytes;
}

} // namespace quillmender::harness
