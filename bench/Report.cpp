#include "bench/Report.h"

#include <algorithm>
#include <cstdio>

namespace quillmender::bench {

namespace {

QString number(double value) {
    return QString::number(value, 'f', value < 100 ? 1 : 0);
}

QString factorTarget(double factor, double extra, double fixed) {
    QString text = factor == 1 ? QStringLiteral("floor")
                               : QStringLiteral("%1 × floor").arg(QString::number(factor));
    if (extra > 0)
        text += QStringLiteral(" + %1 ms").arg(extra);
    if (fixed > 0)
        text += QStringLiteral(" + %1 ms of fixed waits").arg(fixed);
    return QStringLiteral("≤ ") + text;
}

QString verdict(const Report::Row &row) {
    if (row.target == QLatin1String("-"))
        return row.target;
    return row.isMet ? QStringLiteral("met") : QStringLiteral("**missed**");
}

} // namespace

QString inMilliseconds(const Samples &samples) {
    if (samples.count() == 0)
        return QStringLiteral("-");
    return QStringLiteral("%1 ms (%2 to %3, n %4)")
        .arg(number(samples.median()), number(samples.quantile(0.1)), number(samples.quantile(0.9)))
        .arg(samples.count());
}

void Report::add(const Row &row) {
    // Seen as they come: the whole table takes minutes.
    std::fprintf(stderr, "%s: %s | %s\n", qUtf8Printable(row.figure), qUtf8Printable(row.program),
                 qUtf8Printable(row.floor));
    rows_.append(row);
}

void Report::compare(const QString &figure, const Samples &program, const Samples &floor,
                     double factor, double extra, double fixed) {
    const double ratio = floor.median() > 0 ? (program.median() - fixed) / floor.median() : 0;
    add({figure, QStringLiteral("%1, × %2").arg(inMilliseconds(program)).arg(ratio, 0, 'f', 2),
         inMilliseconds(floor), factorTarget(factor, extra, fixed),
         program.median() - fixed <= floor.median() * factor + extra});
}

void Report::limit(const QString &figure, const Samples &program, const Samples &floor,
                   double limit) {
    add({figure, inMilliseconds(program), inMilliseconds(floor),
         QStringLiteral("≤ %1 ms").arg(number(limit)), program.median() <= limit});
}

QString Report::markdown() const {
    QString text = QStringLiteral("| figure | Quillmender | floor | target | |\n"
                                  "|---|---|---|---|---|\n");
    for (const Row &row : rows_) {
        text += QStringLiteral("| %1 | %2 | %3 | %4 | %5 |\n")
                    .arg(row.figure, row.program, row.floor, row.target, verdict(row));
    }
    text += QLatin1Char('\n');
    for (const QString &note : notes_)
        text += QStringLiteral("- %1\n").arg(note);
    return text;
}

qsizetype Report::missed() const {
    return std::count_if(rows_.begin(), rows_.end(), [](const Row &row) { return !row.isMet; });
}

} // namespace quillmender::bench
