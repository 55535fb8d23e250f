#pragma once

#include "platform/linux/wayland/clipboard/Descriptor.h"

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <memory>

class QSocketNotifier;

namespace quillmender::wayland {

/// Hands the bytes of one type to one reader, as it takes them. It needs nothing of the selection:
/// it goes on after that was lost. It deletes itself when it has finished.
class PipeWriter : public QObject {
    Q_OBJECT

  public:
    /// The reader has as long as `patience` to take something.
    PipeWriter(Descriptor pipe, QByteArray data, QObject *parent,
               std::chrono::milliseconds patience = std::chrono::seconds(10));
    ~PipeWriter() override;

  Q_SIGNALS:
    /// Once. Not complete when the reader went away or stopped taking, or this goes before.
    void finished(bool isComplete);

  private:
    void writeOn();
    void finish(bool isComplete);

    Descriptor pipe_;
    QByteArray data_;
    qsizetype sent_ = 0;
    std::unique_ptr<QSocketNotifier> writable_;
    QTimer patience_;
};

} // namespace quillmender::wayland
