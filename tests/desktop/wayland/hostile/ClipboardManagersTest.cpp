#include "desktop/harness/ClipboardOwner.h"
#include "desktop/sessions/Letter.h"
#include "desktop/wayland/sessions/WaylandSessionFixture.h"

#include <QFile>
#include <QStandardPaths>

#include <tuple>

namespace quillmender {
namespace {

using namespace std::chrono_literals;
using harness::ChildProcess;
using harness::ClipboardOwner;
using harness::CompositorKind;
using harness::waitUntil;

struct Manager {
    const char *program;
    QStringList command;
    /// What prints its history.
    QStringList ask;
    bool heedsMark = false;
};

void PrintTo(const Manager &manager, std::ostream *stream) {
    *stream << manager.program;
}

/// Programs that keep a history of what was on the clipboard. Some do not look at the mark of what
/// is secret, so that they have the answers too.
class WaylandManagersTest
    : public WaylandSessionFixture,
      public testing::WithParamInterface<std::tuple<CompositorKind, Manager>> {
  protected:
    CompositorKind kind() const override { return std::get<CompositorKind>(GetParam()); }
    static const Manager &manager() { return std::get<Manager>(GetParam()); }

    void startManager() {
        manager_.emplace(desktop().command(manager().command.first(), manager().command.mid(1)));
    }

    /// Another application copies the text, again and again until the manager, which may not be up
    /// yet, has it.
    void record(const QString &text) {
        waitUntil(
            [&] {
                takeClipboard(ClipboardOwner::plainText(text));
                return harness::becomesTrue([&] { return history().contains(text.toUtf8()); }, 3s);
            },
            QStringLiteral("the manager records \"%1\"").arg(text));
    }

    /// Everything that it has recorded.
    QByteArray history() {
        harness::Command command = desktop().command(manager().ask.first(), manager().ask.mid(1));
        command.logFile = desktop().folders().log(QStringLiteral("history"));
        QFile::remove(command.logFile);
        const ChildProcess reader(command);
        waitUntil([&] { return !reader.isRunning(); }, QStringLiteral("the history is listed"));
        return reader.log();
    }

    void TearDown() override {
        WaylandSessionFixture::TearDown();
        manager_.reset();
    }

  private:
    std::optional<ChildProcess> manager_;
};

TEST_P(WaylandManagersTest, LeavesTheClipboardToItsUser) {
    for (const QString &program :
         {QString::fromLatin1(manager().program), manager().command.first()}) {
        if (QStandardPaths::findExecutable(program).isEmpty())
            GTEST_SKIP() << program.toStdString() << " is not installed";
    }
    start();
    startManager();
    record(QStringLiteral("What the user had copied before"));
    takeClipboard(offer());
    Letter letter(*this, Letter::Route::clipboard);
    letter.mend();
    expectClipboardUntouched();

    // What it records at last comes after everything else.
    record(QStringLiteral("copied afterwards"));
    const QByteArray recorded = history();
    EXPECT_TRUE(recorded.contains("What the user had copied before")) << recorded.toStdString();
    EXPECT_TRUE(!recorded.contains(Letter::right.toUtf8()) || !manager().heedsMark)
        << recorded.toStdString();
    // This copies the text, answer and all.
    letter.expectText(Letter::mended);
}

INSTANTIATE_TEST_SUITE_P(
    On, WaylandManagersTest,
    testing::Combine(
        harness::everyCompositor(),
        testing::Values(
            // A way to look at every change, which tells its command nothing of the mark.
            Manager{.program = "wl-paste",
                    .command = {QStringLiteral("wl-paste"), QStringLiteral("--watch"),
                                QStringLiteral("sh"), QStringLiteral("-c"),
                                QStringLiteral("(cat; echo) >> \"$HOME/history\"")},
                    .ask = {QStringLiteral("sh"), QStringLiteral("-c"),
                            QStringLiteral("cat \"$HOME/history\"")}},
            Manager{.program = "cliphist",
                    .command = {QStringLiteral("wl-paste"), QStringLiteral("--watch"),
                                QStringLiteral("cliphist"), QStringLiteral("store")},
                    .ask = {QStringLiteral("cliphist"), QStringLiteral("list")}},
            // Klipper, which is a part of Plasma's panel, in a window of its own.
            Manager{.program = "plasmawindowed",
                    .command = {QStringLiteral("plasmawindowed"),
                                QStringLiteral("org.kde.plasma.clipboard")},
                    .ask = {QStringLiteral("dbus-send"), QStringLiteral("--session"),
                            QStringLiteral("--print-reply"),
                            QStringLiteral("--dest=org.kde.klipper"), QStringLiteral("/klipper"),
                            QStringLiteral("org.kde.klipper.klipper.getClipboardHistoryMenu")},
                    .heedsMark = true})),
    [](const auto &instance) {
        QByteArray name = std::get<Manager>(instance.param).program;
        return std::string(harness::nameOf(std::get<CompositorKind>(instance.param))) + "_" +
               name.replace('-', '_').toStdString();
    });

} // namespace
} // namespace quillmender
