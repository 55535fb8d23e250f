#include "platform/linux/wayland/own/KeyboardArrival.h"

#include <QGuiApplication>
#include <QLoggingCategory>

#include <utility>

namespace quillmender::wayland {

namespace {

using namespace std::chrono_literals;

Q_LOGGING_CATEGORY(log, "quillmender.wayland", QtWarningMsg)

constexpr auto comesByItself = 200ms; ///< in 5 to 150 ms where it comes
constexpr auto comesWhenAsked = 1s;

} // namespace

KeyboardArrival::KeyboardArrival() {
    patience_.setSingleShot(true);
    connect(&patience_, &QTimer::timeout, this, &KeyboardArrival::look);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow *focus) {
        if (focus && focus == window_)
            forget();
    });
}

void KeyboardArrival::await(QWindow &window, std::function<void()> insist) {
    if (QGuiApplication::focusWindow() == &window) {
        forget();
        return;
    }
    window_ = &window;
    insist_ = std::move(insist);
    patience_.start(comesByItself);
}

void KeyboardArrival::forget() {
    patience_.stop();
    window_.clear();
    insist_ = nullptr;
}

void KeyboardArrival::look() {
    if (!window_ || !window_->isVisible()) {
        forget();
    } else if (const auto insist = std::exchange(insist_, nullptr)) {
        patience_.start(comesWhenAsked);
        insist();
    } else {
        // It can be used with the pointer, and a click brings it the keyboard.
        qCWarning(log, "the compositor gives the keyboard to another window than ours");
        QWindow *const window = window_;
        forget();
        Q_EMIT withheld(window);
    }
}

} // namespace quillmender::wayland
