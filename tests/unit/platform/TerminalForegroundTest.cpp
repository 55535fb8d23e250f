#include "platform/linux/terminal/TerminalForeground.h"

#include "TerminalProgram.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <csignal>
#include <unistd.h>

namespace quillmender {
namespace {

/// This process is the terminal emulator.
class TerminalForegroundTest : public testing::Test {
  protected:
    bool takesLineEnds() { return hasEditorsOnly(::getpid()); }

    /// Whether that becomes the answer within the deadline.
    bool becomes(bool expected, TerminalProgram &program) {
        const QDeadlineTimer deadline(20'000);
        while (takesLineEnds() != expected) {
            if (deadline.hasExpired())
                return false;
            program.drain();
        }
        return true;
    }

    QByteArray folder() const { return QFile::encodeName(folder_.path()); }

    const QByteArrayList neovim{"nvim", "-u", "NONE", "-n", "some text"};

  private:
    QTemporaryDir folder_;
};

TEST_F(TerminalForegroundTest, HasNoEditorWithoutATerminal) {
    EXPECT_FALSE(takesLineEnds());
    EXPECT_FALSE(hasEditorsOnly(0));
    EXPECT_FALSE(hasEditorsOnly(1));
}

TEST_F(TerminalForegroundTest, HasNoEditorInWhatReadsLines) {
    for (const QByteArrayList &command :
         {QByteArrayList{"dash"}, QByteArrayList{"bash", "--norc", "--noprofile"},
          QByteArrayList{"python3", "-c",
                         "import sys; sys.ps1 = 'ready> '; import code; "
                         "code.interact(banner='')"}}) {
        TerminalProgram program(folder(), command);
        ASSERT_TRUE(program.writes("ready> ")) << command.constFirst().toStdString();
        EXPECT_FALSE(takesLineEnds()) << command.constFirst().toStdString();
    }
}

TEST_F(TerminalForegroundTest, KnowsEditors) {
    for (const QByteArrayList &command : {neovim, neovim + QByteArrayList{"--cmd", "set t_BE="},
                                          QByteArrayList{"nano", "some text"}}) {
        TerminalProgram program(folder(), command);
        EXPECT_TRUE(becomes(true, program)) << command.constFirst().toStdString();
    }
}

TEST_F(TerminalForegroundTest, HasNoEditorInVimWhichMayNotAskForMarks) {
    for (const char *name : {"vim", "vi"}) {
        TerminalProgram program(folder(), {name, "-u", "NONE", "-N", "-n", "some text"});
        ASSERT_TRUE(program.writes("some text")) << name;
        EXPECT_FALSE(takesLineEnds()) << name;
    }
}

TEST_F(TerminalForegroundTest, KnowsAnEditorThatSomebodyWaitsFor) {
    TerminalProgram program(folder(), {"sh", "-c", "nvim -u NONE -n; true"});
    EXPECT_TRUE(becomes(true, program));
}

TEST_F(TerminalForegroundTest, HasNoEditorWhereSomebodyReadsBesideIt) {
    TerminalProgram program(folder(), {"sh", "-c", "nvim -u NONE -n <&1 & echo both; cat"});
    ASSERT_TRUE(program.writes("both"));
    // Only when the editor is there as well it would be taken for one that is alone.
    ASSERT_TRUE(program.writes("\x1b[?2004h"));
    EXPECT_FALSE(takesLineEnds());
}

TEST_F(TerminalForegroundTest, HasNoEditorWhileItRunsSomething) {
    TerminalProgram program(folder(),
                            {"sh", "-c", "{ echo ready; exec sleep 60; } & exec nvim -u NONE -n"});
    ASSERT_TRUE(program.writes("ready"));
    ASSERT_TRUE(program.writes("\x1b[?2004h"));
    EXPECT_FALSE(takesLineEnds());
}

TEST_F(TerminalForegroundTest, HasNoEditorInAShellInsideOfIt) {
    TerminalProgram program(folder(), neovim);
    ASSERT_TRUE(program.writes("some text"));
    EXPECT_TRUE(takesLineEnds());
    program.type(":terminal echo in''side; exec sh\r");
    ASSERT_TRUE(program.writes("inside"));
    EXPECT_FALSE(takesLineEnds());
    program.type("iexec nvim -u NONE -n\r");
    EXPECT_TRUE(becomes(true, program));
}

TEST_F(TerminalForegroundTest, HasNoEditorWhenItIsStopped) {
    TerminalProgram program(folder(), neovim);
    ASSERT_TRUE(becomes(true, program));
    ::kill(program.id(), SIGSTOP);
    EXPECT_TRUE(becomes(false, program));
    ::kill(program.id(), SIGCONT);
    EXPECT_TRUE(becomes(true, program));
}

TEST_F(TerminalForegroundTest, HasNoEditorWhenItIsInTheBackground) {
    TerminalProgram program(folder(), {"dash", "-i"});
    ASSERT_TRUE(program.writes("ready> "));
    // What is in the background itself makes no difference.
    program.type("sleep 60 &\r");
    program.type("nvim -u NONE -n\r");
    ASSERT_TRUE(becomes(true, program));
    program.type("\x1a");
    EXPECT_TRUE(becomes(false, program));
}

TEST_F(TerminalForegroundTest, WantsAnEditorInEachTerminal) {
    TerminalProgram editor(folder(), neovim);
    ASSERT_TRUE(becomes(true, editor));
    {
        TerminalProgram shell(folder(), {"dash"});
        ASSERT_TRUE(shell.writes("ready> "));
        EXPECT_FALSE(takesLineEnds());
    }
    EXPECT_TRUE(becomes(true, editor));
    TerminalProgram second(folder(), {"nano"});
    EXPECT_TRUE(becomes(true, second));
}

TEST_F(TerminalForegroundTest, HasNoEditorWherePastesHaveNoMarks) {
    // Emacs goes by the name of the terminal. Another editor has its name here.
    const QByteArray emacs = folder() + "/emacs-nox";
    ASSERT_TRUE(QFile::copy(QStringLiteral("/usr/bin/nano"), QFile::decodeName(emacs)));
    {
        TerminalProgram program(folder(), {emacs, "some text"});
        ASSERT_TRUE(becomes(true, program));
    }
    TerminalProgram other(folder(), {emacs, "some text"}, "vt100");
    ASSERT_TRUE(other.writes("some text"));
    EXPECT_FALSE(takesLineEnds());
}

TEST_F(TerminalForegroundTest, HasNoEditorInASmallerOneWithoutMarks) {
    const QByteArray small = folder() + "/nano-tiny";
    ASSERT_TRUE(QFile::copy(QStringLiteral("/usr/bin/nano"), QFile::decodeName(small)));
    TerminalProgram program(folder(), {small, "some text"});
    ASSERT_TRUE(program.writes("some text"));
    EXPECT_FALSE(takesLineEnds());
}

TEST_F(TerminalForegroundTest, HasNoEditorInOneThatReadsLines) {
    for (const char *option : {"-e", "-E"}) {
        TerminalProgram program(folder(),
                                neovim + QByteArrayList{option, "-c", "echo 're'..'ady'"});
        ASSERT_TRUE(program.writes("ready")) << option;
        EXPECT_FALSE(takesLineEnds()) << option;
    }
}

TEST_F(TerminalForegroundTest, HasNoEditorInWhatOnlyHasItsName) {
    const QByteArray imposter = folder() + "/nvim";
    ASSERT_TRUE(QFile::copy(QStringLiteral("/bin/cat"), QFile::decodeName(imposter)));
    TerminalProgram program(folder(), {imposter});
    program.type("echoed\r");
    ASSERT_TRUE(program.writes("echoed\r\nechoed"));
    EXPECT_FALSE(takesLineEnds());
}

} // namespace
} // namespace quillmender
