#pragma once

#include "platform/linux/wayland/clipboard/DataControl.h"

#include <QObject>
#include <QTimer>

#include <memory>

class QSocketNotifier;

namespace quillmender::wayland {

/// Which process offers something as a selection, which no compositor tells. It is asked for one
/// type by a socket instead of a pipe, and the system says who writes into that. What it writes is
/// taken to the end, for five seconds at most, since not every program outlives a reader that goes
/// away; then the question is over and ends itself.
class OwnerQuestion : public QObject {
    Q_OBJECT

  public:
    OwnerQuestion(DataControl &control, const DataOffer &offer);
    ~OwnerQuestion() override;

  Q_SIGNALS:
    /// Once, from the event loop. 0 when nobody has written anything.
    void answered(qint64 processId);

  private:
    void ask(const DataOffer &offer);
    void listen();
    void answer(qint64 processId);
    void end();

    Descriptor socket_;
    QTimer patience_;
    bool isAnswered_ = false;
    std::unique_ptr<QSocketNotifier> readable_;
};

} // namespace quillmender::wayland
