#pragma once

#include "platform/linux/atspi/AtspiBus.h"

#include <QStringList>

namespace quillmender::atspi {

/// Events of the accessibility bus that somebody wants: applications send those alone that were
/// registered. Sees to it on each new connection, and when the registry was started again.
class RegisteredEvents : public QObject {
    Q_OBJECT

  public:
    /// In the registry's spelling, such as `window:activate`. The bus must outlive the object.
    RegisteredEvents(AtspiBus &bus, QStringList events);

  Q_SIGNALS:
    /// A new connection stands, where signals have to be subscribed to anew.
    void connected();

  private Q_SLOTS:
    void enlist();
    void enlistAgain();

  private:
    AtspiBus &bus_;
    QStringList events_;
};

} // namespace quillmender::atspi
