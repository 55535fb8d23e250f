#include "applications/LineEndsReport.h"

namespace quillmender::applications {

void LineEndsReport::add(const Application &application, const QList<Observation> &seen) {
    const QString field = QStringLiteral("%1 (%2)").arg(application.name, application.field);
    for (const Observation &each : seen) {
        if (each.lineEndsAfter.isEmpty() || each.verdict != Observation::Verdict::replaced)
            continue;
        (each.lineEndsBefore.isEmpty() ? answers_ : texts_)[each.lineEndsAfter].append(field);
    }
}

QString LineEndsReport::markdown() const {
    if (answers_.isEmpty() && texts_.isEmpty())
        return {};
    return QStringLiteral("\n## Line ends of Windows\n") +
           list(QStringLiteral("After an answer with CR LF, in a text whose lines end with LF, the "
                               "field hands out:"),
                answers_) +
           list(QStringLiteral("A text that was pasted into the field with CR LF is handed out, "
                               "before and after a session with one of its words, with:"),
                texts_);
}

QString LineEndsReport::list(const QString &heading, const Groups &groups) {
    QString text = QStringLiteral("\n%1\n\n").arg(heading);
    for (auto group = groups.cbegin(); group != groups.cend(); ++group)
        text += QStringLiteral("- %1: %2\n").arg(group.key(), group->join(QStringLiteral(", ")));
    return text;
}

} // namespace quillmender::applications
