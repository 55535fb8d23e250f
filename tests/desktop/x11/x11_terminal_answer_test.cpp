#include "desktop/x11/ScriptedOwner.h"
#include "desktop/x11/TerminalFixture.h"

#include <csignal>

namespace quillmender::x11 {

namespace {

using namespace std::chrono_literals;

/// A program that takes a line for an order, and an answer that has one. `%1` is the file that
/// shows whether the order was carried out.
struct Order {
    const char *program;
    const char *answer;
    ChordResult::Outcome outcome;
};

class TerminalOrderTest : public TerminalFixture, public testing::WithParamInterface<Order> {};

TEST_P(TerminalOrderTest, IsNotCarriedOut) {
    start(QLatin1String(GetParam().program));
    const QString answer = QString::fromUtf8(GetParam().answer).arg(path("ran"));
    const bool isExpectedTyped = GetParam().outcome == Outcome::typed;
    EXPECT_TRUE(isExpectedTyped ? pasteInTheEnd(answer) : paste(answer) == GetParam().outcome);
    if (isExpectedTyped)
        EXPECT_TRUE(wait(lent_->wasRead(20s)));
    else
        EXPECT_THAT(reason_, testing::StartsWith("the terminal does not take "));
    pasteboard().replaceContents({});
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
    testing::Values(Order{dash, "touch %1\n", ChordResult::Outcome::typed},
                    Order{dash, "touch %1\r\n\r\n", ChordResult::Outcome::typed},
                    Order{dash, "touch %1\r", ChordResult::Outcome::typed},
                    Order{dash, "touch %1\xc2\x85", ChordResult::Outcome::typed},
                    Order{dash, "touch %1\xe2\x80\xa8", ChordResult::Outcome::typed},
                    Order{dash, "touch %1\x0f", ChordResult::Outcome::typed},
                    Order{dash, "touch %1\nexit", ChordResult::Outcome::withheld},
                    Order{dash, "touch %1\rexit", ChordResult::Outcome::withheld},
                    Order{dash,
                          "touch %1\xe2\x80\xa9"
                          "exit",
                          ChordResult::Outcome::withheld},
                    Order{dash, "\n\n", ChordResult::Outcome::withheld},
                    Order{unedited, "touch %1\n", ChordResult::Outcome::typed},
                    Order{bash, "\x1b[201~touch %1\n", ChordResult::Outcome::typed},
                    Order{bash, "\x1b[201~touch %1\x0f", ChordResult::Outcome::typed},
                    Order{bash, "\x1b[201~touch %1\nexit", ChordResult::Outcome::withheld},
                    Order{bash,
                          "\xc2\x9b"
                          "201~touch %1\n",
                          ChordResult::Outcome::typed},
                    Order{completing, "echo some\tword", ChordResult::Outcome::typed},
                    Order{vimWithoutMarks, ":silent !touch %1\n\nx",
                          ChordResult::Outcome::withheld},
                    Order{vimElsewhere, ":silent !touch %1\n\nx", ChordResult::Outcome::withheld},
                    Order{neovim, ":silent !touch %1\n\nx", ChordResult::Outcome::typed},
                    Order{python, "open('%1', 'w')\n", ChordResult::Outcome::typed},
                    Order{python, "open('%1', 'w')\n1", ChordResult::Outcome::withheld}));

class TerminalAnswerTest : public TerminalFixture {
  protected:
    // Neovim asks for the marks around a paste whatever it is told of them.
    const QString editor =
        QStringLiteral("nvim -u NONE -n --cmd 'set t_BE=' -c 'nnoremap q :wq<CR>' "
                       "-c 'call writefile([getpid()], \"ready\")' -c startinsert text");
};

TEST_F(TerminalAnswerTest, HasItsLinesInAnEditor) {
    start(QStringLiteral("exec ") + editor);
    ASSERT_TRUE(pasteInTheEnd(QStringLiteral("one\n  two\r\n\tthree\n")));
    EXPECT_TRUE(wait(lent_->wasRead(20s)));
    tap({XKB_KEY_Escape, XKB_KEY_q});
    // It makes the file before it fills it.
    waitFor([this] { return contents("text").endsWith("three\n"); });
    EXPECT_EQ(contents("text"), "one\n  two\n\tthree\n");
}

TEST_F(TerminalAnswerTest, HasItsLinesInAnotherEditor) {
    start(QStringLiteral("touch ready; exec nano --ignorercfiles --nonewlines text"));
    ASSERT_TRUE(pasteInTheEnd(QStringLiteral("one\n\ttwo")));
    EXPECT_TRUE(wait(lent_->wasRead(20s)));
    EXPECT_TRUE(waitFor([this] {
        tapWithControl(XKB_KEY_s);
        return contents("text") == "one\n\ttwo";
    })) << contents("text").toStdString();
}

TEST_F(TerminalAnswerTest, HasItsTabsInAnEditorOnly) {
    start(editor + QStringLiteral("; cat > after"));
    ASSERT_TRUE(pasteInTheEnd(QStringLiteral("one\ttwo")));
    EXPECT_TRUE(wait(lent_->wasRead(20s)));
    tap({XKB_KEY_Escape, XKB_KEY_q});
    ASSERT_TRUE(waitFor([this] { return exists("after"); }));
    EXPECT_EQ(contents("text"), "one\ttwo\n");
    ASSERT_EQ(paste(QStringLiteral("three\tfour")), Outcome::typed);
    EXPECT_TRUE(wait(lent_->wasRead(20s)));
    tap({XKB_KEY_Return});
    EXPECT_TRUE(waitFor([this] { return !contents("after").isEmpty(); }));
    EXPECT_EQ(contents("after"), "three four\n");
}

TEST_F(TerminalAnswerTest, HasOneLineWhenTheEditorHasEndedSinceTheCheck) {
    // An editor that is killed leaves the terminal as it had it.
    start(editor + QStringLiteral("; stty sane; cat > after"));
    const auto endEditor = [this] {
        ::kill(contents("ready").trimmed().toInt(), SIGTERM);
        EXPECT_TRUE(waitFor([this] { return exists("after"); }));
    };
    EXPECT_TRUE(waitFor([&] {
        beforeTheKey(endEditor);
        return paste(QStringLiteral("one\ntwo\tthree")) == Outcome::typed;
    }));
    EXPECT_TRUE(wait(lent_->wasRead(20s)));
    tap({XKB_KEY_Return});
    EXPECT_TRUE(waitFor([this] { return !contents("after").isEmpty(); }));
    EXPECT_EQ(contents("after"), "one two three\n");
}

TEST_F(TerminalAnswerTest, IsNotPastedWhenSomebodyElseHasTakenASelection) {
    start(QStringLiteral("touch ready; cat > typed"));
    for (const char *selection : {"PRIMARY", "CLIPBOARD"}) {
        std::unique_ptr<ScriptedOwner> other;
        beforeTheKey([&] {
            other = std::make_unique<ScriptedOwner>(server_.display(), selection);
            other->offer("UTF8_STRING", {other->atom("UTF8_STRING"), 8, "an order\n"});
        });
        EXPECT_EQ(paste(QStringLiteral("answer")), Outcome::withheld) << selection;
        EXPECT_EQ(reason_, "somebody else took a selection");
        EXPECT_NE(other, nullptr);
    }
    tapWithControl(XKB_KEY_d);
    EXPECT_TRUE(waitFor([this] { return xterm_->waitForFinished(100); }));
    EXPECT_EQ(contents("typed"), "");
}

TEST_F(TerminalAnswerTest, IsNotPastedIntoATerminalThatIsStopped) {
    start(QStringLiteral("touch ready; cat > typed"));
    const auto terminal = static_cast<pid_t>(xterm_->processId());
    ::kill(terminal, SIGSTOP);
    ASSERT_TRUE(waitFor([terminal] {
        QFile state(QStringLiteral("/proc/%1/stat").arg(terminal));
        return state.open(QIODevice::ReadOnly) && state.readAll().contains(") T ");
    }));
    EXPECT_EQ(paste(QStringLiteral("answer")), Outcome::withheld);
    EXPECT_EQ(reason_, "the terminal is stopped");
    ::kill(terminal, SIGCONT);
    bool isStopped = false;
    EXPECT_TRUE(waitFor([&] {
        beforeTheKey([&] { isStopped = ::kill(terminal, SIGSTOP) == 0; });
        return paste(QStringLiteral("answer")) == Outcome::withheld && isStopped;
    }));
    EXPECT_EQ(reason_, "the terminal is stopped");
    ::kill(terminal, SIGCONT);
    tapWithControl(XKB_KEY_d);
    EXPECT_TRUE(waitFor([this] { return xterm_->waitForFinished(100); }));
    EXPECT_EQ(contents("typed"), "");
}

} // namespace

} // namespace quillmender::x11

int main(int argc, char **argv) {
    return quillmender::x11::runX11Tests(argc, argv);
}
