#pragma once

#include <QJsonDocument>
#include <QObject>

#include <optional>

namespace quillmender::sway {

/// A request that is under way, shared by who waits for its answer and the connection that it went
/// over.
class IpcQuestion : public QObject {
    Q_OBJECT

  public:
    explicit IpcQuestion(quint32 type) : type_(type) {}

    quint32 type() const { return type_; }
    const std::optional<QJsonDocument> &answer() const { return answer_; }
    bool isOver() const { return isOver_; }

    /// Without an answer when the connection ends before it.
    void end(std::optional<QJsonDocument> answer) {
        answer_ = std::move(answer);
        isOver_ = true;
        Q_EMIT over();
    }

  Q_SIGNALS:
    void over();

  private:
    quint32 type_;
    std::optional<QJsonDocument> answer_;
    bool isOver_ = false;
};

} // namespace quillmender::sway
