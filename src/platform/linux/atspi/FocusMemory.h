#pragma once

#include "platform/linux/atspi/AtspiTypes.h"

#include <QHash>
#include <QStringList>

namespace quillmender::atspi {

/// Which objects said of late that they have the focus. Bounded: a handful per application, the
/// applications heard of last.
class FocusMemory {
  public:
    void remember(const ObjectRef &object);
    void clear();

    /// Latest first.
    QList<ObjectRef> latest(const QString &service) const { return latest_.value(service); }

    /// The applications that were heard of, latest first.
    QStringList services() const { return services_; }

  private:
    QHash<QString, QList<ObjectRef>> latest_;
    QStringList services_;

    static constexpr int objectsPerService = 6;
    static constexpr int maximumServices = 64;
};

} // namespace quillmender::atspi
