#include "bench/Figures.h"
#include "bench/PasteField.h"
#include "bench/Report.h"
#include "bench/SessionRun.h"
#include "bench/Stage.h"
#include "desktop/harness/ClipboardOwner.h"

#include <QFile>
#include <QProcess>

namespace quillmender::bench {

namespace {

using std::chrono::steady_clock;

constexpr qsizetype textBytes = 1024;
constexpr double requestExtraMs = 5;
// Of the hand on the mouse of a Wayland desktop, which is above the button and then presses it.
constexpr double handPausesMs = 20;
constexpr double writeBackLimitMs = 15;
constexpr double pasteChordWaitMs = 120;
constexpr double pasteReadWaitMs = 160;
constexpr double pasteExtraMs = 30;

// The same body to the same server by the plainest client.
double curlMs(const QString &url, const QString &bodyFile) {
    QProcess curl;
    const QStringList arguments{QStringLiteral("--silent"),
                                QStringLiteral("--output"),
                                QStringLiteral("/dev/null"),
                                QStringLiteral("--header"),
                                QStringLiteral("Authorization: Bearer test-key"),
                                QStringLiteral("--header"),
                                QStringLiteral("Content-Type: application/json"),
                                QStringLiteral("--data-binary"),
                                QLatin1Char('@') + bodyFile,
                                url};
    const TimePoint start = steady_clock::now();
    curl.start(QStringLiteral("curl"), arguments);
    curl.waitForFinished();
    return milliseconds(start, steady_clock::now());
}

QString lineOfText(qsizetype bytes, int tag) {
    return sampleText(bytes, tag).replace(u'\n', u' ');
}

} // namespace

void measureSession(Report &report, const Effort &effort) {
    const std::unique_ptr<Stage> stage = Stage::open(effort.on);
    harness::AnyDesktop &desktop = stage->desktop();
    SessionRun session(*stage);
    Editor editor(desktop, Editor::Kind::mousepad);
    const QString url = session.provider().baseUrl() + QStringLiteral("/v1/responses");
    const QString bodyFile = desktop.folders().home() + QStringLiteral("/body.json");

    Samples request;
    Samples curl;
    Samples write;
    Samples directWrite;
    for (int i = -1; i < effort.repetitions; ++i) {
        const QString text = sampleText(textBytes, i);
        const SessionRun::Times times = session.run(editor, text, sampleText(textBytes + 20, i));
        QFile body(bodyFile);
        if (body.open(QIODevice::WriteOnly))
            body.write(session.provider().requests().back().body);
        body.close();
        const double curlTime = curlMs(url, bodyFile);
        const double directTime = editor.writeDirectlyMs(text);
        if (i < 0)
            continue; // the first of each fills caches
        request.add(times.requestMs);
        curl.add(curlTime);
        write.add(times.writeBackMs);
        directWrite.add(directTime);
    }
    report.compare(QStringLiteral("action pressed to request received"), request, curl, 1,
                   requestExtraMs, effort.on == StageKind::x11 ? 0 : handPausesMs);
    report.limit(QStringLiteral("answer's last byte to text in mousepad, 1 KB"), write, directWrite,
                 writeBackLimitMs);
    report.note(QStringLiteral("Request: from before the mouse button is pressed on \"Fix My "
                               "Grammar\" until the server has the last byte. Floor: curl with the "
                               "same body to the same server, from fork to exit."));
    report.note(QStringLiteral("Write-back: from before the server sends the answer until the "
                               "accessibility bus tells the new length, asked every half "
                               "millisecond. Floor: one call that sets the text."));
}

void measurePaste(Report &report, const Effort &effort) {
    const std::unique_ptr<Stage> stage = Stage::open(effort.on);
    SessionRun session(*stage);
    QString kept = QStringLiteral("kept");
    const auto clipboard = stage->desktop().ownClipboard(harness::ClipboardOwner::plainText(kept));
    // As long as all others: the panel's buttons lie below what it shows of it.
    PasteField field(stage->desktop(), lineOfText(textBytes, -2));
    Samples paste;
    Samples directPaste;
    Samples giveBack;
    for (int i = -1; i < effort.repetitions; ++i) {
        const SessionRun::Times times = session.run(field, lineOfText(textBytes, i));
        const double backTime = milliseconds(times.answered, field.waitForClipboard());
        const double directTime = field.pasteDirectlyMs(lineOfText(textBytes + 20, i));
        if (i < 0)
            continue; // the first of each fills caches
        paste.add(times.writeBackMs);
        directPaste.add(directTime);
        giveBack.add(backTime);
    }
    report.limit(QStringLiteral("answer's last byte to pasted text, 1 KB"), paste, directPaste,
                 pasteChordWaitMs + pasteExtraMs);
    report.limit(QStringLiteral("answer's last byte to clipboard as before"), giveBack, {},
                 pasteChordWaitMs + pasteReadWaitMs + pasteExtraMs);
    report.note(QStringLiteral(
        "Paste: from before the server sends the answer until a Qt field that accessibility does "
        "not see has it, and until it hears that the clipboard is offered anew; "
        "at most 30 ms beyond the fixed waits of 120 ms before the keys and 160 ms after them. "
        "Floor: another program takes the clipboard, and the user presses Control + V."));
}

} // namespace quillmender::bench
