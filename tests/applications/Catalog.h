#pragma once

#include "applications/Application.h"

namespace quillmender::applications {

/// Every application that is tried, in the order of the report.
const QList<Application> &catalog();

/// Its parts.
QList<Application> editors();
QList<Application> toolkitFields();
QList<Application> browsers();
QList<Application> office();
QList<Application> mailComposers();
QList<Application> terminals();

/// The same application off the accessibility bus.
Application offTheBus(Application application);

/// Writes a file into the desktop's home folder; its path.
QString writeHomeFile(const harness::Desktop &desktop, const QString &name,
                      const QByteArray &contents);

} // namespace quillmender::applications
