#include "desktop/hostile/HostileFixture.h"

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

/// What large applications put on the clipboard, in dozens of targets that they make up when they
/// are asked. They are in the group "applications" of scripts/install-dependencies.
class OfficeClipboardTest : public HostileFixture {
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

    /// Starts it and copies everything in it.
    void copyFrom(const QString &program, const QStringList &arguments, const QString &title,
                  const QByteArray &target) {
        application_.emplace(desktop().command(program, arguments));
        waitUntil([&] { return findWindow(title) != XCB_WINDOW_NONE; },
                  QStringLiteral("%1 has a window").arg(program), std::chrono::minutes(2));
        ClipboardProbe probe(desktop().display());
        const auto isCopied = [&] {
            desktop().windows().activate(findWindow(title));
            input().chord({XK_Control_L, XK_a});
            input().chord({XK_Control_L, XK_c});
            return harness::becomesTrue(
                [&] {
                    return probe.owner() != clipboard().window() &&
                           probe.read().targets.contains(target);
                },
                std::chrono::seconds(3));
        };
        waitUntil(isCopied, QStringLiteral("%1 has copied").arg(program), std::chrono::minutes(2));
    }

    void expectKeptBySessions(const QList<QByteArray> &comparable) {
        const ClipboardContents before = ClipboardProbe(desktop().display()).read();
        RecordProperty("targets", static_cast<int>(before.representations.size()));
        openLetter(Route::clipboard);
        answerWith(right);
        pressHotKey();
        waitForPanel(wrong);
        click(QStringLiteral("Fix My Grammar"));
        waitUntilPanelIsGone();
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

TEST_F(OfficeClipboardTest, TableOfAWordProcessor) {
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

TEST_F(OfficeClipboardTest, ImageOfAPaintProgram) {
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

} // namespace
} // namespace quillmender
