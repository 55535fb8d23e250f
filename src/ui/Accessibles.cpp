#include "ui/Accessibles.h"

#include "ui/HostedWindow.h"
#include "ui/Spinner.h"
#include "ui/TextLabel.h"

#include <QAccessibleWidget>

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

QAccessibleInterface *makeAccessible(const QString &, QObject *object) {
    if (auto *label = qobject_cast<AlertLabel *>(object))
        return new AlertAccessible(label);
    if (auto *spinner = qobject_cast<Spinner *>(object))
        return new SpinnerAccessible(spinner);
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
