#include "desktop/hostile/HostileFixture.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QStandardPaths>

#include <algorithm>

namespace quillmender {
namespace {

using harness::ChildProcess;
using harness::ClipboardContents;
using harness::ClipboardProbe;
using harness::ClipboardRepresentation;
using harness::waitUntil;

constexpr char richPage[] = "<!DOCTYPE html><meta charset=utf-8><title>Rich page</title>"
                            "<h1>A title</h1><p>Some <b>bold</b> and <i>other</i> w\u00f6rds.</p>"
                            "<ul><li>one<li>two</ul>";

/// What real applications put on the clipboard, in up to dozens of targets that they make up when
/// they are asked. The larger ones are in the group "applications" of scripts/install-dependencies.
class ApplicationClipboardTest : public HostileFixture {
  protected:
    static bool isInstalled(const char *program) {
        return !QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty();
    }

    QString writeFile(const QString &name, const QByteArray &contents) {
        QFile file(desktop().folders().home() + QLatin1Char('/') + name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
        return file.fileName();
    }

    /// Starts it and copies everything in it; `key` is c, or x to cut.
    void copyFrom(const QString &program, const QStringList &arguments, const QString &title,
                  const QByteArray &target, xcb_keysym_t key = XK_c) {
        application_.emplace(desktop().command(program, arguments));
        waitUntil([&] { return findWindow(title) != XCB_WINDOW_NONE; },
                  QStringLiteral("%1 has a window").arg(program), std::chrono::minutes(2));
        ClipboardProbe probe(desktop().display());
        const auto isCopied = [&] {
            desktop().windows().activate(findWindow(title));
            input().chord({XK_Control_L, XK_a});
            input().chord({XK_Control_L, key});
            return harness::becomesTrue(
                [&] {
                    // Cut files are given up once they have been read.
                    return probe.owner() != clipboard().window() &&
                           (key == XK_x || probe.read().targets.contains(target));
                },
                std::chrono::seconds(3));
        };
        waitUntil(isCopied, QStringLiteral("%1 has copied").arg(program), std::chrono::minutes(2));
    }

    void runSession() {
        openLetter(Route::clipboard);
        answerWith(right);
        pressHotKey();
        waitForPanel(wrong);
        click(QStringLiteral("Fix My Grammar"));
        waitUntilPanelIsGone();
    }

    void expectKeptBySessions(const QList<QByteArray> &comparable) {
        const ClipboardContents before = ClipboardProbe(desktop().display()).read();
        RecordProperty("targets", static_cast<int>(before.representations.size()));
        runSession();
        const ClipboardContents after = ClipboardProbe(desktop().display()).read();
        for (const ClipboardRepresentation &each : before.representations) {
            const auto kept = std::ranges::find(after.representations, each.target,
                                                &ClipboardRepresentation::target);
            ASSERT_NE(kept, after.representations.end()) << each.target.toStdString();
            EXPECT_EQ(kept->type, each.type) << each.target.toStdString();
            EXPECT_EQ(kept->bytes.isEmpty(), each.bytes.isEmpty()) << each.target.toStdString();
            // Others have the time in them, and differ each time that they are asked for.
            if (comparable.contains(each.target)) {
                EXPECT_TRUE(*kept == each) << each.target.toStdString();
            }
        }
        EXPECT_EQ(after.representations.size(), before.representations.size());
    }

    void TearDown() override {
        HostileFixture::TearDown();
        application_.reset();
    }

  private:
    xcb_window_t findWindow(const QString &title) {
        for (const xcb_window_t window : desktop().windows().all()) {
            if (desktop().windows().title(window).contains(title) &&
                desktop().windows().isViewable(window))
                return window;
        }
        return XCB_WINDOW_NONE;
    }

    std::optional<ChildProcess> application_;
};

TEST_F(ApplicationClipboardTest, TableOfAWordProcessor) {
    if (!isInstalled("soffice"))
        GTEST_SKIP() << "LibreOffice Writer is not installed";
    start();
    const QString file = writeFile(QStringLiteral("table.html"),
                                   "<html><body><p>Before <b>it</b></p><table border=1><tr><td>one"
                                   "</td><td>two</td></tr></table></body></html>");
    copyFrom(QStringLiteral("soffice"),
             {QStringLiteral("--norestore"), QStringLiteral("--nologo"), QStringLiteral("--writer"),
              file},
             QStringLiteral("table.html"), "text/html");
    expectKeptBySessions({"text/html", "text/rtf", "UTF8_STRING", "text/plain;charset=utf-8"});
}

TEST_F(ApplicationClipboardTest, ImageOfAPaintProgram) {
    if (!isInstalled("gimp"))
        GTEST_SKIP() << "GIMP is not installed";
    start();
    QImage image(300, 200, QImage::Format_RGB32);
    image.fill(0x336699);
    const QString file = desktop().folders().home() + QStringLiteral("/picture.png");
    ASSERT_TRUE(image.save(file));
    copyFrom(QStringLiteral("gimp"),
             {QStringLiteral("--no-splash"), QStringLiteral("--no-fonts"), file},
             QStringLiteral("picture"), "image/png");
    expectKeptBySessions({"image/bmp", "image/x-bmp"});
}

/// A file manager with two files in front.
class FileManagerTest : public ApplicationClipboardTest {
  protected:
    void copyFiles(xcb_keysym_t key) {
        const QString folder = desktop().folders().home() + QStringLiteral("/documents");
        ASSERT_TRUE(QDir().mkdir(folder));
        for (const char *name : {"documents/one.txt", "documents/two.txt"})
            writeFile(QString::fromLatin1(name), "contents");
        copyFrom(QStringLiteral("pcmanfm"), {folder}, QStringLiteral("documents"), fileList, key);
    }

    static constexpr char fileList[] = "x-special/gnome-copied-files";
};

TEST_F(FileManagerTest, CopiedFiles) {
    start();
    copyFiles(XK_c);
    expectKeptBySessions({fileList, "text/uri-list", "application/x-kde-cutselection"});
}

TEST_F(FileManagerTest, CutFilesCanStillBePasted) {
    start();
    copyFiles(XK_x);
    runSession();
    const ClipboardContents after = ClipboardProbe(desktop().display()).read();
    const auto files =
        std::ranges::find(after.representations, fileList, &ClipboardRepresentation::target);
    ASSERT_NE(files, after.representations.end());
    EXPECT_TRUE(files->bytes.startsWith("cut\nfile://")) << files->bytes.toStdString();
    EXPECT_TRUE(files->bytes.contains("/documents/one.txt\n"));
    EXPECT_TRUE(files->bytes.contains("/documents/two.txt"));
}

TEST_F(ApplicationClipboardTest, RichTextOfChromium) {
    start();
    copyFrom(QStringLiteral("chromium"),
             {QStringLiteral("--no-sandbox"), QStringLiteral("--no-first-run"),
              QStringLiteral("--disable-gpu"), QStringLiteral("--password-store=basic"),
              QStringLiteral("--user-data-dir=%1/chromium").arg(desktop().folders().home()),
              QStringLiteral("file://") + writeFile(QStringLiteral("rich.html"), richPage)},
             QStringLiteral("Rich page"), "text/html");
    expectKeptBySessions({"text/html", "UTF8_STRING", "text/plain;charset=utf-8"});
}

TEST_F(ApplicationClipboardTest, RichTextOfFirefox) {
    if (!isInstalled("firefox-esr"))
        GTEST_SKIP() << "Firefox is not installed";
    start();
    ASSERT_TRUE(QDir(desktop().folders().home()).mkdir(QStringLiteral("profile")));
    writeFile(QStringLiteral("profile/user.js"),
              "user_pref('browser.aboutwelcome.enabled', false);\n"
              "user_pref('browser.shell.checkDefaultBrowser', false);\n"
              "user_pref('datareporting.policy.dataSubmissionEnabled', false);\n"
              "user_pref('termsofuse.bypassNotification', true);\n"
              "user_pref('network.proxy.type', 0);\n");
    copyFrom(QStringLiteral("firefox-esr"),
             {QStringLiteral("--no-remote"), QStringLiteral("--profile"),
              desktop().folders().home() + QStringLiteral("/profile"),
              QStringLiteral("file://") + writeFile(QStringLiteral("rich.html"), richPage)},
             QStringLiteral("Rich page"), "text/html");
    expectKeptBySessions({"text/html", "UTF8_STRING", "text/plain;charset=utf-8"});
}

} // namespace
} // namespace quillmender
