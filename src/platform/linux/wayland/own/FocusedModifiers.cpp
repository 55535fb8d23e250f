#include "platform/linux/wayland/own/FocusedModifiers.h"

#include "platform/SignalWait.h"
#include "platform/linux/LaterPointer.h"
#include "platform/linux/wayland/Toplevels.h"
#include "platform/linux/wayland/own/KeyboardWatch.h"

#include <QDeadlineTimer>
#include <QPainter>
#include <QPointer>
#include <QRasterWindow>

#include <algorithm>

namespace quillmender::wayland {

using namespace std::chrono_literals;

namespace {

constexpr auto patience = 1s;
constexpr auto wayBack = 500ms; // it takes a tenth of that

/// As small and as invisible as a window can be that the keyboard goes to.
class ListeningWindow : public QRasterWindow {
  public:
    ListeningWindow() {
        setFlags(Qt::Window | Qt::FramelessWindowHint);
        QSurfaceFormat seeThrough = format();
        seeThrough.setAlphaBufferSize(8);
        setFormat(seeThrough);
        resize(1, 1);
    }

  protected:
    void paintEvent(QPaintEvent *) override {
        QPainter painter(this);
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.fillRect(QRect(QPoint(), size()), Qt::transparent);
    }
};

std::chrono::milliseconds rest(const QDeadlineTimer &deadline) {
    return std::chrono::milliseconds(deadline.remainingTime());
}

} // namespace

FocusedModifiers::FocusedModifiers(const KeyboardWatch &keyboard, const Toplevels &toplevels)
    : keyboard_(keyboard),
      toplevels_(toplevels) {}

QCoro::Task<std::optional<QString>> FocusedModifiers::waitUntilUp() {
    if (keyboard_.modifiersAtDeparture(freshness) == quint32{0})
        co_return std::nullopt;
    const std::optional<Toplevel> before = toplevels_.active();
    const QPointer self(this);
    const std::optional<QString> obstacle = co_await listen();
    const QDeadlineTimer deadline(wayBack, Qt::PreciseTimer);
    while (self && before && !toplevels_.hasKeyboard(before->id) && !deadline.hasExpired())
        co_await SignalWait(&toplevels_, &Toplevels::changed, std::max(rest(deadline), 1ms));
    co_return obstacle;
}

QCoro::Task<std::optional<QString>> FocusedModifiers::listen() {
    const LaterPointer<ListeningWindow> window(new ListeningWindow);
    window->show();
    const QPointer self(this);
    const QDeadlineTimer deadline(patience, Qt::PreciseTimer);
    while (keyboard_.modifiers() != quint32{0} && !deadline.hasExpired()) {
        co_await SignalWait(&keyboard_, &KeyboardWatch::modifiersTold,
                            std::max(rest(deadline), 1ms));
        if (!self)
            co_return QStringLiteral("the program ends");
    }
    const std::optional<quint32> held = keyboard_.modifiers();
    window->hide();
    if (!held)
        co_return QStringLiteral("the compositor does not tell which modifiers are down");
    if (*held != 0)
        co_return QStringLiteral("the user holds modifiers");
    co_return std::nullopt;
}

} // namespace quillmender::wayland
