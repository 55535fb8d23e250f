#pragma once

#include "platform/linux/atspi/BusApplications.h"

#include <QPointer>

namespace quillmender::atspi {

/// Which process has the window that the window system says is active, where it does not say that
/// itself: the one with a frame that has the state ACTIVE and the window's title, or whose name is
/// that of the window's application.
class FrameProcesses : public QObject {
    Q_OBJECT

  public:
    /// The bus must outlive the object.
    explicit FrameProcesses(AtspiBus &bus) : bus_(bus), applications_(bus) {}

    /// 0 when no application or more than one comes into question, or the bus does not tell. An
    /// application that does not answer costs 250 ms for each of three questions at most, and all
    /// together never more than 600 ms.
    QCoro::Task<qint64> processOfActive(QString title, QString appId);

  private:
    AtspiBus &bus_;
    BusApplications applications_;
};

/// Whether an application with this name on the accessibility bus and this program can be the one
/// with this application id: the same but for spelling, or the last part of it.
bool canBeApplication(const QString &appId, const QString &name, const QString &program);

} // namespace quillmender::atspi
