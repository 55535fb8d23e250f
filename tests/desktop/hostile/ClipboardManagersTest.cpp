#include "desktop/hostile/HostileFixture.h"

#include <QDirIterator>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>

namespace quillmender {
namespace {

using harness::ChildProcess;
using harness::ClipboardOwner;
using harness::ClipboardRepresentation;
using harness::waitUntil;

struct Manager {
    const char *program;
    /// What the session bus starts for it.
    const char *service = "";
    /// What prints its history; the others write theirs into a file at each change.
    QStringList ask{};
};

void PrintTo(const Manager &manager, std::ostream *stream) {
    *stream << manager.program;
}

const QString entry = QStringLiteral("What the user had copied before");
const QString answer = QStringLiteral("receive, answered by the provider");

/// Programs that keep a history of everything that was on the clipboard.
class ClipboardManagersTest : public HostileFixture, public testing::WithParamInterface<Manager> {
  protected:
    void start() override {
        harness::Desktop::Options options;
        const QString service = QString::fromLatin1(GetParam().service);
        if (!service.isEmpty())
            options.services = {service};
        HostileFixture::start(options);
        manager_.emplace(desktop().command(QString::fromLatin1(GetParam().program)));
        // What a manager finds when it starts is not an entry of every one's history.
        waitUntil([&] { return isRead(QStringLiteral("there from the start")); },
                  QStringLiteral("the manager reads the clipboard"));
        record(entry);
    }

    /// Copies a text until the manager has it and the clipboard has it still.
    void record(const QString &text) {
        const auto isInHistory = [&] { return history().contains(text.toUtf8()); };
        waitUntil(
            [&] {
                // One that persists what was copied last may have taken the clipboard meanwhile.
                return isRead(text) && harness::becomesTrue(isInHistory, std::chrono::seconds(2)) &&
                       isOnClipboard(text);
            },
            QStringLiteral("the manager records \"%1\"").arg(text));
    }

    /// Copies a text; true once the manager, which may not be up yet, asks for it.
    bool isRead(const QString &text) {
        copied_.reset();
        copied_.emplace(desktop().display(), ClipboardOwner::plainText(text));
        const auto isAskedFor = [&] {
            const QList<QByteArray> requests = copied_->requests();
            return requests.contains("UTF8_STRING") ||
                   requests.contains("text/plain;charset=utf-8");
        };
        return harness::becomesTrue(isAskedFor, std::chrono::seconds(2));
    }

    /// Everything that is on the clipboard; a manager that takes it over may have its own order.
    QList<ClipboardRepresentation> readClipboard() {
        auto representations = harness::ClipboardProbe(desktop().display()).read().representations;
        std::ranges::sort(representations, {}, &ClipboardRepresentation::target);
        return representations;
    }

    bool isOnClipboard(const QString &text) {
        const auto representations = readClipboard();
        return std::ranges::find(representations, text.toUtf8(), &ClipboardRepresentation::bytes) !=
               representations.end();
    }

    static std::string described(const QList<ClipboardRepresentation> &representations) {
        std::string text;
        for (const ClipboardRepresentation &each : representations)
            text += each.target.toStdString() + ": " + each.bytes.left(40).toStdString() + "\n";
        return text;
    }

    /// Everything that it has recorded.
    QByteArray history() {
        if (!GetParam().ask.isEmpty())
            return answerOfManager();
        QByteArray history;
        for (QDirIterator each(desktop().folders().home(), QDir::Files | QDir::Hidden,
                               QDirIterator::Subdirectories);
             each.hasNext();) {
            QFile file(each.next());
            const bool isLetter = file.fileName().endsWith(QStringLiteral("letter.txt"));
            if (!isLetter && file.open(QIODevice::ReadOnly))
                history += file.readAll();
        }
        return history;
    }

    void TearDown() override {
        HostileFixture::TearDown();
        manager_.reset();
        copied_.reset();
    }

  private:
    QByteArray answerOfManager() {
        harness::Command command = desktop().command(GetParam().ask.first(), GetParam().ask.mid(1));
        command.logFile = desktop().folders().log(QStringLiteral("history"));
        QFile::remove(command.logFile);
        const ChildProcess reader(command);
        waitUntil([&] { return !reader.isRunning(); }, QStringLiteral("the history is listed"));
        return reader.log();
    }

    std::optional<ChildProcess> manager_;
    std::optional<ClipboardOwner> copied_;
};

TEST_P(ClipboardManagersTest, KeepsTheUsersEntryAndNotTheAnswer) {
    if (QStandardPaths::findExecutable(QString::fromLatin1(GetParam().program)).isEmpty())
        GTEST_SKIP() << GetParam().program << " is not installed";
    start();
    openLetter(Route::clipboard);
    const auto before = readClipboard();
    answerWith(answer);
    pressHotKey();
    waitForPanel(wrong);
    const auto captured = readClipboard();
    EXPECT_TRUE(captured == before) << described(captured) << "before:\n" << described(before);
    click(QStringLiteral("Fix My Grammar"));
    waitUntilPanelIsGone();
    const auto after = readClipboard();
    EXPECT_TRUE(after == before) << described(after) << "before:\n" << described(before);

    // What it records at last comes after everything else.
    record(QStringLiteral("copied afterwards"));
    QByteArray recorded;
    // A file may be read while it is written.
    const auto isWhole = [&] {
        recorded = history();
        return recorded.contains(entry.toUtf8()) && recorded.contains("copied afterwards");
    };
    EXPECT_TRUE(harness::becomesTrue(isWhole)) << recorded.toStdString();
    EXPECT_FALSE(recorded.contains(answer.toUtf8()));
}

INSTANTIATE_TEST_SUITE_P(
    Managers, ClipboardManagersTest,
    testing::Values(
        Manager{.program = "copyq",
                .ask = {QStringLiteral("copyq"), QStringLiteral("eval"),
                        QStringLiteral("for (i = 0; i < size(); ++i) print(str(read(i)) + '|')")}},
        Manager{.program = "parcellite"},
        Manager{.program = "xfce4-clipman",
                .service = "/usr/share/dbus-1/services/org.xfce.Xfconf.service"},
        // In Debian a part of the whole Plasma workspace.
        Manager{
            .program = "klipper",
            .ask = {QStringLiteral("gdbus"), QStringLiteral("call"), QStringLiteral("--session"),
                    QStringLiteral("--dest=org.kde.klipper"),
                    QStringLiteral("--object-path=/klipper"),
                    QStringLiteral("--method=org.kde.klipper.klipper.getClipboardHistoryMenu")}}),
    [](const auto &chosen) {
        QByteArray name = chosen.param.program;
        return name.replace('-', '_').toStdString();
    });

} // namespace
} // namespace quillmender
