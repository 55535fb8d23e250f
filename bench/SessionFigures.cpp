#include "bench/Figures.h"
#include "bench/Report.h"
#include "bench/SessionRun.h"

#include <QFile>
#include <QProcess>

namespace quillmender::bench {

namespace {

using std::chrono::steady_clock;

constexpr qsizetype textBytes = 1024;
constexpr double requestExtraMs = 5;
constexpr double writeBackLimitMs = 15;

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

} // namespace

void measureSession(Report &report, const Effort &effort) {
    harness::Desktop desktop;
    SessionRun session(desktop);
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
                   requestExtraMs);
    report.limit(QStringLiteral("answer's last byte to text in mousepad, 1 KB"), write, directWrite,
                 writeBackLimitMs);
    report.note(QStringLiteral("Request: from before the mouse button is pressed on \"Fix My "
                               "Grammar\" until the server has the last byte. Floor: curl with the "
                               "same body to the same server, from fork to exit."));
    report.note(QStringLiteral("Write-back: from before the server sends the answer until the "
                               "accessibility bus tells the new length, asked every half "
                               "millisecond. Floor: one call that sets the text."));
}

} // namespace quillmender::bench
