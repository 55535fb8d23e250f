#include "applications/Report.h"

#include "applications/Catalog.h"
#include "applications/LineEndsReport.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMap>
#include <QSysInfo>

#include <algorithm>

namespace quillmender::applications {

using Verdict = Observation::Verdict;

namespace {

/// The values in the order of their frequency: "pasting", or "accessibility 8, pasting 2".
QString tally(const QStringList &values) {
    QMap<QString, int> counts;
    for (const QString &value : values)
        ++counts[value];
    counts.remove(QString());
    if (counts.size() == 1)
        return counts.firstKey();
    QStringList parts;
    for (auto each = counts.cbegin(); each != counts.cend(); ++each)
        parts += QStringLiteral("%1 %2").arg(each.key()).arg(each.value());
    return parts.isEmpty() ? QStringLiteral("\u2013") : parts.join(QStringLiteral(", "));
}

QString median(QList<int> values) {
    if (values.isEmpty())
        return QStringLiteral("\u2013");
    std::sort(values.begin(), values.end());
    return QString::number(values[values.size() / 2]);
}

QString ofAll(qsizetype count, qsizetype all) {
    if (all == 0)
        return QStringLiteral("\u2013");
    if (count == all)
        return QStringLiteral("yes");
    return count == 0 ? QStringLiteral("no") : QStringLiteral("%1 of %2").arg(count).arg(all);
}

bool isLarge(const Observation &each) {
    return each.scenario.startsWith(QStringLiteral("1 MB"));
}

} // namespace

Report::Report(QString folder, Surroundings surroundings)
    : folder_(std::move(folder)),
      surroundings_(surroundings) {
    QDir().mkpath(folder_);
}

QString Report::path(const Application &application) const {
    return QStringLiteral("%1/%2.json").arg(folder_, application.id);
}

void Report::keep(const Application &application, const QString &version,
                  const QList<Observation> &seen) {
    QJsonArray sessions;
    for (const Observation &each : seen)
        sessions.append(each.toJson());
    QFile file(path(application));
    if (file.open(QIODevice::WriteOnly))
        file.write(QJsonDocument(QJsonObject{{QStringLiteral("version"), version},
                                             {QStringLiteral("sessions"), sessions}})
                       .toJson());
}

std::optional<Report::Entry> Report::entry(const Application &application) const {
    QFile file(path(application));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    Entry result{object[QStringLiteral("version")].toString(), {}};
    for (const auto &each : object[QStringLiteral("sessions")].toArray())
        result.seen.append(Observation::fromJson(each.toObject()));
    return result;
}

QString Report::row(const Application &application, const Entry &entry) {
    QStringList selections;
    QStringList fields;
    QStringList routes;
    QStringList undo;
    QList<int> toPanel;
    QList<int> toText;
    qsizetype sessions = 0;
    qsizetype replaced = 0;
    qsizetype selected = 0;
    qsizetype identical = 0;
    for (const Observation &each : entry.seen) {
        const QString by = each.capture.section(QStringLiteral(" by "), 1);
        (each.capture.startsWith(QStringLiteral("whole")) ? fields : selections).append(by);
        routes.append(each.route);
        if (each.clipboardIdentical) {
            ++sessions;
            identical += *each.clipboardIdentical ? 1 : 0;
        }
        if (each.verdict == Verdict::replaced) {
            ++replaced;
            selected += each.isInsertedSelected.value_or(false) ? 1 : 0;
            if (!isLarge(each))
                undo.append(each.undoSteps ? QString::number(*each.undoSteps)
                                           : QStringLiteral("none"));
        }
        if (!isLarge(each) && each.hotKeyToPanelMs)
            toPanel.append(*each.hotKeyToPanelMs);
        if (!isLarge(each) && each.answerToTextMs && !each.route.isEmpty())
            toText.append(*each.answerToTextMs);
    }
    const qsizetype all = entry.seen.size();
    return QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 | %7 | %8 | %9 | %10 | %11 | %12 |")
        .arg(application.name, application.field, entry.version, tally(selections), tally(fields),
             tally(routes), ofAll(replaced, all), ofAll(selected, replaced), tally(undo))
        .arg(ofAll(identical, sessions), median(toPanel), median(toText));
}

QStringList Report::exceptions(const Application &application, const Entry &entry) {
    QStringList lines;
    for (const Observation &each : entry.seen) {
        QString what;
        switch (each.verdict) {
        case Verdict::replaced:
            continue;
        case Verdict::refused:
            what =
                QStringLiteral("nothing is changed, and the panel says \"%1\"").arg(each.message);
            break;
        case Verdict::wrong:
            what = QStringLiteral("**wrong**: ") + each.remark;
            break;
        case Verdict::notTried:
            what = QStringLiteral("not tried: ") + each.remark;
            break;
        }
        lines += QStringLiteral("- %1, %2; %3: %4")
                     .arg(application.name, application.field, each.scenario, what);
    }
    return lines;
}

QString Report::markdown() const {
    QStringList rows;
    QStringList others;
    LineEndsReport lineEnds;
    for (const Application &application : catalog(surroundings_)) {
        const auto known = entry(application);
        if (!known)
            continue;
        rows += row(application, *known);
        others += exceptions(application, *known);
        lineEnds.add(application, known->seen);
    }
    QFile introduction(QStringLiteral(QUILLMENDER_REPORT_INTRODUCTION));
    QString text;
    if (introduction.open(QIODevice::ReadOnly))
        text = QString::fromUtf8(introduction.readAll())
                   .replace(QStringLiteral("@SYSTEM@"), QSysInfo::prettyProductName())
                   .replace(QStringLiteral("@DESKTOP@"), describe(surroundings_));
    text += QStringLiteral(
        "\n| application | field | version | selection read by | whole field read by | written by "
        "| "
        "replaced | new text selected | undo steps | clipboard identical | hot key to panel, ms | "
        "answer to text, ms |\n|---|---|---|---|---|---|---|---|---|---|---|---|\n");
    text += rows.join(u'\n') + u'\n' + lineEnds.markdown();
    if (!others.isEmpty())
        text += QStringLiteral("\n## Sessions that did not replace the text\n\n") +
                others.join(u'\n') + u'\n';
    return text;
}

} // namespace quillmender::applications
