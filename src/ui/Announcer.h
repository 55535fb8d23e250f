#pragma once

#include <QWidget>

namespace quillmender {

/// Tells a screen reader what has just happened, without taking the focus. It is never seen.
class Announcer : public QWidget {
    Q_OBJECT

  public:
    explicit Announcer(QWidget *parent);

    /// Has the text said at once, also when it is the same as before. Nothing happens without a
    /// screen reader.
    void say(const QString &text);

  Q_SIGNALS:
    void said(const QString &text);
};

} // namespace quillmender
