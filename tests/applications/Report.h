#pragma once

#include "applications/Application.h"
#include "applications/Observation.h"
#include "applications/Surroundings.h"

namespace quillmender::applications {

/// What was seen of every application, kept in a folder, and the document made of it.
class Report {
  public:
    Report(QString folder, Surroundings surroundings);

    /// In place of what was known of the application.
    void keep(const Application &application, const QString &version,
              const QList<Observation> &seen);

    /// Everything that is kept, as Markdown.
    QString markdown() const;

  private:
    struct Entry {
        QString version;
        QList<Observation> seen;
    };

    QString path(const Application &application) const;
    std::optional<Entry> entry(const Application &application) const;
    static QString row(const Application &application, const Entry &entry);
    static QStringList exceptions(const Application &application, const Entry &entry);

    QString folder_;
    Surroundings surroundings_;
};

} // namespace quillmender::applications
