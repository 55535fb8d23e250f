#include "bench/PasteField.h"

#include "bench/Programs.h"
#include "desktop/harness/ClipboardOwner.h"
#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

#include <X11/keysym.h>
#include <thread>

namespace quillmender::bench {

using std::chrono::steady_clock;

PasteField::PasteField(harness::AnyDesktop &desktop, const QString &text)
    : desktop_(desktop),
      application_(desktop, QStringLiteral("env"),
                   {QStringLiteral("AT_SPI_BUS_ADDRESS=unix:path=/nonexistent"),
                    besideThis(QStringLiteral("paste-field")), text}) {}

TimePoint PasteField::waitForText(qsizetype length) {
    return waitFor("text", length);
}

TimePoint PasteField::waitForClipboard() {
    return waitFor("clipboard", 0);
}

TimePoint PasteField::waitFor(const QByteArray &what, qsizetype length) {
    const auto deadline = steady_clock::now() + harness::defaultDeadline;
    while (steady_clock::now() < deadline) {
        const QByteArray log = application_.process().log();
        for (qsizetype end = log.indexOf('\n', seen_); end >= 0; end = log.indexOf('\n', seen_)) {
            const QByteArrayList words = log.sliced(seen_, end - seen_).split(' ');
            seen_ = end + 1;
            if (words.size() == 3 && words[1] == what && words[2].toLongLong() == length)
                return TimePoint(std::chrono::nanoseconds(words[0].toLongLong()));
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    throw harness::HarnessError(QStringLiteral("no %1 (%2) came: %3")
                                    .arg(QString::fromLatin1(what), QString::number(length),
                                         QString::fromUtf8(application_.process().log())));
}

double PasteField::pasteDirectlyMs(const QString &text) {
    harness::UserInput &input = desktop_.input();
    const TimePoint start = steady_clock::now();
    clipboard_ = desktop_.ownClipboard(harness::ClipboardOwner::plainText(text));
    input.press(XK_Control_L);
    input.press(XK_v);
    input.release(XK_v);
    input.release(XK_Control_L);
    return milliseconds(start, waitForText(text.size()));
}

} // namespace quillmender::bench
