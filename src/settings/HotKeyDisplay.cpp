#include "settings/HotKeyDisplay.h"

#include <QKeySequence>
#include <QStringList>

#include <utility>

namespace quillmender {

QString hotKeyDisplay(QKeyCombination keys) {
    const std::pair<Qt::KeyboardModifier, QString> modifiers[] = {
        {Qt::ControlModifier, QStringLiteral("Control")},
        {Qt::AltModifier, QStringLiteral("Option")},
        {Qt::ShiftModifier, QStringLiteral("Shift")},
        {Qt::MetaModifier, QStringLiteral("Command")},
    };
    QStringList names;
    for (const auto &[modifier, name] : modifiers)
        if (keys.keyboardModifiers().testFlag(modifier))
            names.append(name);
    names.append(QKeySequence(keys.key()).toString(QKeySequence::PortableText));
    return names.join(QStringLiteral(" + "));
}

} // namespace quillmender
