#include "providers/TransportError.h"
#include "unit/providers/ProviderTest.h"

#include <QFile>

namespace quillmender::test {

namespace {

/// Servers that send more than anybody wants to hold.
class HeldMemoryTest : public ProviderTest {
  protected:
    void SetUp() override {
        client = LLMClient(patient_);
        beginMeasuring();
    }
    void TearDown() override { expectLittle(); }

    /// The mark of the most memory so far starts anew.
    void beginMeasuring() {
        QFile marks(QStringLiteral("/proc/self/clear_refs"));
        ASSERT_TRUE(marks.open(QIODevice::WriteOnly));
        ASSERT_EQ(marks.write("5"), 1);
        marks.close();
        before_ = memory("VmRSS:");
    }

    void expectLittle() const { EXPECT_LT(memory("VmHWM:") - before_, 300 * mebibyte); }

    void expectTooLarge(const ScriptedAnswer &answer) {
        server.setAnswer(answer);
        EXPECT_EQ(
            descriptionOf<TransportError>([this] { transform(configuration(AIProvider::openAI)); }),
            QStringLiteral("The answer of 127.0.0.1:%1 is too large.").arg(server.port()));
    }

    static ScriptedAnswer head(int status, const QByteArray &lines) {
        return ScriptedAnswer().send("HTTP/1.1 " + QByteArray::number(status) + " X\r\n" + lines +
                                     "\r\n");
    }

  private:
    static qint64 memory(const QByteArray &name) {
        QFile status(QStringLiteral("/proc/self/status"));
        EXPECT_TRUE(status.open(QIODevice::ReadOnly));
        for (const auto &line : status.readAll().split('\n')) {
            if (line.startsWith(name))
                return line.simplified().split(' ').value(1).toLongLong() * 1024;
        }
        ADD_FAILURE() << "no such figure";
        return 0;
    }

    QtHttpTransport patient_{std::chrono::minutes(5)};
    qint64 before_ = 0;
};

TEST_F(HeldMemoryTest, ABodyWithoutEndIsCutOffWhateverTheStatus) {
    for (const auto status : {200, 401, 402, 407, 500}) {
        expectTooLarge(head(status, "").send(QByteArray(mebibyte, 'x'), 4096));
        expectTooLarge(head(status, "Transfer-Encoding: chunked\r\n")
                           .send("100000\r\n" + QByteArray(mebibyte, 'x') + "\r\n", 4096));
    }
}

TEST_F(HeldMemoryTest, AChallengeChangesNothing) {
    for (const QByteArray challenge :
         {"WWW-Authenticate: Basic realm=\"x\"\r\n", "WWW-Authenticate: NTLM\r\n",
          "Proxy-Authenticate: NTLM\r\n"})
        for (const auto status : {401, 407})
            expectTooLarge(head(status, challenge).send(QByteArray(mebibyte, 'x'), 4096));
}

TEST_F(HeldMemoryTest, SmallPiecesCostNoMoreThanLargeOnes) {
    const QByteArray chunks = QByteArray("1\r\nx\r\n").repeated(200'000);
    for (const auto status : {200, 401})
        expectTooLarge(head(status, "Transfer-Encoding: chunked\r\n").send(chunks, 4096));
}

TEST_F(HeldMemoryTest, AnAnnouncedSizeIsNotWaitedFor) {
    expectTooLarge(head(200, "Content-Length: 99999999999\r\n").hold());
    expectTooLarge(head(200, "Transfer-Encoding: chunked\r\n").send("fffffffff\r\n").hold());
}

TEST_F(HeldMemoryTest, TheLargestAnswersOfAllShapesAreBounded) {
    constexpr qsizetype size = HttpRequest::usualLargestAnswer - 1000;
    const std::vector<std::function<QByteArray()>> bodies{
        [] { return "{\"output_text\":\"" + QByteArray(size, 'x') + "\"}"; },
        [] { return "{\"output_text\":\"" + QByteArray("\\u0041").repeated(size / 6) + "\"}"; },
        [] { return "{\"error\":{\"message\":\"" + QByteArray(size, 'x') + "\"}}"; },
        [] { return '[' + QByteArray("{\"a\":1},").repeated(size / 8) + "{}]"; },
        [] { return '[' + QByteArray("[],").repeated(size / 3) + "[]]"; },
        [] { return "{\"a\":" + QByteArray(size, '1') + '}'; },
        [] { return "{\"a\":1e999,\"b\":\"" + QByteArray(size, 'x') + "\"}"; },
    };
    for (const auto &makeBody : bodies) {
        for (const auto status : {200, 500}) {
            server.setAnswer(ScriptedAnswer::http(status, makeBody()));
            beginMeasuring();
            try {
                EXPECT_FALSE(transform(configuration(AIProvider::openAI)).isEmpty());
            } catch (const UserVisibleError &error) {
                EXPECT_FALSE(error.errorDescription().isEmpty());
            }
            expectLittle();
            server.setAnswer(ScriptedAnswer());
        }
    }
}

} // namespace

} // namespace quillmender::test
