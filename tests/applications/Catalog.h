#pragma once

#include "applications/Application.h"
#include "applications/Surroundings.h"

namespace quillmender::applications {

/// Every application that is tried there, in the order of the report.
QList<Application> catalog(Surroundings surroundings);

/// Its parts.
QList<Application> editors();
QList<Application> toolkitFields();
QList<Application> browsers();
QList<Application> office();
QList<Application> mailComposers();
QList<Application> terminals();

/// The same application off the accessibility bus.
Application offTheBus(Application application);
/// The same on the X server of a Wayland desktop.
Application throughXWayland(Application application);

/// Writes a file into the desktop's home folder; its path.
QString writeHomeFile(const harness::AnyDesktop &desktop, const QString &name,
                      const QByteArray &contents);

} // namespace quillmender::applications
