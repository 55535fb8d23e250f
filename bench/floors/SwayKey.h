#pragma once

#include <QLocalSocket>

#include <functional>

/// Control + Alt + Return as a binding of a compositor that speaks sway's protocol.
class SwayKey {
  public:
    explicit SwayKey(std::function<void()> pressed);

  private:
    void send(quint32 type, const QByteArray &payload);
    void read();

    std::function<void()> pressed_;
    QByteArray unread_;
    QLocalSocket socket_;
};
