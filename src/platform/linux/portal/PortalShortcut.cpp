#include "platform/linux/portal/PortalShortcut.h"

#include <QDBusMetaType>
#include <QKeySequence>

#include <algorithm>
#include <array>
#include <xkbcommon/xkbcommon.h>

namespace quillmender::portal {

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut) {
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

// NOLINTBEGIN(bugprone-return-const-ref-from-parameter): the signature that the bus library wants
const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut) {
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}
// NOLINTEND(bugprone-return-const-ref-from-parameter)

void registerPortalShortcuts() {
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<PortalShortcuts>();
}

std::optional<PortalShortcut> findShortcut(const QVariant &shortcuts, const QString &id) {
    if (!shortcuts.canConvert<QDBusArgument>())
        return std::nullopt;
    const auto argument = shortcuts.value<QDBusArgument>();
    if (argument.currentSignature() != QStringLiteral("a(sa{sv})"))
        return std::nullopt;
    const auto list = qdbus_cast<PortalShortcuts>(argument);
    const auto found = std::ranges::find(list, id, &PortalShortcut::id);
    return found == list.end() ? std::nullopt : std::optional(*found);
}

QString triggerFor(QKeyCombination keys) {
    // Both number these keys by the character, one by the capital letter, the other by the small.
    if (keys.key() < Qt::Key_Space || keys.key() > Qt::Key_AsciiTilde)
        return {};
    const xkb_keysym_t symbol = QChar::toLower(static_cast<char32_t>(keys.key()));
    std::array<char, 64> name{};
    if (xkb_keysym_get_name(symbol, name.data(), name.size()) <= 0)
        return {};
    QString trigger;
    const Qt::KeyboardModifiers modifiers = keys.keyboardModifiers();
    if (modifiers.testFlag(Qt::ControlModifier))
        trigger += QStringLiteral("CTRL+");
    if (modifiers.testFlag(Qt::AltModifier))
        trigger += QStringLiteral("ALT+");
    if (modifiers.testFlag(Qt::ShiftModifier))
        trigger += QStringLiteral("SHIFT+");
    if (modifiers.testFlag(Qt::MetaModifier))
        trigger += QStringLiteral("LOGO+");
    return trigger + QLatin1String(name.data());
}

std::optional<QKeyCombination> keysOf(const PortalShortcut &shortcut, QKeyCombination asked) {
    QString words =
        shortcut.properties.value(QStringLiteral("trigger_description")).toString().trimmed();
    if (words.isEmpty())
        return std::nullopt;
    // One desktop writes Ctrl+Alt+Space, another one Press <Control><Alt>space.
    if (words.contains(QLatin1Char('<')))
        words.remove(0, words.indexOf(QLatin1Char('<')));
    words.remove(QLatin1Char('<'));
    words.replace(QLatin1Char('>'), QLatin1Char('+'));
    words.replace(QStringLiteral("Control+"), QStringLiteral("Ctrl+"), Qt::CaseInsensitive);
    words.replace(QStringLiteral("Primary+"), QStringLiteral("Ctrl+"), Qt::CaseInsensitive);
    words.replace(QStringLiteral("Super+"), QStringLiteral("Meta+"), Qt::CaseInsensitive);
    const QKeySequence sequence = QKeySequence::fromString(words, QKeySequence::PortableText);
    if (sequence.count() != 1 || sequence[0].key() == Qt::Key_unknown)
        return asked;
    return sequence[0];
}

} // namespace quillmender::portal
