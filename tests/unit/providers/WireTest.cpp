#include "unit/providers/ProviderTest.h"

namespace quillmender::test {

namespace {

constexpr auto systemPromptJson =
    R"("You are a text transformation assistant.\nPreserve the user's intended meaning.\nDo not explain your work.\nDo not wrap the result in quotes.\nReturn only the transformed text.")";

/// What the program says of itself and the protocol needs, after the listed headers.
QByteArrayList withProtocolHeaders(const ReceivedRequest &request, QByteArrayList listed) {
    return listed << "User-Agent: Quillmender" << "Accept-Encoding: identity"
                  << "Content-Length: " + QByteArray::number(request.body.size());
}

/// Host first or last is the protocol's business.
QByteArrayList productHeaders(const ReceivedRequest &request) {
    QByteArrayList lines;
    for (const auto &line : request.headerLines) {
        const auto name = line.left(line.indexOf(':'));
        if (name != "Host" && name != "Connection")
            lines << line;
    }
    return lines;
}

class WireTest : public ProviderTest {};

TEST_F(WireTest, OpenAIRequestIsExact) {
    answerTo(AIProvider::openAI, openAIBody(QStringLiteral("ok")));

    const auto request = onlyRequest();
    EXPECT_TRUE(request.head.startsWith("POST /v1/responses HTTP/1.1\r\n"));
    EXPECT_EQ(productHeaders(request),
              withProtocolHeaders(request, {"Content-Type: application/json",
                                            "Authorization: Bearer sk-test-9f8e7d"}));
    EXPECT_EQ(request.body,
              QByteArray(R"({"model":"m","store":false,"text":{"format":{"type":"text"}},"input":[)"
                         R"({"role":"developer","content":[{"type":"input_text","text":)") +
                  systemPromptJson +
                  R"(}]},{"role":"user","content":[{"type":"input_text","text":"Fix this"}]}]})");
}

TEST_F(WireTest, AnthropicRequestIsExact) {
    answerTo(AIProvider::anthropic, anthropicBody(QStringLiteral("ok")));

    const auto request = onlyRequest();
    EXPECT_TRUE(request.head.startsWith("POST /v1/messages HTTP/1.1\r\n"));
    EXPECT_EQ(
        productHeaders(request),
        withProtocolHeaders(request, {"Content-Type: application/json", "x-api-key: sk-test-9f8e7d",
                                      "anthropic-version: 2023-06-01"}));
    EXPECT_EQ(request.body, QByteArray(R"({"model":"m","max_tokens":2048,"system":)") +
                                systemPromptJson +
                                R"(,"messages":[{"role":"user","content":"Fix this"}]})");
}

TEST_F(WireTest, GeminiRequestIsExact) {
    answerTo(AIProvider::gemini, geminiBody(QStringLiteral("ok")));

    const auto request = onlyRequest();
    EXPECT_TRUE(request.head.startsWith("POST /v1beta/models/m:generateContent HTTP/1.1\r\n"));
    EXPECT_EQ(productHeaders(request),
              withProtocolHeaders(
                  request, {"Content-Type: application/json", "x-goog-api-key: sk-test-9f8e7d"}));
    EXPECT_EQ(request.body, QByteArray(R"({"system_instruction":{"parts":[{"text":)") +
                                systemPromptJson +
                                R"(}]},"contents":[{"role":"user","parts":[{"text":"Fix this"}]}],)"
                                R"("generationConfig":{"responseMimeType":"text/plain"}})");
    EXPECT_FALSE(request.target.contains("sk-test"));
}

TEST_F(WireTest, TheProtocolsOwnHeadersCarryNothingElse) {
    answerTo(AIProvider::openAI, openAIBody(QStringLiteral("ok")));

    const auto request = onlyRequest();
    EXPECT_EQ(request.headerLines.size(), 7);
    EXPECT_EQ(request.header("host"), "127.0.0.1:" + QByteArray::number(server.port()));
    EXPECT_EQ(request.header("connection"), "close");
}

TEST_F(WireTest, TextsTravelUnchanged) {
    server.setAnswer(ScriptedAnswer::http(200, openAIBody(QStringLiteral("ok"))));
    auto settings = configuration(AIProvider::openAI);
    settings.model = QStringLiteral(" modèle/\"x\" ");
    transform(settings, QStringLiteral(" tab\t\"quote\" \\ / \u00e9 \U0001F600 \u2028\n\x01 "));

    const auto body = onlyRequest().body;
    EXPECT_TRUE(body.contains(R"({"model":" modèle/\"x\" ",)"));
    EXPECT_TRUE(body.contains("\"text\":\" tab\\t\\\"quote\\\" \\\\ / \u00e9 \U0001F600 "
                              "\u2028\\n\\u0001 \"}]}]}"));
}

TEST_F(WireTest, HalfASurrogatePairIsReplaced) {
    server.setAnswer(ScriptedAnswer::http(200, openAIBody(QStringLiteral("ok"))));
    transform(configuration(AIProvider::openAI),
              QStringLiteral("a") + QChar(0xd83d) + QStringLiteral("b"));

    EXPECT_TRUE(onlyRequest().body.contains("\"text\":\"a\uFFFDb\""));
}

TEST_F(WireTest, GenerateSendsHeaderInstructionAndSourceText) {
    server.setAnswer(ScriptedAnswer::http(200, anthropicBody(QStringLiteral("Dear all"))));
    const auto answer =
        runTask(client.generate(QStringLiteral("meeting notes"), QStringLiteral("write an email"),
                                configuration(AIProvider::anthropic)));

    EXPECT_EQ(answer, QStringLiteral("Dear all"));
    EXPECT_TRUE(onlyRequest().body.endsWith(
        R"("content":"Use the source text below as raw notes, context, or a rough request.\nFollow the instruction to generate the final text the user wants.\nIf the instruction does not specify a target language, preserve the language implied by the source text.\nReturn only the final generated text.\n\nInstruction:\nwrite an email\n\nSource text:\nmeeting notes"}]})"));
}

TEST_F(WireTest, AnEndpointWithAnyPathAndQueryIsUsedAsItIs) {
    server.setAnswer(ScriptedAnswer::http(200, openAIBody(QStringLiteral("ok"))));
    auto settings = configuration(AIProvider::openAI);
    settings.endpoint = server.baseUrl() + QStringLiteral("/proxy//a%2Fb/chat?api=1&x=%20#part");
    transform(settings);

    EXPECT_EQ(onlyRequest().target, "/proxy//a%2Fb/chat?api=1&x=%20");
}

TEST_F(WireTest, ALargePromptArrivesWhole) {
    server.setAnswer(ScriptedAnswer::http(200, openAIBody(QStringLiteral("ok"))));
    const QString prompt(10'000'000, u'x');
    transform(configuration(AIProvider::openAI), prompt);

    EXPECT_TRUE(onlyRequest().body.endsWith(prompt.toUtf8() + R"("}]}]})"));
}

} // namespace

} // namespace quillmender::test
