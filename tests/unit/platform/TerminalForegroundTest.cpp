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

    const QByteArrayList vim{"vim", "-u", "NONE", "-N", "-n", "some text"};

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
    for (const QByteArrayList &command :
         {vim, QByteArrayList{"vi", "some text"}, QByteArrayList{"nano", "some text"}}) {
        TerminalProgram program(folder(), command);
        EXPECT_TRUE(becomes(true, program)) << command.constFirst().toStdString();
    }
}

TEST_F(TerminalForegroundTest, KnowsAnEditorThatSomebodyWaitsFor) {
    TerminalProgram program(folder(), {"sh", "-c", "vim -u NONE -N -n; true"});
    EXPECT_TRUE(becomes(true, program));
}

TEST_F(TerminalForegroundTest, HasNoEditorWhereSomebodyReadsBesideIt) {
    TerminalProgram program(folder(), {"sh", "-c", "vim -u NONE -N -n <&1 & echo both; cat"});
    ASSERT_TRUE(program.writes("both"));
    // Only when the editor is there as well it would be taken for one that is alone.
    ASSERT_TRUE(program.writes("\x1b[?2004h"));
    EXPECT_FALSE(takesLineEnds());
}

TEST_F(TerminalForegroundTest, HasNoEditorWhileItRunsAShell) {
    TerminalProgram program(folder(), vim + QByteArrayList{"-c", "!echo re''ady; cat"});
    ASSERT_TRUE(program.writes("ready"));
    EXPECT_FALSE(takesLineEnds());
}

TEST_F(TerminalForegroundTest, HasNoEditorInAShellInsideOfIt) {
    TerminalProgram program(folder(), vim);
    ASSERT_TRUE(becomes(true, program));
    program.type(":terminal sh\r");
    ASSERT_TRUE(program.writes("ready> "));
    EXPECT_FALSE(takesLineEnds());
    program.type("exec vim -u NONE -N -n\r");
    EXPECT_TRUE(becomes(true, program));
}

TEST_F(TerminalForegroundTest, HasNoEditorWhenItIsStopped) {
    TerminalProgram program(folder(), vim);
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
    program.type("vim -u NONE -N -n\r");
    ASSERT_TRUE(becomes(true, program));
    program.type("\x1a");
    EXPECT_TRUE(becomes(false, program));
}

TEST_F(TerminalForegroundTest, WantsAnEditorInEachTerminal) {
    TerminalProgram editor(folder(), vim);
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
    TerminalProgram program(folder(), vim, "dumb");
    ASSERT_TRUE(program.writes("some text"));
    EXPECT_FALSE(takesLineEnds());
}

TEST_F(TerminalForegroundTest, HasNoEditorInOneThatReadsLines) {
    for (const char *option : {"-e", "-E"}) {
        TerminalProgram program(folder(), vim + QByteArrayList{option, "-c", "echo 're'..'ady'"});
        ASSERT_TRUE(program.writes("ready")) << option;
        EXPECT_FALSE(takesLineEnds()) << option;
    }
}

TEST_F(TerminalForegroundTest, HasNoEditorInWhatOnlyHasItsName) {
    const QByteArray imposter = folder() + "/vim";
    ASSERT_TRUE(QFile::copy(QStringLiteral("/bin/cat"), QFile::decodeName(imposter)));
    TerminalProgram program(folder(), {imposter});
    program.type("echoed\r");
    ASSERT_TRUE(program.writes("echoed\r\nechoed"));
    EXPECT_FALSE(takesLineEnds());
}

} // namespace
} // namespace quillmender
