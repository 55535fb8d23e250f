#include "desktop/stalls/StalledAnswer.h"

#include "support/ProviderAnswers.h"

namespace quillmender {

namespace {

std::chrono::milliseconds pauseAt(const QString &part, const QList<Stall> &stalls) {
    std::chrono::milliseconds sum{0};
    for (const Stall &stall : stalls) {
        if (stall.partner == Stall::Partner::provider && stall.at == part)
            sum += stall.duration;
    }
    return sum;
}

} // namespace

test::ScriptedAnswer stalledAnswer(const QString &text, const QList<Stall> &stalls) {
    const QByteArray body = test::openAIBody(text);
    const QByteArray all = test::ScriptedAnswer::http(200, body).steps().front().bytes;
    const qsizetype head = all.size() - body.size();
    const qsizetype middle = body.size() / 2;
    return test::ScriptedAnswer()
        .pause(pauseAt(QStringLiteral("head"), stalls))
        .send(all.left(head))
        .pause(pauseAt(QStringLiteral("body"), stalls))
        .send(body.left(middle))
        .pause(pauseAt(QStringLiteral("middle"), stalls))
        .send(body.mid(middle));
}

} // namespace quillmender
