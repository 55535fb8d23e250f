#include "desktop/sessions/SettingsForm.h"

#include <X11/keysym.h>

namespace quillmender {

using harness::Accessible;
using harness::AccessibleState;
using harness::waitUntil;

namespace {
const QString title = QStringLiteral("Quillmender Settings");
} // namespace

SettingsForm::SettingsForm(harness::Desktop &desktop, qint64 programId)
    : desktop_(desktop),
      programId_(programId) {
    waitUntilShown();
}

void SettingsForm::waitUntilShown() {
    waitUntil(
        [&] {
            const xcb_window_t window = desktop_.windows().titled(title);
            return window != XCB_WINDOW_NONE && desktop_.windows().active() == window;
        },
        QStringLiteral("the settings are shown and active"));
}

Accessible SettingsForm::field(const char *label) {
    std::optional<Accessible> found;
    const auto isIt = [label](const Accessible &widget) {
        return widget.name() == QLatin1String(label) &&
               widget.interfaces().contains(QStringLiteral("org.a11y.atspi.EditableText")) &&
               widget.hasState(AccessibleState::showing);
    };
    waitUntil(
        [&] {
            found = desktop_.accessible().find(programId_, isIt);
            return found.has_value();
        },
        QStringLiteral("there is a field %1").arg(QLatin1String(label)));
    return *found;
}

Accessible SettingsForm::fill(const char *label, const QString &text) {
    const Accessible target = field(label);
    desktop_.input().click(target.extents().center());
    waitUntil([&] { return target.hasState(AccessibleState::focused); },
              QStringLiteral("the field has the focus"));
    desktop_.input().chord({XK_Control_L, XK_a});
    desktop_.input().type(text);
    return target;
}

void SettingsForm::close() {
    desktop_.windows().close(desktop_.windows().titled(title));
    waitUntil([&] { return desktop_.windows().titled(title) == XCB_WINDOW_NONE; },
              QStringLiteral("the settings are closed"));
}

} // namespace quillmender
