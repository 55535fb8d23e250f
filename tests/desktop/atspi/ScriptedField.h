#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>

#include <functional>

namespace quillmender {

/// A text field on the accessibility bus that counts in UTF-16 units and obeys as the test wishes.
class ScriptedField : public QDBusVirtualObject {
  public:
    ScriptedField(const QString &busAddress, const QString &initialText);
    ~ScriptedField() override;

    QString service() const { return connection_.baseService(); }
    static QString path() { return QStringLiteral("/field"); }

    QString text;
    int selectionStart = 0;
    int selectionEnd = 0;
    /// What InsertText does to the text, given a position; nothing: refuses.
    std::function<void(qsizetype, const QString &)> insert;
    /// Whether it understands -1 for the end of its text.
    bool knowsItsEnd = true;
    bool refusesDeletion = false;
    bool answersDeletion = true;
    QStringList calls; ///< the changing ones, in order

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

  private:
    QVariant answerTo(const QDBusMessage &message);

    QDBusConnection connection_;
};

} // namespace quillmender
