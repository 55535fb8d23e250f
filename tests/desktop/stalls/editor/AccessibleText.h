#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QPlainTextEdit>

namespace quillmender {

/// A window with one text as its application tells it on the accessibility bus: an application, a
/// frame and a field with the interfaces Text and EditableText. Answers at once and truly.
class AccessibleText : public QObject {
  public:
    AccessibleText(QPlainTextEdit &field, QDBusConnection bus);

    /// Makes the application known on the bus, and from now on says when it gets the focus.
    void join();

    /// Does what the call asks for; the answer is not sent.
    QDBusMessage carryOut(const QDBusMessage &call);

  private:
    QVariant member(const QDBusMessage &call);
    QVariant propertyNamed(const QString &name, const QString &path) const;
    QVariant textMember(const QDBusMessage &call);
    QVariant edit(const QDBusMessage &call);
    bool select(qsizetype start, qsizetype end);
    bool isWithin(qsizetype start, qsizetype end) const;
    QList<uint> states(const QString &path) const;
    QStringList interfaces(const QString &path) const;
    void announceFocus();

    QPlainTextEdit &field_;
    QDBusConnection bus_;
};

} // namespace quillmender
