#pragma once

#include "applications/Application.h"
#include "applications/Observation.h"

#include <QMap>

namespace quillmender::applications {

/// What became of line ends of Windows, which no reader of a text sees and other programs do.
class LineEndsReport {
  public:
    void add(const Application &application, const QList<Observation> &seen);

    /// Empty when there were none.
    QString markdown() const;

  private:
    /// The fields, by their line ends.
    using Groups = QMap<QString, QStringList>;

    static QString list(const QString &heading, const Groups &groups);

    Groups answers_;
    Groups texts_;
};

} // namespace quillmender::applications
