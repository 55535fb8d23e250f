#include "app/StatusMenu.h"

#include "platform/Symbols.h"

namespace quillmender {

namespace {
constexpr int updateMenuItem = 2;
constexpr Qt::KeyboardModifiers command = Qt::MetaModifier;
} // namespace

StatusMenu::StatusMenu(StatusItem &statusItem, Handlers handlers)
    : statusItem_(statusItem),
      handlers_(std::move(handlers)) {}

void StatusMenu::show() {
    // The same chord as the hot key's.
    const QKeyCombination transform(Qt::ControlModifier | Qt::AltModifier, Qt::Key_Space);
    statusItem_.show({
        programSymbol,
        QStringLiteral("Quillmender"),
        QStringLiteral("Quillmender"),
        {
            {QStringLiteral("Transform"), transform, false, handlers_.transformSelection},
            {QStringLiteral("Settings"), QKeyCombination(command, Qt::Key_Comma), false,
             handlers_.openSettings},
            {QStringLiteral("Download Latest Version"), std::nullopt, true,
             handlers_.openAvailableUpdate},
            {QStringLiteral("About"), std::nullopt, false, handlers_.openAbout},
            {QStringLiteral("Quit Quillmender"), QKeyCombination(command, Qt::Key_Q), false,
             handlers_.quit},
        },
    });
}

void StatusMenu::offerUpdate(const QString &version) {
    statusItem_.updateMenuItem(updateMenuItem, QStringLiteral("Download Quillmender ") + version,
                               false);
}

} // namespace quillmender
