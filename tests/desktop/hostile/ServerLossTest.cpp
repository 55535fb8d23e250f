#include "desktop/hostile/HostileFixture.h"

#include <QFile>

namespace quillmender {
namespace {

using harness::waitUntil;

/// The X server dies under the program.
class ServerLossTest : public HostileFixture {
  protected:
    void open() {
        start();
        openLetter(Route::clipboard);
        forgetResponsiveness();
        settings_ = readSettings();
        ASSERT_FALSE(settings_.isEmpty());
    }

    void killServer() { desktop().xServer().process().kill(); }

    /// It has ended by itself, says why, and its settings are what they were.
    void expectEnd() {
        waitUntil([&] { return !program().process().isRunning(); },
                  QStringLiteral("the program has ended"));
        EXPECT_EQ(program().process().exitCode(), 1);
        const QByteArray log = program().log();
        EXPECT_TRUE(log.contains("the X server is gone")) << log.toStdString();
        EXPECT_EQ(readSettings(), settings_);
        allowLog();
    }

  private:
    QByteArray readSettings() {
        QFile file(desktop().folders().config() + QStringLiteral("/quillmender/quillmender.conf"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QByteArray settings_;
};

TEST_F(ServerLossTest, WhenNothingRuns) {
    open();
    killServer();
    expectEnd();
}

TEST_F(ServerLossTest, WhileThePanelIsShown) {
    open();
    pressHotKey();
    waitForPanel(wrong);
    killServer();
    expectEnd();
}

TEST_F(ServerLossTest, WhileTheProviderThinks) {
    open();
    askForAnswer();
    killServer();
    provider().release();
    expectEnd();
}

TEST_F(ServerLossTest, WithTheClipboardBorrowed) {
    open();
    askForAnswer();
    provider().release();
    waitForTemporaryText();
    killServer();
    expectEnd();
}

} // namespace
} // namespace quillmender
