#include "desktop/harness/HarnessError.h"
#include "desktop/package/DebianPackage.h"
#include "desktop/package/InstalledPackage.h"
#include "desktop/package/Tool.h"
#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/SettingsForm.h"
#include "desktop/sessions/TextKeys.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDirIterator>
#include <QFile>

#include <unistd.h>

namespace quillmender {
namespace {

using harness::Accessible;
using harness::ChildProcess;
using harness::TestApplication;
using harness::waitUntil;

const QString id = QStringLiteral("com.quillmender.Quillmender");
const QString service = QStringLiteral("/usr/share/dbus-1/services/%1.service").arg(id);
const QString wrong = QStringLiteral("recieve");
const QString letter = QStringLiteral("Hello, you recieve it.");
const QString secret = QStringLiteral("Kq7-typed-by-hand");

QStringList existing(const QStringList &paths) {
    QStringList found;
    for (const QString &path : paths)
        if (QFile::exists(path))
            found.append(path);
    return found;
}

/// Everything on this machine, outside of people's homes, that has the program's name in its own.
QStringList namedAfterTheProgram() {
    QStringList found;
    for (const char *root : {"/usr", "/etc", "/opt", "/var"}) {
        QDirIterator files(QLatin1String(root), {QStringLiteral("*quillmender*")},
                           QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        while (files.hasNext())
            found.append(files.next());
    }
    found.sort();
    return found;
}

/// The program as the desktop starts it once the package is installed.
class PackageSessionTest : public SessionFixture {
  protected:
    void SetUp() override {
        SessionFixture::SetUp();
        if (::geteuid() != 0)
            GTEST_SKIP() << "only root can install a package";
        if (InstalledPackage::isThere())
            GTEST_SKIP() << "Quillmender is installed on this machine and stays as it is; to run "
                            "this test: dpkg --purge quillmender";
    }

    qint64 programId() override {
        const QDBusReply<uint> pid =
            desktop().sessionBus().connection().interface()->servicePid(id);
        return pid.isValid() ? pid.value() : 0;
    }

    /// Runs one of the desktop's own launchers to its end.
    void launch(const QString &program, const QStringList &arguments) {
        ChildProcess launcher(desktop().command(program, arguments));
        waitUntil([&] { return !launcher.isRunning(); },
                  QStringLiteral("%1 has launched it").arg(program));
        ASSERT_EQ(launcher.exitCode(), 0) << launcher.log().toStdString();
    }

    void launchFromTheMenu() { launch(QStringLiteral("gtk-launch"), {id}); }

    void activateAction(const char *action) {
        launch(QStringLiteral("gapplication"),
               {QStringLiteral("action"), id, QLatin1String(action)});
    }

    void expectStartedByTheBus() {
        const QString process = QStringLiteral("/proc/%1/").arg(programId());
        EXPECT_EQ(QFile::symLinkTarget(process + QStringLiteral("exe")),
                  QStringLiteral("/usr/bin/quillmender"));
        QFile environment(process + QStringLiteral("environ"));
        ASSERT_TRUE(environment.open(QIODevice::ReadOnly));
        EXPECT_TRUE(environment.readAll().split('\0').contains("DBUS_STARTER_BUS_TYPE=session"));
    }

    void configure() {
        SettingsForm settings(desktop(), programId());
        settings.fill("OpenAI API Key", secret);
        settings.fill("OpenAI Model", QStringLiteral("typed-model"));
        settings.fill("OpenAI Endpoint", provider().baseUrl() + QStringLiteral("/v1/responses"));
        waitUntil(
            [&] {
                return desktop().keyring()->lookup(QStringLiteral("com.quillmender.openAI"),
                                                   QStringLiteral("api-key")) == secret.toUtf8();
            },
            QStringLiteral("the key is in the keyring"));
        settings.close();
    }

    void correctAWord() {
        answerWith(QStringLiteral("receive"));
        const TestApplication editor = TestApplication::mousepad(desktop(), letter);
        const Accessible text = editor.focusedText();
        waitUntil([&] { return text.text() == letter; }, QStringLiteral("the letter is open"));
        selectByKeyboard(input(), letter, wrong);
        waitUntil([&] { return text.selectedText() == wrong; },
                  QStringLiteral("the word is selected"));
        pressHotKey();
        waitForPanel(wrong);
        click(QStringLiteral("Fix My Grammar"));
        EXPECT_EQ(waitForRequest().header("authorization"), "Bearer " + secret.toUtf8());
        waitUntilPanelIsGone();
        EXPECT_EQ(text.text(), QStringLiteral("Hello, you receive it."));
        expectClipboardNeverTaken();
    }

    void quit() {
        const qint64 pid = programId();
        ASSERT_NE(pid, 0);
        activateAction("quit");
        waitUntil([&] { return !QFile::exists(QStringLiteral("/proc/%1").arg(pid)); },
                  QStringLiteral("the program has ended"));
    }

    /// Of what makes a desktop start or list a program, the user's own folders have nothing.
    void expectNoEntryOfTheUsers() {
        const auto &folders = desktop().folders();
        for (const QString &folder : {folders.config() + QStringLiteral("/autostart"),
                                      folders.config() + QStringLiteral("/systemd"),
                                      folders.data() + QStringLiteral("/applications"),
                                      folders.data() + QStringLiteral("/dbus-1"),
                                      folders.data() + QStringLiteral("/icons")})
            EXPECT_FALSE(QFile::exists(folder)) << folder.toStdString();
    }
};

TEST_F(PackageSessionTest, LaunchedFromTheMenuItServesASessionAndLeavesNothingBehind) {
    const QStringList contents = DebianPackage::contents();
    const QStringList pathsBefore = existing(contents);
    const QStringList namesBefore = namedAfterTheProgram();
    InstalledPackage package;
    EXPECT_EQ(existing(contents), contents);

    startDesktop({.services = {service}});
    launchFromTheMenu();
    configure();
    expectStartedByTheBus();
    correctAWord();

    activateAction("about");
    waitUntil(
        [&] {
            return desktop().windows().titled(QStringLiteral("About Quillmender")) !=
                   XCB_WINDOW_NONE;
        },
        QStringLiteral("About is shown"));
    EXPECT_TRUE(panelShows(QStringLiteral("Version " QUILLMENDER_VERSION)));
    quit();
    expectNoEntryOfTheUsers();

    package.purge();
    EXPECT_EQ(existing(contents), pathsBefore);
    EXPECT_EQ(namedAfterTheProgram(), namesBefore);
}

TEST_F(PackageSessionTest, AnActionStartsTheProgram) {
    const InstalledPackage package;
    startDesktop({.services = {service}});
    activateAction("transform");
    waitForPanel();
    expectStartedByTheBus();

    const qint64 first = programId();
    launchFromTheMenu();
    const SettingsForm settings(desktop(), programId());
    EXPECT_EQ(programId(), first);
    quit();
}

} // namespace
} // namespace quillmender
