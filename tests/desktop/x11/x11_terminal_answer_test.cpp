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
    const ChordReadiness readiness =
        GetParam().readiness == ChordReadiness::ready ? prepareUntilReady(answer) : prepare(answer);
    EXPECT_EQ(readiness, GetParam().readiness);
    if (readiness == ChordReadiness::ready) {
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
// It carries out an order of its user's for each key that completes a word.
constexpr auto completing =
    "printf '%s\\n' \"bind 'set enable-bracketed-paste off'\" 'order() { touch ran; }' "
    "'complete -D -F order' 'touch ready' > rc; exec bash --noprofile --rcfile rc";
// Told not to ask for the marks around a paste, and to ask for them as for another terminal.
constexpr auto vimWithoutMarks = "exec vim -u NONE -N -n --cmd 'set t_BE=' "
                                 "-c 'nnoremap <C-d> :qa!<CR>' -c 'call writefile([], \"ready\")'";
constexpr auto vimElsewhere = "exec vim -u NONE -N -n --cmd 'set term=ansi' "
                              "-c 'nnoremap <C-d> :qa!<CR>' -c 'call writefile([], \"ready\")'";
constexpr auto neovim = "exec nvim -u NONE -n --cmd 'set t_BE=' "
                        "-c 'nnoremap <C-d> :qa!<CR>' -c 'call writefile([], \"ready\")'";
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
                    Order{completing, "echo some\tword", ChordReadiness::ready},
                    Order{vimWithoutMarks, ":silent !touch %1\n\nx", ChordReadiness::withheld},
                    Order{vimElsewhere, ":silent !touch %1\n\nx", ChordReadiness::withheld},
                    Order{neovim, ":silent !touch %1\n\nx", ChordReadiness::ready},
                    Order{python, "open('%1', 'w')\n", ChordReadiness::ready},
                    Order{python, "open('%1', 'w')\n1", ChordReadiness::withheld}));

class TerminalAnswerTest : public TerminalFixture {
  protected:
    // Neovim asks for the marks around a paste whatever it is told of them.
    const QString editor =
        QStringLiteral("nvim -u NONE -n --cmd 'set t_BE=' -c 'nnoremap q :wq<CR>' "
                       "-c 'call writefile([], \"ready\")' -c startinsert text");
};

TEST_F(TerminalAnswerTest, HasItsLinesInAnEditor) {
    start(QStringLiteral("exec ") + editor);
    ASSERT_EQ(prepareUntilReady(QStringLiteral("one\n  two\r\n\tthree\n")), ChordReadiness::ready);
    EXPECT_TRUE(post());
    EXPECT_TRUE(wait(pasteboard().stringWasRead(20s)));
    tap({XKB_KEY_Escape, XKB_KEY_q});
    EXPECT_TRUE(waitFor([this] { return exists("text"); }));
    EXPECT_EQ(contents("text"), "one\n  two\n\tthree\n");
}

TEST_F(TerminalAnswerTest, HasItsLinesInAnotherEditor) {
    start(QStringLiteral("touch ready; exec nano --ignorercfiles --nonewlines text"));
    ASSERT_EQ(prepareUntilReady(QStringLiteral("one\n\ttwo")), ChordReadiness::ready);
    EXPECT_TRUE(post());
    EXPECT_TRUE(wait(pasteboard().stringWasRead(20s)));
    EXPECT_TRUE(waitFor([this] {
        tapWithControl(XKB_KEY_s);
        return contents("text") == "one\n\ttwo";
    })) << contents("text").toStdString();
}

TEST_F(TerminalAnswerTest, HasItsTabsInAnEditorOnly) {
    start(editor + QStringLiteral("; cat > after"));
    ASSERT_EQ(prepareUntilReady(QStringLiteral("one\ntwo")), ChordReadiness::ready);
    ASSERT_EQ(prepare(QStringLiteral("one\ttwo")), ChordReadiness::ready);
    EXPECT_TRUE(post());
    EXPECT_TRUE(wait(pasteboard().stringWasRead(20s)));
    tap({XKB_KEY_Escape, XKB_KEY_q});
    ASSERT_TRUE(waitFor([this] { return exists("after"); }));
    EXPECT_EQ(contents("text"), "one\ttwo\n");
    ASSERT_EQ(prepare(QStringLiteral("three\tfour")), ChordReadiness::ready);
    EXPECT_TRUE(post());
    EXPECT_TRUE(wait(pasteboard().stringWasRead(20s)));
    tap({XKB_KEY_Return});
    EXPECT_TRUE(waitFor([this] { return !contents("after").isEmpty(); }));
    EXPECT_EQ(contents("after"), "three four\n");
}

TEST_F(TerminalAnswerTest, HasOneLineWhenTheEditorHasEndedSinceTheCheck) {
    start(editor + QStringLiteral("; cat > after"));
    const QString order = QStringLiteral("one\ntwo\tthree");
    ASSERT_EQ(prepareUntilReady(order), ChordReadiness::ready);
    tap({XKB_KEY_Escape, XKB_KEY_q});
    ASSERT_TRUE(waitFor([this] { return exists("after"); }));
    EXPECT_TRUE(post());
    EXPECT_TRUE(wait(pasteboard().stringWasRead(20s)));
    tap({XKB_KEY_Return});
    EXPECT_TRUE(waitFor([this] { return !contents("after").isEmpty(); }));
    EXPECT_EQ(contents("after"), "one two three\n");
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
