#include "platform/linux/wayland/sway/SwayBindings.h"

#include "platform/linux/KeySymbol.h"
#include "platform/linux/wayland/keys/OwnKeymap.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace quillmender::sway {

namespace {

using wayland::OwnKeymap;

constexpr auto control = "Ctrl";

/// The modifiers by the names that the compositor knows, each to one of them; locks to nothing,
/// since it does not look at them.
std::optional<QString> modifierNamed(const QString &name) {
    static const QHash<QString, QString> names{
        {QStringLiteral("shift"), QStringLiteral("Shift")},
        {QStringLiteral("ctrl"), QLatin1String(control)},
        {QStringLiteral("control"), QLatin1String(control)},
        {QStringLiteral("alt"), QStringLiteral("Mod1")},
        {QStringLiteral("mod1"), QStringLiteral("Mod1")},
        {QStringLiteral("mod3"), QStringLiteral("Mod3")},
        {QStringLiteral("super"), QStringLiteral("Mod4")},
        {QStringLiteral("logo"), QStringLiteral("Mod4")},
        {QStringLiteral("win"), QStringLiteral("Mod4")},
        {QStringLiteral("mod4"), QStringLiteral("Mod4")},
        {QStringLiteral("mod5"), QStringLiteral("Mod5")},
        {QStringLiteral("lock"), QString()},
        {QStringLiteral("caps"), QString()},
        {QStringLiteral("mod2"), QString()},
    };
    const auto found = names.constFind(name.toLower());
    return found == names.cend() ? std::nullopt : std::optional(*found);
}

QStringList modifiersOf(QKeyCombination keys) {
    const Qt::KeyboardModifiers modifiers = keys.keyboardModifiers();
    QStringList names;
    if (modifiers.testFlag(Qt::ControlModifier))
        names.append(QLatin1String(control));
    if (modifiers.testFlag(Qt::ShiftModifier))
        names.append(QStringLiteral("Shift"));
    if (modifiers.testFlag(Qt::AltModifier))
        names.append(QStringLiteral("Mod1"));
    if (modifiers.testFlag(Qt::MetaModifier))
        names.append(QStringLiteral("Mod4"));
    return names;
}

/// Which key types the symbol is a matter of the keyboard's map: all that the configuration names,
/// and the one that a configuration without any has.
QSet<QString> keyCodesOf(xkb_keysym_t symbol, const QStringList &configuration) {
    QSet<QByteArray> layouts{"us", {}};
    for (const QString &line : configuration) {
        const QStringList words = line.split(u' ');
        const qsizetype at = words.indexOf(QStringLiteral("xkb_layout"));
        if (at >= 0)
            layouts.insert(words.value(at + 1).remove(u'"').toUtf8());
    }
    QSet<QString> codes;
    for (const QByteArray &layout : std::as_const(layouts)) {
        const auto keymap = OwnKeymap::make(layout);
        if (!keymap)
            continue;
        for (const quint32 key : keymap->keysOf(symbol))
            codes.insert(QString::number(key + OwnKeymap::codeOffset));
    }
    return codes;
}

QString unquoted(QString word) {
    for (const QChar sign : {u'"', u'\'', u';', u','})
        word.remove(sign);
    return word;
}

/// The combinations that a line binds, wherever in it: a binding can be made by another one.
QStringList boundIn(const QString &line, bool isInBlock) {
    const QStringList words = line.split(u' ');
    QStringList bound;
    bool isExpected = isInBlock;
    for (const QString &written : words) {
        const QString word = unquoted(written);
        const QString command = word.toLower();
        if (command == QStringLiteral("bindsym") || command == QStringLiteral("bindcode")) {
            isExpected = true;
        } else if (isExpected && !word.startsWith(QStringLiteral("--"))) {
            bound.append(word);
            isExpected = false;
        }
    }
    return bound;
}

bool beginsBlockOfBindings(const QString &line) {
    const QString command = line.section(u' ', 0, 0).toLower();
    return line.endsWith(u'{') &&
           (command == QStringLiteral("bindsym") || command == QStringLiteral("bindcode"));
}

} // namespace

QString spelled(QKeyCombination keys) {
    const xkb_keysym_t symbol = symbolOf(keys.key());
    char name[64];
    if (symbol == XKB_KEY_NoSymbol || xkb_keysym_get_name(symbol, name, sizeof name) <= 0)
        return {};
    QStringList parts = modifiersOf(keys);
    parts.append(QString::fromLatin1(name));
    return parts.join(u'+');
}

std::optional<QString> bindingOf(QKeyCombination keys, const QStringList &configuration) {
    const xkb_keysym_t symbol = symbolOf(keys.key());
    QStringList wanted = modifiersOf(keys);
    wanted.sort();
    std::optional<QSet<QString>> codes; // seldom asked for, and it takes some milliseconds
    const auto isKey = [&](const QString &name) {
        const xkb_keysym_t named =
            xkb_keysym_from_name(name.toUtf8().constData(), XKB_KEYSYM_CASE_INSENSITIVE);
        if (named != XKB_KEY_NoSymbol && xkb_keysym_to_lower(named) == xkb_keysym_to_lower(symbol))
            return true;
        bool isNumber = false;
        name.toUInt(&isNumber);
        if (!isNumber)
            return false;
        if (!codes)
            codes = keyCodesOf(symbol, configuration);
        return codes->contains(name);
    };
    const auto isSame = [&](const QString &combination) {
        QStringList modifiers;
        int others = 0;
        bool hasKey = false;
        for (const QString &part : combination.split(u'+')) {
            if (const auto modifier = modifierNamed(part)) {
                if (!modifier->isEmpty() && !modifiers.contains(*modifier))
                    modifiers.append(*modifier);
            } else if (isKey(part)) {
                hasKey = true;
            } else if (!part.startsWith(QStringLiteral("Group"), Qt::CaseInsensitive)) {
                ++others;
            }
        }
        modifiers.sort();
        return hasKey && others == 0 && modifiers == wanted;
    };
    bool isInBlock = false;
    for (const QString &line : configuration) {
        if (std::ranges::any_of(boundIn(line, isInBlock), isSame))
            return line;
        if (beginsBlockOfBindings(line))
            isInBlock = true;
        else if (line.startsWith(u'}'))
            isInBlock = false;
    }
    return std::nullopt;
}

} // namespace quillmender::sway
