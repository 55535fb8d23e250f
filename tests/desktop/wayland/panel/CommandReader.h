#pragma once

#include <QJsonObject>
#include <QObject>
#include <QSocketNotifier>

#include <functional>

namespace quillmender::test {

/// Reads commands from the standard input, a line each, and writes the state of the program after
/// each of them.
class CommandReader : public QObject {
    Q_OBJECT

  public:
    CommandReader(std::function<void(const QString &)> perform, std::function<QJsonObject()> state);

  private:
    void read();

    std::function<void(const QString &)> perform_;
    std::function<QJsonObject()> state_;
    QSocketNotifier input_;
    QByteArray unread_;
};

} // namespace quillmender::test
