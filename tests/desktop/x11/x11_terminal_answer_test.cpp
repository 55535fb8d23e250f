#include "desktop/x11/ScriptedOwner.h"
#include "desktop/x11/TerminalFixture.h"

#include <csignal>

namespace quillmender {

namespace {

using namespace std::chrono_literals;

/// A program that takes a line for an order, and an answer that has one. `%1` is the file that
/// shows whether the order was carried out.
struct Order {
    const char *program;
    const char *answer;
    ChordReadiness readiness;
};

class TerminalOrderTest : public TerminalFixture, public testing::WithParamInterface<Order> {};

TEST_P(TerminalOrderTest, IsNotCarriedOut) {
    start(QLatin1String(GetParam().program));
    const QString answer = QString::fromUtf8(GetParam().answer).arg(path("ran"));
    EXPECT_EQ(prepare(answer), GetParam().readiness);
    if (GetParam().readiness == ChordReadiness::ready) {
        EXPECT_TRUE(post());
        EXPECT_TRUE(wait(pasteboard().stringWasRead(20s)));
    }
    pasteboard().clearContents();
    // What is on the line goes, and the end of the input ends the program: all that was typed
    // before has arrived by then.
    EXPECT_TRUE(waitFor([this] {
        tapWithControl(XKB_KEY_u);
        tapWithControl(XKB_KEY_d);
        return xterm_->waitForFinished(200);
    }));
    EXPECT_FALSE(exists("ran"));
}

constexpr auto dash = "exec env ENV=\"$PWD/env\" PS1='$ ' dash -c 'touch ready; exec dash -i'";
constexpr auto bash = "exec bash --norc --noprofile -c 'touch ready; exec bash --norc --noprofile'";
constexpr auto unedited = "exec bash -c 'touch ready; exec bash --norc --noprofile --noediting'";
constexpr auto python = "exec /usr/bin/python3 -q -i -c \"open('ready', 'w')\"";

INSTANTIATE_TEST_SUITE_P(
    Shells, TerminalOrderTest,
    testing::Values(Order{dash, "touch %1\n", ChordReadiness::ready},
                    Order{dash, "touch %1\r\n\r\n", ChordReadiness::ready},
                    Order{dash, "touch %1\r", ChordReadiness::ready},
                    Order{dash, "touch %1\xc2\x85", ChordReadiness::ready},
                    Order{dash, "touch %1\xe2\x80\xa8", ChordReadiness::ready},
                    Order{dash, "touch %1\x0f", ChordReadiness::ready},
                    Order{dash, "touch %1\nexit", ChordReadiness::withheld},
                    Order{dash, "touch %1\rexit", ChordReadiness::withheld},
                    Order{dash,
                          "touch %1\xe2\x80\xa9"
                          "exit",
                          ChordReadiness::withheld},
                    Order{dash, "\n\n", ChordReadiness::withheld},
                    Order{unedited, "touch %1\n", ChordReadiness::ready},
                    Order{bash, "\x1b[201~touch %1\n", ChordReadiness::ready},
                    Order{bash, "\x1b[201~touch %1\x0f", ChordReadiness::ready},
                    Order{bash, "\x1b[201~touch %1\nexit", ChordReadiness::withheld},
                    Order{bash,
                          "\xc2\x9b"
                          "201~touch %1\n",
                          ChordReadiness::ready},
                    Order{python, "open('%1', 'w')\n", ChordReadiness::ready},
                    Order{python, "open('%1', 'w')\n1", ChordReadiness::withheld}));

class TerminalAnswerTest : public TerminalFixture {
  protected:
    const QString vim = QStringLiteral(
        "vim -u NONE -N -n -c 'nnoremap q :wq<CR>' -c 'call writefile([], \"ready\")' "
        "-c startinsert text");

    /// The terminal may take a moment to be at the editor's disposal.
    ChordReadiness prepareUntilReady(const QString &answer) {
        ChordReadiness readiness = ChordReadiness::withheld;
        waitFor([&] { return (readiness = prepare(answer)) == ChordReadiness::ready; });
        return readiness;
    }
};

TEST_F(TerminalAnswerTest, HasItsLinesInAnEditor) {
    start(QStringLiteral("exec ") + vim);
    ASSERT_EQ(prepareUntilReady(QStringLiteral("one\n  two\r\n\tthree\n")), ChordReadiness::ready);
    EXPECT_TRUE(post());
    EXPECT_TRUE(wait(pasteboard().stringWasRead(20s)));
    tap({XKB_KEY_Escape, XKB_KEY_q});
    EXPECT_TRUE(waitFor([this] { return exists("text"); }));
    EXPECT_EQ(contents("text"), "one\n  two\n\tthree\n");
}

TEST_F(TerminalAnswerTest, HasItsLinesInAnotherEditor) {
    start(QStringLiteral("touch ready; exec nano --ignorercfiles --nonewlines text"));
    ASSERT_EQ(prepareUntilReady(QStringLiteral("one\n  two")), ChordReadiness::ready);
    EXPECT_TRUE(post());
    EXPECT_TRUE(wait(pasteboard().stringWasRead(20s)));
    EXPECT_TRUE(waitFor([this] {
        tapWithControl(XKB_KEY_s);
        return contents("text") == "one\n  two";
    })) << contents("text").toStdString();
}

TEST_F(TerminalAnswerTest, HasOneLineWhenTheEditorHasEndedSinceTheCheck) {
    start(vim + QStringLiteral("; cat > after"));
    const QString order = QStringLiteral("one\ntwo");
    ASSERT_EQ(prepareUntilReady(order), ChordReadiness::ready);
    tap({XKB_KEY_Escape, XKB_KEY_q});
    ASSERT_TRUE(waitFor([this] { return exists("after"); }));
    EXPECT_TRUE(post());
    EXPECT_TRUE(wait(pasteboard().stringWasRead(20s)));
    tap({XKB_KEY_Return});
    EXPECT_TRUE(waitFor([this] { return !contents("after").isEmpty(); }));
    EXPECT_EQ(contents("after"), "one two\n");
}

TEST_F(TerminalAnswerTest, IsNotPastedWhenSomebodyElseHasTakenASelection) {
    start(QStringLiteral("touch ready; cat > typed"));
    for (const char *selection : {"PRIMARY", "CLIPBOARD"}) {
        ASSERT_EQ(prepare(QStringLiteral("answer")), ChordReadiness::ready);
        ScriptedOwner other(server_.display(), selection);
        other.offer("UTF8_STRING", {other.atom("UTF8_STRING"), 8, "an order\n"});
        EXPECT_FALSE(post()) << selection;
    }
    tapWithControl(XKB_KEY_d);
    EXPECT_TRUE(waitFor([this] { return xterm_->waitForFinished(100); }));
    EXPECT_EQ(contents("typed"), "");
}

TEST_F(TerminalAnswerTest, IsNotPastedIntoATerminalThatIsStopped) {
    start(QStringLiteral("touch ready; cat > typed"));
    const auto terminal = static_cast<pid_t>(xterm_->processId());
    ::kill(terminal, SIGSTOP);
    EXPECT_EQ(prepare(QStringLiteral("answer")), ChordReadiness::withheld);
    ::kill(terminal, SIGCONT);
    ASSERT_TRUE(
        waitFor([&] { return prepare(QStringLiteral("answer")) == ChordReadiness::ready; }));
    ::kill(terminal, SIGSTOP);
    EXPECT_FALSE(post());
    ::kill(terminal, SIGCONT);
    tapWithControl(XKB_KEY_d);
    EXPECT_TRUE(waitFor([this] { return xterm_->waitForFinished(100); }));
    EXPECT_EQ(contents("typed"), "");
}

} // namespace

} // namespace quillmender

int main(int argc, char **argv) {
    return quillmender::runX11Tests(argc, argv);
}
