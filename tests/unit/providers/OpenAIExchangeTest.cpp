#include "model/DecodingError.h"
#include "unit/providers/ProviderTest.h"

namespace quillmender::test {

namespace {

class OpenAIExchangeTest : public ProviderTest {
  protected:
    QString answerTo(const QByteArray &body) {
        return ProviderTest::answerTo(AIProvider::openAI, body);
    }
};

TEST_F(OpenAIExchangeTest, TheConvenienceTextWinsAndIsTrimmed) {
    EXPECT_EQ(answerTo(R"({"output_text":"  Done.  ","output":[{"content":[)"
                       R"({"type":"output_text","text":"other"}]}]})"),
              QStringLiteral("Done."));
}

TEST_F(OpenAIExchangeTest, ABlankConvenienceTextFallsThroughToTheOutput) {
    EXPECT_EQ(answerTo(R"({"output_text":"   ","output":[{"content":[)"
                       R"({"type":"output_text","text":"Hi"}]}]})"),
              QStringLiteral("Hi"));
}

TEST_F(OpenAIExchangeTest, TheFirstTextThatIsNotBlankWinsAlone) {
    EXPECT_EQ(answerTo(R"({"output":[{"content":[{"type":"output_text","text":" \n "}]},)"
                       R"({"content":[{"type":"output_text","text":"A"}]},)"
                       R"({"content":[{"type":"output_text","text":"B"}]}]})"),
              QStringLiteral("A"));
}

TEST_F(OpenAIExchangeTest, WhiteSpaceAroundTheAnswerIsCutOff) {
    EXPECT_EQ(answerTo(openAIBody(QStringLiteral("\n  Hello.  \n"))), QStringLiteral("Hello."));
}

TEST_F(OpenAIExchangeTest, OtherTypesAreNeverTheAnswer) {
    EXPECT_EQ(
        answerTo(R"({"output":[{"content":[{"type":"refusal","text":"No"},)"
                 R"({"type":"OUTPUT_TEXT","text":"No"},{"type":"output_text","text":"Yes"}]}]})"),
        QStringLiteral("Yes"));
    EXPECT_EQ(failureCaseOf([this] {
                  answerTo(R"({"output":[{"content":[{"type":"refusal","text":"No"}]}]})");
              }),
              AppFailure::Case::invalidResponse);
}

TEST_F(OpenAIExchangeTest, ItemsWithoutContentAndContentWithoutTextContributeNothing) {
    EXPECT_EQ(answerTo(R"({"output_text":null,"output":[{"type":"reasoning"},{"content":null},)"
                       R"({"content":[{"type":"output_text"},{"type":"output_text","text":null},)"
                       R"({"type":"output_text","text":"A"}]}]})"),
              QStringLiteral("A"));
}

TEST_F(OpenAIExchangeTest, AnAnswerWithoutTextIsInvalid) {
    for (const auto *body :
         {"{}", R"({"output":[]})", R"({"output_text":""})", R"({"output":null})"}) {
        EXPECT_EQ(failureCaseOf([&] { answerTo(body); }), AppFailure::Case::invalidResponse)
            << body;
    }
}

TEST_F(OpenAIExchangeTest, AWrongShapeIsADecodingError) {
    for (const auto *body : {R"({"output":[{"content":[{"text":"A"}]}]})",
                             R"({"output_text":"A","output":[{"content":[{"text":"A"}]}]})",
                             R"({"output":[{"content":[{"type":null,"text":"A"}]}]})",
                             R"({"output":[{"content":[{"type":"output_text","text":1}]}]})",
                             R"({"output_text":["A"]})", R"({"output":{}})", R"({"output":[1]})",
                             R"({"output":[{"content":{}}]})", R"([])", R"("A")", "null"}) {
        EXPECT_NE(descriptionOf<DecodingError>([&] { answerTo(body); }), QString()) << body;
    }
}

} // namespace

} // namespace quillmender::test
