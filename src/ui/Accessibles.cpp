#include "ui/Accessibles.h"

#include "ui/ActionGrid.h"
#include "ui/ActionPanel.h"
#include "ui/Announcer.h"
#include "ui/Card.h"
#include "ui/FormSection.h"
#include "ui/HostedWindow.h"
#include "ui/Spinner.h"
#include "ui/TextLabel.h"
#include "ui/settings/ActionList.h"
#include "ui/settings/ActionRow.h"

#include <QAccessibleWidget>
#include <QScrollArea>
#include <QScrollBar>

namespace quillmender {

namespace {

class TextAccessible : public QAccessibleWidget {
  public:
    explicit TextAccessible(TextLabel *label) : QAccessibleWidget(label, QAccessible::StaticText) {}

    QAccessible::Role role() const override {
        if (label()->isHeading())
            return QAccessible::Heading;
        // A screen reader that meets a dialog reads its longer labels, and only where there are
        // none its description; but the panel's says what was captured, be it ever so short.
        return qobject_cast<ActionPanel *>(label()->window()) ? QAccessible::Paragraph
                                                              : QAccessible::StaticText;
    }

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? label()->text() : QAccessibleWidget::text(kind);
    }

  private:
    const TextLabel *label() const { return static_cast<TextLabel *>(object()); }
};

/// A part of a window that has a name. Without one there is nothing to say of it.
class GroupAccessible : public QAccessibleWidget {
  public:
    explicit GroupAccessible(QWidget *widget) : QAccessibleWidget(widget, QAccessible::Grouping) {}

    QAccessible::Role role() const override {
        return widget()->accessibleName().isEmpty() ? QAccessible::Client
                                                    : QAccessibleWidget::role();
    }
};

class SpinnerAccessible : public QAccessibleWidget {
  public:
    explicit SpinnerAccessible(Spinner *spinner)
        : QAccessibleWidget(spinner, QAccessible::ProgressBar, QStringLiteral("Processing\u2026")) {
    }

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
    explicit ScrollAreaAccessible(QScrollArea *area) : QAccessibleWidget(area, QAccessible::Pane) {}

    /// Where a pane has the focus, all its texts are read at once: right for a text, too much for
    /// a form.
    QAccessible::Role role() const override {
        return object()->findChild<FormSection *>() ? QAccessible::Form : QAccessibleWidget::role();
    }

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
    if (auto *label = qobject_cast<TextLabel *>(object); label && !label->buddy())
        return new TextAccessible(label);
    if (auto *announcer = qobject_cast<Announcer *>(object))
        return new QAccessibleWidget(announcer, QAccessible::Notification);
    if (auto *spinner = qobject_cast<Spinner *>(object))
        return new SpinnerAccessible(spinner);
    if (auto *area = qobject_cast<QScrollArea *>(object))
        return new ScrollAreaAccessible(area);
    if (auto *window = qobject_cast<HostedWindow *>(object))
        return new QAccessibleWidget(window, QAccessible::Window);
    if (auto *list = qobject_cast<ActionList *>(object))
        return new QAccessibleWidget(list, QAccessible::List);
    if (auto *row = qobject_cast<ActionRow *>(object))
        return new QAccessibleWidget(row, QAccessible::ListItem);
    if (qobject_cast<FormSection *>(object) || qobject_cast<Card *>(object) ||
        qobject_cast<ActionGrid *>(object))
        return new GroupAccessible(static_cast<QWidget *>(object));
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
