#include "platform/linux/wayland/own/WindowPanel.h"

#include "platform/ApplicationId.h"

#include <QRegularExpression>

#include <utility>

namespace quillmender::wayland {

namespace {

QString exactly(const QString &text) {
    return u'^' + QRegularExpression::escape(text) + u'$';
}

// What else is called the program's name is no panel: the other windows' titles say more.
// A rule of its own for each: what comes after a comma is carried out at once, on whatever window
// has the keyboard.
QString floatingRules(const QString &appId, const QString &title) {
    const QString window =
        QStringLiteral("[app_id=\"%1\" title=\"%2\"] ").arg(exactly(appId), exactly(title));
    QStringList rules;
    for (const char *command :
         {"floating enable", "sticky enable", "border none", "move position center"})
        rules.append(QStringLiteral("for_window ") + window + QLatin1String(command));
    return rules.join(QStringLiteral("; "));
}

} // namespace

WindowPanel::WindowPanel(std::function<void(const QString &)> swayCommand)
    : swayCommand_(std::move(swayCommand)) {}

void WindowPanel::prepare(QWindow &panel) {
    panel_ = &panel;
    panel.setFlag(Qt::FramelessWindowHint);
}

void WindowPanel::aboutToShow(bool) {
    // Each time, since a reload of the configuration takes it away; one that is known is kept once.
    if (swayCommand_ && panel_)
        swayCommand_(floatingRules(QString::fromLatin1(applicationId), panel_->title()));
}

void WindowPanel::takeKeyboard() {
    if (panel_)
        panel_->requestActivate();
}

} // namespace quillmender::wayland
