#pragma once

#include "platform/linux/ApplicationPulse.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>

namespace quillmender::wayland {

/// Follows the application that was typed the latest copy chord for as long as its copy may be to
/// come: until it has answered two questions, since a toolkit may answer one before it handles a
/// key, and three seconds more, since a copy comes by another way than answers; for a minute at
/// most. One that cannot be asked is followed for as long as a person needs at least to copy there
/// by hand.
class CopyWatch : public QObject {
    Q_OBJECT

  public:
    CopyWatch();

    /// Right before the chord. A process that is not known (0) is not followed.
    void start(qint64 processId);

    /// Once the chord is out: what the application is asked may not reach it before the keys. Null
    /// when it cannot be asked.
    void follow(std::shared_ptr<ApplicationPulse> pulse);

    /// The process that may have its copy ahead of it; 0 when none has.
    qint64 pending() const { return processId_; }

  Q_SIGNALS:
    void started();

    /// The copy has come, or never will.
    void settled();

  private:
    static QCoro::Task<> ask(QPointer<CopyWatch> self, std::shared_ptr<ApplicationPulse> pulse);
    void settle();

    QTimer end_;
    qint64 processId_ = 0;
    quint64 turn_ = 0; ///< of the chord that is followed
};

} // namespace quillmender::wayland
