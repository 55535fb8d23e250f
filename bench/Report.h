#pragma once

#include "bench/Samples.h"

#include <QList>
#include <QString>

namespace quillmender::bench {

/// The table of figures: each of the program's beside that of the floor.
class Report {
  public:
    struct Row {
        QString figure;
        QString program;
        QString floor;
        QString target;
        bool isMet = false;
    };

    void add(const Row &row);

    /// Medians in milliseconds; met when the program's, less `fixed`, is at most the floor's times
    /// `factor` plus `extra`.
    void compare(const QString &figure, const Samples &program, const Samples &floor, double factor,
                 double extra = 0, double fixed = 0);

    /// Median in milliseconds against a fixed limit, whatever the floor is.
    void limit(const QString &figure, const Samples &program, const Samples &floor, double limit);

    /// Below the table: how something was measured.
    void note(const QString &text) { notes_.append(text); }

    /// As a Markdown table with the notes after it.
    QString markdown() const;
    qsizetype missed() const;

  private:
    QList<Row> rows_;
    QStringList notes_;
};

/// "12.3 ms (11.0 to 14.2, n 20)": median, first and last decile, how many.
QString inMilliseconds(const Samples &samples);

} // namespace quillmender::bench
