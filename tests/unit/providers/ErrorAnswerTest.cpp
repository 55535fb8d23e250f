#include "unit/providers/ProviderTest.h"

namespace quillmender::test {

namespace {

class ErrorAnswerTest : public ProviderTest, public testing::WithParamInterface<AIProvider> {
  protected:
    /// The message of the `openAIError` that this answer leads to.
    QString messageFor(const ScriptedAnswer &answer) {
        server.setAnswer(answer);
        const auto action = [this] { transform(configuration(GetParam())); };
        EXPECT_EQ(failureCaseOf(action), AppFailure::Case::openAIError);
        return descriptionOf<AppFailure>(action);
    }
};

TEST_P(ErrorAnswerTest, TheMessageOfAnErrorObjectIsShownUnchanged) {
    EXPECT_EQ(messageFor(ScriptedAnswer::http(
                  401, errorBody(QStringLiteral("Incorrect API key provided")))),
              QStringLiteral("Incorrect API key provided"));
    EXPECT_EQ(messageFor(ScriptedAnswer::http(429, errorBody(QStringLiteral(" slow\n down ")))),
              QStringLiteral(" slow\n down "));
    EXPECT_EQ(messageFor(ScriptedAnswer::http(400, errorBody(QString()))), QString());
}

TEST_P(ErrorAnswerTest, EveryOtherBodyIsShownAsItIs) {
    for (const auto *body :
         {"upstream timeout", "", " \n", "<html>502</html>", "{}", R"({"error":"text"})",
          R"({"error":{"message":null}})", R"({"error":{"message":5}})", R"({"error":{}})",
          R"(["error"])", "\xEF\xBB\xBFwith a mark", "caf\xC3\xA9"}) {
        EXPECT_EQ(messageFor(ScriptedAnswer::http(500, body)).toUtf8(), QByteArray(body));
    }
}

TEST_P(ErrorAnswerTest, AnEmptyBodyGivesAnEmptyMessage) {
    EXPECT_EQ(messageFor(ScriptedAnswer::http(503, "")), QString());
    EXPECT_EQ(messageFor(ScriptedAnswer().send("HTTP/1.1 503 Down\r\n\r\n").close()), QString());
}

TEST_P(ErrorAnswerTest, OnlyABodyThatIsNotUtf8GivesTheFallback) {
    const QStringList expected{QStringLiteral("Unknown OpenAI error."),
                               QStringLiteral("Unknown Anthropic error."),
                               QStringLiteral("Unknown Gemini error.")};
    const auto &fallback = expected.at(static_cast<int>(GetParam()));
    for (const QByteArray body : {"caf\xE9", "\xC0\xAF", "\xED\xA0\x80", "cut \xC3"})
        EXPECT_EQ(messageFor(ScriptedAnswer::http(502, body)), fallback);
}

TEST_P(ErrorAnswerTest, ALongTextIsShownInPart) {
    constexpr qsizetype longest = 1024;
    const QString text(10'000'000, u'x');
    for (const auto &body : {text.toUtf8(), errorBody(text)}) {
        const auto shown = messageFor(ScriptedAnswer::http(500, body));
        EXPECT_LE(shown.size(), longest + 1);
        EXPECT_TRUE(shown.endsWith(QStringLiteral("xxx…")));
    }
    EXPECT_EQ(messageFor(ScriptedAnswer::http(500, QByteArray(longest, 'x'))),
              QString(longest, u'x'));
    const auto cut = messageFor(ScriptedAnswer::http(
        500, (QStringLiteral("x") + QStringLiteral("\U0001F600").repeated(longest)).toUtf8()));
    EXPECT_TRUE(cut.isValidUtf16());
}

TEST_P(ErrorAnswerTest, AKeyThatIsRepeatedIsMasked) {
    for (const QString &before : {QString(), QString(1018, u'x'), QString(1024, u'x')}) {
        for (const auto &text : {before + testKey + QStringLiteral(" is wrong"),
                                 before + QStringLiteral("Bearer ") + testKey.toUpper(),
                                 testKey + testKey + before + testKey}) {
            for (const auto &body : {text.toUtf8(), errorBody(text)}) {
                const auto shown = messageFor(ScriptedAnswer::http(401, body));
                EXPECT_FALSE(shown.contains(testKey, Qt::CaseInsensitive));
                EXPECT_FALSE(shown.contains(testKey.left(4), Qt::CaseInsensitive));
            }
        }
    }
    EXPECT_EQ(messageFor(ScriptedAnswer::http(401, "No " + testKey.toUtf8() + "!")),
              QStringLiteral("No ••••••••••••••!"));
}

TEST_P(ErrorAnswerTest, AKeyIsMaskedInEveryDisguiseThatIsReadable) {
    const auto masked = [this](const QString &disguise) {
        const auto shown = messageFor(ScriptedAnswer::http(
            401, (QStringLiteral("No ") + disguise + QStringLiteral("!")).toUtf8()));
        EXPECT_TRUE(shown.startsWith(QStringLiteral("No •")) &&
                    shown.endsWith(QStringLiteral("•!")))
            << shown.toStdString();
    };
    QString inAddress;
    QString inJson;
    for (const QChar unit : testKey) {
        inAddress += u'%' + QString::number(unit.unicode(), 16);
        inJson += QStringLiteral("\\u00") + QString::number(unit.unicode(), 16);
    }
    masked(inAddress);
    masked(inJson);
    for (const char16_t *between : {u" ", u"\n", u"\r\n   ", u"\u200B"}) {
        QString apart = testKey;
        masked(apart.insert(5, QString::fromUtf16(between)));
    }
    const QString harmless = QStringLiteral("100% of \\users and 5%zz, \\u12");
    EXPECT_EQ(messageFor(ScriptedAnswer::http(500, harmless.toUtf8())), harmless);
}

TEST_P(ErrorAnswerTest, WhatHasNoShapeIsNotLaidOut) {
    EXPECT_EQ(messageFor(ScriptedAnswer::http(500, "a\x01\x02\tb\n\x7f")),
              QStringLiteral("a  \tb\n "));
}

TEST_P(ErrorAnswerTest, NoStatusIsSpecial) {
    for (const auto status : {300, 304, 400, 401, 402, 403, 404, 405, 407, 408, 409, 410, 413,
                              418, 422, 429, 500, 501, 502, 503, 504, 529, 599, 600, 999}) {
        const auto isBodyless = status == 304;
        EXPECT_EQ(messageFor(ScriptedAnswer::http(
                      status, isBodyless ? QByteArray() : errorBody(QStringLiteral("why")))),
                  isBodyless ? QString() : QStringLiteral("why"))
            << status;
    }
}

TEST_P(ErrorAnswerTest, AChallengeForCredentialsIsAnAnswerLikeAnyOther) {
    for (const auto *challenge : {"Bearer realm=\"api\"", "Basic realm=\"x\"", "Negotiate", "NTLM",
                                  "Digest realm=\"x\", nonce=\"1\", algorithm=MD5", "Other", ""}) {
        for (const auto status : {401, 407}) {
            const auto name = status == 401 ? "WWW-Authenticate: " : "Proxy-Authenticate: ";
            const auto before = server.requests().size();
            EXPECT_EQ(messageFor(ScriptedAnswer::http(status, errorBody(QStringLiteral("denied")),
                                                      "application/json",
                                                      {QByteArray(name) + challenge})),
                      QStringLiteral("denied"))
                << name << challenge;
            EXPECT_EQ(server.requests().size(), before + 2);
        }
    }
}

TEST_P(ErrorAnswerTest, ARedirectIsNotFollowed) {
    const LoopbackServer elsewhere;
    for (const auto status : {301, 302, 303, 307, 308}) {
        EXPECT_EQ(messageFor(ScriptedAnswer::http(
                      status, "moved", "text/plain",
                      {"Location: " + elsewhere.baseUrl().toUtf8() + "/v1/responses"})),
                  QStringLiteral("moved"));
    }
    EXPECT_EQ(elsewhere.connectionCount(), 0);
    EXPECT_EQ(server.requests().size(), 10U);
}

INSTANTIATE_TEST_SUITE_P(EveryProvider, ErrorAnswerTest, testing::ValuesIn(allProviders),
                         [](const auto &parameter) {
                             return rawValue(parameter.param).toStdString();
                         });

} // namespace

} // namespace quillmender::test
