#include "ui/LateAppearance.h"

#include <QEvent>
#include <QWidget>
#include <QWindow>

#include <utility>

namespace quillmender {

namespace {

// Those that are told again from what is kept of them.
bool canBeKept(QAccessible::Event type) {
    return type == QAccessible::ObjectShow || type == QAccessible::DialogStart ||
           type == QAccessible::Focus || type == QAccessible::StateChanged ||
           type == QAccessible::NameChanged || type == QAccessible::DescriptionChanged;
}

bool isWithin(const QAccessibleEvent &event, const QWidget &window) {
    const auto *widget = qobject_cast<QWidget *>(event.object());
    return widget && widget->window() == &window;
}

} // namespace

LateAppearance::LateAppearance(QWidget &window, QAccessible::UpdateHandler announce,
                               std::chrono::milliseconds longest)
    : window_(window),
      announce_(announce),
      longest_(longest) {
    limit_.setSingleShot(true);
    limit_.callOnTimeout(this, &LateAppearance::end);
}

void LateAppearance::begin() {
    window_.winId();
    window_.windowHandle()->installEventFilter(this);
    isAppearing_ = true;
    limit_.start(longest_);
}

bool LateAppearance::eventFilter(QObject * /*watched*/, QEvent *event) {
    // The window is painted by what comes after this filter.
    if (isAppearing_ && event->type() == QEvent::Expose && window_.windowHandle()->isExposed())
        limit_.start(std::chrono::milliseconds(0));
    return false;
}

bool LateAppearance::holdsBack(const QAccessibleEvent &event) {
    if (!isAppearing_ || !isWithin(event, window_))
        return false;
    if (!canBeKept(event.type())) {
        end();
        return false;
    }
    const bool isState = event.type() == QAccessible::StateChanged;
    updates_.append({event.object(), event.type(),
                     isState
                         ? static_cast<const QAccessibleStateChangeEvent &>(event).changedStates()
                         : QAccessible::State()});
    return true;
}

void LateAppearance::end() {
    limit_.stop();
    isAppearing_ = false;
    for (const Update &update : std::exchange(updates_, {})) {
        if (!update.object)
            continue;
        if (update.type == QAccessible::StateChanged) {
            QAccessibleStateChangeEvent event(update.object, update.changed);
            announce_(&event);
        } else {
            QAccessibleEvent event(update.object, update.type);
            announce_(&event);
        }
    }
}

} // namespace quillmender
