#include "model/DecodingError.h"
#include "unit/providers/ProviderTest.h"

namespace quillmender::test {

namespace {

class AnthropicExchangeTest : public ProviderTest {
  protected:
    QString answerTo(const QByteArray &body) {
        return ProviderTest::answerTo(AIProvider::anthropic, body);
    }
};

TEST_F(AnthropicExchangeTest, TextBlocksAreJoinedWithNothingBetween) {
    EXPECT_EQ(answerTo(R"({"content":[{"type":"text","text":"Hello"},)"
                       R"({"type":"text","text":"World"}]})"),
              QStringLiteral("HelloWorld"));
}

TEST_F(AnthropicExchangeTest, WhiteSpaceBetweenBlocksIsKept) {
    EXPECT_EQ(answerTo(R"({"content":[{"type":"text","text":" Line one"},)"
                       R"({"type":"text","text":"\nLine two "}]})"),
              QStringLiteral("Line one\nLine two"));
}

TEST_F(AnthropicExchangeTest, OtherBlocksAndBlocksWithoutTextAreSkipped) {
    EXPECT_EQ(answerTo(R"({"content":[{"type":"thinking","text":"hm"},{"type":"text"},)"
                       R"({"type":"text","text":null},{"type":"Text","text":"no"},)"
                       R"({"type":"text","text":"yes"}],"stop_reason":"max_tokens","usage":{}})"),
              QStringLiteral("yes"));
}

TEST_F(AnthropicExchangeTest, AnAnswerWithoutTextIsInvalid) {
    for (const auto *body : {R"({"content":[]})", R"({"content":[{"type":"tool_use"}]})",
                             R"({"content":[{"type":"text","text":" \n "}]})"}) {
        EXPECT_EQ(failureCaseOf([&] { answerTo(body); }), AppFailure::Case::invalidResponse)
            << body;
    }
}

TEST_F(AnthropicExchangeTest, AWrongShapeIsADecodingError) {
    for (const auto *body :
         {R"({})", R"({"content":null})", R"({"content":"text"})", R"({"content":[{}]})",
          R"({"content":[{"type":"tool_use","text":5}]})", R"({"content":["text"]})"}) {
        EXPECT_NE(descriptionOf<DecodingError>([&] { answerTo(body); }), QString()) << body;
    }
}

} // namespace

} // namespace quillmender::test
