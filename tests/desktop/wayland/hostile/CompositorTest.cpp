#include "desktop/harness/wayland/WaylandClipboardProbe.h"
#include "desktop/sessions/Letter.h"
#include "desktop/wayland/sessions/WaylandSessionFixture.h"

#include <QFile>
#include <gmock/gmock.h>

namespace quillmender {
namespace {

using namespace std::chrono_literals;
using harness::CompositorKind;
using harness::waitUntil;
using testing::HasSubstr;

const QString busName = QStringLiteral("com.quillmender.Quillmender");

/// The compositor reads its configuration again.
class CompositorReloadTest : public WaylandSessionFixture,
                             public testing::WithParamInterface<CompositorKind> {
  protected:
    CompositorKind kind() const override { return GetParam(); }

    /// Until the hot key is there: a press while it is not goes nowhere.
    void pressUntilThePanelComes() {
        waitUntil(
            [this] {
                pressHotKey();
                return harness::becomesTrue([this] { return panelShows(Letter::wrong); }, 2s);
            },
            QStringLiteral("the hot key is there again"));
        waitForPanel(Letter::wrong);
    }
};

TEST_P(CompositorReloadTest, BetweenTwoSessions) {
    start();
    Letter letter(*this, Letter::Route::clipboard);
    letter.mend();
    expectClipboardUntouched();
    desktop().compositor().reload();
    letter.expectText(Letter::mended);
    takeClipboard(offer());
    letter.editor().activate();
    desktop().input().chord({XK_Control_L, XK_z});
    letter.selectWrong();
    pressUntilThePanelComes();
    answerWith(Letter::right);
    click(QStringLiteral("Fix My Grammar"));
    waitForRequest(2);
    waitUntilPanelIsGone();
    waitUntilWritten(2);
    expectClipboardUntouched();
    letter.expectText(Letter::mended);
}

TEST_P(CompositorReloadTest, WhileTheProviderThinks) {
    start();
    Letter letter(*this, Letter::Route::clipboard);
    letter.askForAnswer();
    desktop().compositor().reload();
    provider().release();
    waitUntilPanelIsGone();
    waitUntilWritten();
    expectClipboardUntouched();
    letter.expectText(Letter::mended);
}

INSTANTIATE_TEST_SUITE_P(On, CompositorReloadTest, harness::everyCompositor(),
                         harness::compositorName);

/// What the user binds is theirs, before the program starts and after a reload.
class UsersBindingTest : public WaylandSessionFixture {
  protected:
    CompositorKind kind() const override { return CompositorKind::sway; }

    QString mark() { return desktop().folders().home() + QStringLiteral("/pressed"); }

    void bindTheKeys() {
        QFile file(desktop().folders().config() + QStringLiteral("/sway.conf"));
        ASSERT_TRUE(file.open(QIODevice::Append));
        file.write("bindsym Mod1+Ctrl+space exec touch " + QFile::encodeName(mark()) + '\n');
    }

    void expectUsersBindingRuns() {
        pressHotKey();
        waitUntil([this] { return QFile::exists(mark()); },
                  QStringLiteral("the user's binding runs"));
    }
};

TEST_F(UsersBindingTest, IsKeptWhenAReloadBringsIt) {
    start();
    const Letter letter(*this, Letter::Route::accessibility);
    bindTheKeys();
    desktop().compositor().reload();
    waitUntil([this] { return program().log().contains("configuration binds it"); },
              QStringLiteral("the program says that the keys are taken"));
    expectUsersBindingRuns();
    EXPECT_FALSE(panelShows(Letter::wrong));
    allowLog();
}

/// The compositor ends under the program.
class CompositorLossTest : public WaylandSessionFixture,
                           public testing::WithParamInterface<CompositorKind> {
  protected:
    CompositorKind kind() const override { return GetParam(); }

    void start() override {
        WaylandSessionFixture::start();
        settings_ = readSettings();
        ASSERT_FALSE(settings_.isEmpty());
    }

    void open(Letter::Route route) {
        start();
        letter_.emplace(*this, route);
    }

    void endCompositor() { desktop().compositor().process().kill(); }

    /// It has ended by itself, says why, leaves its place to the next one, and its settings are
    /// what they were.
    void expectEnd() {
        waitUntil([this] { return !program().process().isRunning(); },
                  QStringLiteral("the program has ended"));
        EXPECT_EQ(program().process().exitCode(), 1);
        EXPECT_THAT(program().log().toStdString(), HasSubstr("the compositor is gone"));
        waitUntil([this] { return !desktop().sessionBus().hasOwner(busName); },
                  QStringLiteral("its name is free"));
        EXPECT_EQ(readSettings(), settings_);
        allowLog();
    }

    void TearDown() override {
        WaylandSessionFixture::TearDown();
        letter_.reset();
    }

    std::optional<Letter> letter_;

  private:
    QByteArray readSettings() {
        QFile file(desktop().folders().config() + QStringLiteral("/quillmender/quillmender.conf"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QByteArray settings_;
};

TEST_P(CompositorLossTest, WhenNothingRuns) {
    start();
    endCompositor();
    expectEnd();
}

TEST_P(CompositorLossTest, WhileThePanelIsShown) {
    open(Letter::Route::accessibility);
    pressHotKey();
    waitForPanel(Letter::wrong);
    endCompositor();
    expectEnd();
}

TEST_P(CompositorLossTest, WhileTheProviderThinks) {
    open(Letter::Route::accessibility);
    letter_->askForAnswer();
    endCompositor();
    provider().release();
    expectEnd();
}

TEST_P(CompositorLossTest, WithTheClipboardBorrowed) {
    open(Letter::Route::clipboard);
    letter_->askForAnswer();
    harness::WaylandClipboardProbe probe(desktop().socketPath());
    provider().release();
    waitUntil(
        [&] {
            return probe.readType("x-kde-passwordManagerHint").has_value() ||
                   program().log().contains("written by");
        },
        QStringLiteral("the clipboard is borrowed"));
    endCompositor();
    expectEnd();
}

INSTANTIATE_TEST_SUITE_P(On, CompositorLossTest, harness::everyCompositor(),
                         harness::compositorName);

} // namespace
} // namespace quillmender
