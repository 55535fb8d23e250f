#include "desktop/stalls/SessionRecord.h"

#include "desktop/stalls/PanelReader.h"

namespace quillmender {

namespace {

QString quoted(const QString &text) {
    return QStringLiteral("\"%1\"").arg(text);
}

QString describedClipboard(const harness::ClipboardContents &contents) {
    QStringList parts;
    for (const auto &each : contents.representations) {
        parts.append(QStringLiteral("%1 (%2 bytes)")
                         .arg(QString::fromUtf8(each.target))
                         .arg(each.bytes.size()));
    }
    return parts.isEmpty() ? QStringLiteral("nothing") : parts.join(QStringLiteral(", "));
}

void judgeText(const SessionRecord &record, QStringList &problems) {
    const bool isReplaced = record.replaced && record.textAfter == *record.replaced;
    const bool isUnchanged = record.textAfter == record.textBefore;
    if (!isReplaced && !isUnchanged)
        problems.append(QStringLiteral("the text is neither replaced once nor unchanged: ") +
                        quoted(record.textAfter));
    if (isUnchanged && !record.message)
        problems.append(QStringLiteral("the panel has gone, the text is unchanged"));
    if (isReplaced && record.message)
        problems.append(QStringLiteral("the text is replaced, the panel shows ") +
                        quoted(*record.message));
}

void judgeMessage(const SessionRecord &record, QStringList &problems) {
    if (!record.message)
        return;
    const QStringList fitting =
        record.requests > 0
            ? QStringList{message::notReplaced}
            : QStringList{message::nothingSelected, message::noFrontmost, message::notReplaced};
    const bool isOfKeyring = record.isKeyringStalled && *record.message == message::noKey;
    if (!fitting.contains(*record.message) && !isOfKeyring)
        problems.append(QStringLiteral("the panel shows ") + quoted(*record.message));
}

void judgeResponsiveness(const SessionRecord &record, QStringList &problems) {
    // Far beyond what a busy machine does to a program that has nothing to do, and shorter than
    // most stalls: a main thread that waits for the one that stalls is seen sooner or later.
    constexpr qint64 tolerated = 600;
    constexpr qint64 workOfTheProgram = 10;
    if (record.longestWaitMs > tolerated + workOfTheProgram * record.longestWaitOfBystanderMs)
        problems.append(QStringLiteral("the main thread gave no answer for %1 ms, an idle program's"
                                       " for %2 ms at the most")
                            .arg(record.longestWaitMs)
                            .arg(record.longestWaitOfBystanderMs));
}

} // namespace

QStringList problemsOf(const SessionRecord &record) {
    QStringList problems;
    if (!record.isAlive)
        problems.append(QStringLiteral("the program has ended"));
    judgeText(record, problems);
    judgeMessage(record, problems);
    judgeResponsiveness(record, problems);
    if (record.requests > 1)
        problems.append(QStringLiteral("%1 requests were sent").arg(record.requests));
    for (const QString &text : record.otherTexts)
        problems.append(QStringLiteral("another window's text is now ") + quoted(text));
    if (record.clipboardAfter != record.clipboardBefore)
        problems.append(QStringLiteral("the clipboard had %1, and has %2")
                            .arg(describedClipboard(record.clipboardBefore),
                                 describedClipboard(record.clipboardAfter)));
    return problems;
}

} // namespace quillmender
