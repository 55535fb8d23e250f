#include "platform/linux/wayland/keys/CompositorLines.h"

#include "platform/ApplicationId.h"
#include "platform/Instance.h"
#include "platform/linux/KeySymbol.h"
#include "platform/linux/wayland/sway/SwayBindings.h"

#include <QKeySequence>
#include <QStringList>

namespace quillmender::wayland {

namespace {

QString symbolName(Qt::Key key) {
    char name[64] = "";
    xkb_keysym_get_name(symbolOf(key), name, sizeof name);
    return QString::fromLatin1(name);
}

/// As Openbox writes it: C-A-space.
QString spelledForLabwc(QKeyCombination keys) {
    const Qt::KeyboardModifiers modifiers = keys.keyboardModifiers();
    QStringList parts;
    if (modifiers.testFlag(Qt::ControlModifier))
        parts.append(QStringLiteral("C"));
    if (modifiers.testFlag(Qt::AltModifier))
        parts.append(QStringLiteral("A"));
    if (modifiers.testFlag(Qt::ShiftModifier))
        parts.append(QStringLiteral("S"));
    if (modifiers.testFlag(Qt::MetaModifier))
        parts.append(QStringLiteral("W"));
    parts.append(symbolName(keys.key()));
    return parts.join(u'-');
}

} // namespace

QString transformCommand() {
    return QStringLiteral("gapplication action %1 %2")
        .arg(QLatin1String(applicationId), QLatin1String(instanceAction::transform));
}

CompositorLines linesForSway(QKeyCombination keys) {
    return {.file = QStringLiteral("~/.config/sway/config"),
            .place = QStringLiteral("at the end"),
            .lines = QStringLiteral("bindsym --no-repeat %1 exec %2\n")
                         .arg(sway::spelled(keys), transformCommand()),
            .after = QStringLiteral("swaymsg reload")};
}

CompositorLines linesForLabwc(QKeyCombination keys) {
    return {.file = QStringLiteral("~/.config/labwc/rc.xml"),
            // With a key binding of its own and without that word the file has no others.
            .place = QStringLiteral("inside <keyboard>, which has <default/> too if you want "
                                    "the usual key bindings"),
            .lines = QStringLiteral("<keybind key=\"%1\">\n"
                                    "  <action name=\"Execute\" command=\"%2\"/>\n"
                                    "</keybind>\n")
                         .arg(spelledForLabwc(keys), transformCommand()),
            .after = QStringLiteral("labwc --reconfigure")};
}

CompositorLines linesForAny(QKeyCombination keys) {
    return {.file = {},
            .place = QStringLiteral("as the command for %1")
                         .arg(QKeySequence(keys).toString(QKeySequence::PortableText)),
            .lines = transformCommand() + u'\n',
            .after = {}};
}

} // namespace quillmender::wayland
