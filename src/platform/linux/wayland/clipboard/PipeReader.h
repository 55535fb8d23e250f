#pragma once

#include "platform/linux/wayland/clipboard/Descriptor.h"

#include <QByteArray>
#include <QObject>

#include <memory>

class QSocketNotifier;

namespace quillmender::wayland {

/// Reads one type of an offer out of its pipe, as it comes, to the end.
class PipeReader : public QObject {
    Q_OBJECT

  public:
    /// A closed pipe, or more than `most` bytes, are a failure.
    PipeReader(Descriptor pipe, qsizetype most);
    ~PipeReader() override;

    /// Whether nothing more comes.
    bool isOver() const { return !pipe_.isOpen(); }

    /// Whether it is over because the other end was closed. That tells nothing of why it was.
    bool isAtEnd() const { return isOver() && !hasFailed_; }

    const QByteArray &data() const { return data_; }

    /// Holds nothing of it any more, and takes nothing more.
    void drop();

  Q_SIGNALS:
    /// More data, or the end.
    void advanced();

  private:
    void readOn();
    void close(bool hasFailed);

    Descriptor pipe_;
    qsizetype most_;
    QByteArray data_;
    bool hasFailed_ = false;
    std::unique_ptr<QSocketNotifier> readable_;
};

} // namespace quillmender::wayland
