#include "platform/linux/wayland/own/WindowPanel.h"

#include "platform/ApplicationId.h"

#include <QRegularExpression>

#include <utility>

namespace quillmender::wayland {

namespace {

QString exactly(const QString &text) {
    return u'^' + QRegularExpression::escape(text).replace(u'\\', QStringLiteral("\\\\")) + u'$';
}

// What else is called the program's name is no panel: the other windows' titles say more.
QString floatingRule(const QString &appId, const QString &title) {
    return QStringLiteral("for_window [app_id=\"%1\" title=\"%2\"] floating enable, sticky enable, "
                          "border none, move position center")
        .arg(exactly(appId), exactly(title));
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
        swayCommand_(floatingRule(QString::fromLatin1(applicationId), panel_->title()));
}

void WindowPanel::takeKeyboard() {
    if (panel_)
        panel_->requestActivate();
}

} // namespace quillmender::wayland
