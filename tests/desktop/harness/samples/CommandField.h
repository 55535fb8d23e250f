#pragma once

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QWidget>

#include <chrono>
#include <thread>
#include <utility>

/// A field that treats editing commands as browser engines in Qt's windows do: it knows the command
/// when it is asked about the shortcut, and carries it out with the next key that comes. Its text,
/// which is selected at first, is the window's title; the accessibility bus does not see it. One
/// that stalls attends to nothing for so long before it copies, and says in the title that it has.
class CommandField : public QWidget {
  public:
    explicit CommandField(const QString &text, std::chrono::milliseconds stall = {})
        : text_(text),
          stall_(stall) {
        setFocusPolicy(Qt::StrongFocus);
    }

  protected:
    bool event(QEvent *event) override {
        if (event->type() != QEvent::ShortcutOverride)
            return QWidget::event(event);
        const QKeySequence::StandardKey command = commandOf(*static_cast<QKeyEvent *>(event));
        if (command == QKeySequence::UnknownKey)
            return QWidget::event(event);
        pending_ = command;
        event->accept();
        return true;
    }

    void keyPressEvent(QKeyEvent *event) override {
        // On Wayland the toolkit hands a key that it has asked about on twice.
        const bool isCommand =
            pending_ != QKeySequence::UnknownKey || commandOf(*event) != QKeySequence::UnknownKey;
        if (std::exchange(isCommandDown_, isCommand) && isCommand) {
            pending_ = QKeySequence::UnknownKey;
            return;
        }
        if (pending_ == QKeySequence::UnknownKey)
            pending_ = commandOf(*event);
        if (pending_ == QKeySequence::Copy && isSelected_)
            copy();
        if (pending_ == QKeySequence::Paste) {
            text_ = (isSelected_ ? QString() : text_) + QApplication::clipboard()->text();
            isSelected_ = false;
            window()->setWindowTitle(text_);
        }
        pending_ = QKeySequence::UnknownKey;
    }

    void keyReleaseEvent(QKeyEvent *) override { isCommandDown_ = false; }

  private:
    static QKeySequence::StandardKey commandOf(const QKeyEvent &event) {
        for (const auto command : {QKeySequence::Copy, QKeySequence::Paste}) {
            if (event.matches(command))
                return command;
        }
        return QKeySequence::UnknownKey;
    }

    void copy() {
        std::this_thread::sleep_for(stall_);
        QApplication::clipboard()->setText(text_);
        if (stall_.count() > 0)
            window()->setWindowTitle(text_ + QStringLiteral(" copied"));
    }

    QString text_;
    std::chrono::milliseconds stall_;
    bool isSelected_ = true;
    bool isCommandDown_ = false;
    QKeySequence::StandardKey pending_ = QKeySequence::UnknownKey;
};
