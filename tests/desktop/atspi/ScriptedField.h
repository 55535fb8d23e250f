#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QTimer>

#include <chrono>
#include <functional>

namespace quillmender::atspi {

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
    bool setsContents = false;
    bool obeysSelection = true;
    /// Called when it has told a part of its text, or the whole.
    std::function<void()> whenRead;
    /// Called when it has told its length, or where its caret is.
    std::function<void()> whenCounted;
    /// Called when it has selected what it was told to.
    std::function<void()> whenSelected;
    /// How long each of its changing calls is held up before it is attended to; everything that
    /// comes meanwhile waits behind it.
    std::chrono::milliseconds stall{0};
    /// How many questions have to be there before any of them is answered, for the first ones.
    QList<int> flights;
    bool answersBackwards = false; ///< the questions of such a flight
    bool answersTwice = false;     ///< each of them
    bool isMute = false;           ///< answers nothing any more
    /// The answer to everything, if there is one.
    QVariant nonsense;
    QStringList calls; ///< the changing ones, in order

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

  private:
    bool isChange(const QDBusMessage &message) const;
    void attend(const QDBusMessage &message);
    void attendToWaiting();
    void gather(const QDBusMessage &message);
    QVariant answerTo(const QDBusMessage &message);

    QDBusConnection connection_;
    QList<QDBusMessage> waiting_;
    QList<QDBusMessage> flight_;
    QTimer stalled_;
};

} // namespace quillmender::atspi
