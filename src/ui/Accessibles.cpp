#include "ui/Accessibles.h"

#include "ui/HostedWindow.h"
#include "ui/Spinner.h"
#include "ui/TextLabel.h"

#include <QAccessibleWidget>
#include <QScrollArea>
#include <QScrollBar>

namespace quillmender {

namespace {

class AlertAccessible : public QAccessibleWidget {
  public:
    explicit AlertAccessible(AlertLabel *label)
        : QAccessibleWidget(label, QAccessible::AlertMessage) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? static_cast<QLabel *>(object())->text()
                                         : QAccessibleWidget::text(kind);
    }
};

class SpinnerAccessible : public QAccessibleWidget {
  public:
    explicit SpinnerAccessible(Spinner *spinner)
        : QAccessibleWidget(spinner, QAccessible::ProgressBar) {}

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.busy = true;
        return state;
    }
};

/// The toolkit's own counts the scroll bars only while they can be seen, and reads past its list
/// when it is asked for one that has gone since it was counted: a window that closes under the eyes
/// of a screen reader. This one always has the same children.
class ScrollAreaAccessible : public QAccessibleWidget {
  public:
    explicit ScrollAreaAccessible(QScrollArea *area)
        : QAccessibleWidget(area, QAccessible::Client) {}

    int childCount() const override { return int(parts().size()); }

    QAccessibleInterface *child(int index) const override {
        QWidget *part = parts().value(index);
        return part ? QAccessible::queryAccessibleInterface(part) : nullptr;
    }

    int indexOfChild(const QAccessibleInterface *child) const override {
        return child ? int(parts().indexOf(qobject_cast<QWidget *>(child->object()))) : -1;
    }

  private:
    QWidgetList parts() const {
        const auto *area = static_cast<QScrollArea *>(object());
        // A scroll bar is wrapped in a container.
        return {area->viewport(), area->verticalScrollBar()->parentWidget(),
                area->horizontalScrollBar()->parentWidget()};
    }
};

QAccessibleInterface *makeAccessible(const QString &, QObject *object) {
    if (auto *label = qobject_cast<AlertLabel *>(object))
        return new AlertAccessible(label);
    if (auto *spinner = qobject_cast<Spinner *>(object))
        return new SpinnerAccessible(spinner);
    if (auto *area = qobject_cast<QScrollArea *>(object))
        return new ScrollAreaAccessible(area);
    if (auto *window = qobject_cast<HostedWindow *>(object))
        return new QAccessibleWidget(window, QAccessible::Window);
    return nullptr;
}

} // namespace

void installAccessibles() {
    // Installing the same factory again would only make it be asked twice.
    static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(installed)
}

} // namespace quillmender
