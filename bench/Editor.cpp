#include "bench/Editor.h"

#include "desktop/harness/HarnessError.h"

#include <QDBusMessage>
#include <QDBusVariant>

#include <thread>

namespace quillmender::bench {

namespace {

using harness::HarnessError;
using harness::TestApplication;
using std::chrono::steady_clock;

// Setting ten megabytes takes an editor its time.
constexpr int callDeadlineMs = 30000;

TestApplication open(harness::AnyDesktop &desktop, Editor::Kind kind) {
    return kind == Editor::Kind::mousepad
               ? TestApplication::mousepad(desktop)
               : TestApplication::sampleEditor(desktop, QStringLiteral("plain"));
}

} // namespace

Editor::Editor(harness::AnyDesktop &desktop, Kind kind)
    : application_(open(desktop, kind)),
      bus_(desktop.accessibilityBus()->connection()),
      text_(application_.focusedText()) {}

void Editor::fill(const QString &text) {
    call("EditableText", "SetTextContents", {text});
    waitForCharacterCount(static_cast<int>(text.size()));
    text_.select(0, static_cast<int>(text.size()));
    harness::waitUntil(
        [&] { return text_.selection() == std::pair(0, static_cast<int>(text.size())); },
        QStringLiteral("the text is selected"));
}

TimePoint Editor::waitForCharacterCount(int count) const {
    const auto deadline = steady_clock::now() + harness::defaultDeadline;
    while (characterCount() != count) {
        if (steady_clock::now() > deadline)
            throw HarnessError(QStringLiteral("the text has %1 characters instead of %2")
                                   .arg(characterCount())
                                   .arg(count));
        std::this_thread::sleep_for(std::chrono::microseconds(500));
    }
    return steady_clock::now();
}

double Editor::readDirectlyMs() const {
    const TimePoint start = steady_clock::now();
    call("Text", "GetText", {0, -1});
    return milliseconds(start, steady_clock::now());
}

double Editor::writeDirectlyMs(const QString &text) const {
    const TimePoint start = steady_clock::now();
    call("EditableText", "SetTextContents", {text});
    return milliseconds(start, waitForCharacterCount(static_cast<int>(text.size())));
}

int Editor::characterCount() const {
    QDBusMessage question = QDBusMessage::createMethodCall(
        text_.service(), text_.path(), QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    question.setArguments(
        {QStringLiteral("org.a11y.atspi.Text"), QStringLiteral("CharacterCount")});
    const QDBusMessage reply = bus_.call(question, QDBus::Block, callDeadlineMs);
    return reply.arguments().value(0).value<QDBusVariant>().variant().toInt();
}

QDBusMessage Editor::call(const char *interface, const char *method,
                          const QList<QVariant> &arguments) const {
    QDBusMessage message = QDBusMessage::createMethodCall(
        text_.service(), text_.path(), QStringLiteral("org.a11y.atspi.") + QLatin1String(interface),
        QLatin1String(method));
    message.setArguments(arguments);
    const QDBusMessage reply = bus_.call(message, QDBus::Block, callDeadlineMs);
    if (reply.type() != QDBusMessage::ReplyMessage)
        throw HarnessError(reply.errorMessage());
    return reply;
}

QString sampleText(qsizetype bytes, int tag) {
    QString text = QStringLiteral("%1 ").arg(tag);
    for (int line = 0; text.size() < bytes; ++line)
        text += QStringLiteral("line %1 of a letter that somebody has written in plain words\n")
                    .arg(line);
    text.truncate(bytes - 1);
    // White space at an end would be trimmed away.
    return text + QLatin1Char('.');
}

} // namespace quillmender::bench
