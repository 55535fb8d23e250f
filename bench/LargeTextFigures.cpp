#include "bench/Figures.h"
#include "bench/Report.h"
#include "bench/SessionRun.h"
#include "bench/Stage.h"

namespace quillmender::bench {

namespace {

struct Size {
    QString name;
    qsizetype bytes;
};

const QList<Size> &sizes() {
    static const QList<Size> list{{QStringLiteral("1 KB"), 1000},
                                  {QStringLiteral("100 KB"), 100'000},
                                  {QStringLiteral("1 MB"), 1'000'000},
                                  {QStringLiteral("10 MB"), 10'000'000}};
    return list;
}

struct SizeSamples {
    Samples capture;
    Samples directRead;
    Samples writeBack;
    Samples directWrite;
    Samples both;
    Samples directBoth;
};

SizeSamples measureSize(SessionRun &session, Editor &editor, qsizetype bytes, int repetitions) {
    SizeSamples samples;
    for (int i = 0; i < repetitions; ++i) {
        const QString text = sampleText(bytes, i);
        // Everything is another, as in an answer that was written anew.
        const QString answer = sampleText(bytes + 20, i).toUpper();
        const SessionRun::Times times = session.run(editor, text, answer);
        const double read = editor.readDirectlyMs();
        const double write = editor.writeDirectlyMs(text);
        samples.capture.add(times.captureMs);
        samples.directRead.add(read);
        samples.writeBack.add(times.writeBackMs);
        samples.directWrite.add(write);
        samples.both.add(times.captureMs + times.writeBackMs);
        samples.directBoth.add(read + write);
    }
    return samples;
}

void measureEditor(Report &report, const Effort &effort, Editor::Kind kind, const QString &name) {
    const std::unique_ptr<Stage> stage = Stage::open(effort.on);
    SessionRun session(*stage);
    Editor editor(stage->desktop(), kind);
    constexpr double limitMs = 1000;
    QList<double> medians;
    for (const Size &size : sizes()) {
        const SizeSamples samples = measureSize(session, editor, size.bytes, effort.repetitions);
        report.limit(QStringLiteral("%1, %2: capture (panel included)").arg(name, size.name),
                     samples.capture, samples.directRead, limitMs);
        report.limit(QStringLiteral("%1, %2: write-back").arg(name, size.name), samples.writeBack,
                     samples.directWrite, limitMs);
        report.limit(QStringLiteral("%1, %2: both together").arg(name, size.name), samples.both,
                     samples.directBoth, limitMs);
        medians.append(samples.both.median());
    }
    // Ten times the text: linear growth is at most ten times the time.
    const double growth = medians.back() / medians[medians.size() - 2];
    report.add({QStringLiteral("%1: 10 MB against 1 MB").arg(name),
                QStringLiteral("× %1").arg(growth, 0, 'f', 1), QStringLiteral("-"),
                QStringLiteral("≤ × 12"), growth <= 12});
}

} // namespace

void measureLargeText(Report &report, const Effort &effort) {
    measureEditor(report, effort, Editor::Kind::mousepad, QStringLiteral("mousepad"));
    measureEditor(report, effort, Editor::Kind::qtPlainText, QStringLiteral("Qt plain text edit"));
    report.note(QStringLiteral("Large texts: the whole text is selected, and every letter of the "
                               "answer differs. Floor: one call that gets the text and one that "
                               "sets it."));
}

} // namespace quillmender::bench
