#include "desktop/package/DebianPackage.h"
#include "desktop/package/Tool.h"

#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillmender {
namespace {

using testing::HasSubstr;

const QString id = QStringLiteral("com.quillmender.Quillmender");
const std::string version = QUILLMENDER_VERSION;

bool isNearlyWhite(QRgb color) {
    return qRed(color) > 225 && qGreen(color) > 225 && qBlue(color) > 225;
}

bool isAmber(QRgb color) {
    return qRed(color) > 200 && qGreen(color) > 150 && qBlue(color) < 140;
}

bool hasPixel(const QImage &image, bool (*isWanted)(QRgb)) {
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (isWanted(image.pixel(x, y)))
                return true;
    return false;
}

/// The package, unpacked.
class PackageFilesTest : public testing::Test {
  protected:
    void SetUp() override { DebianPackage::extract(folder_.path()); }

    QString path(const QString &file) const { return folder_.path() + file; }

    std::string read(const QString &file) const {
        QFile opened(path(file));
        EXPECT_TRUE(opened.open(QIODevice::ReadOnly)) << file.toStdString();
        return opened.readAll().toStdString();
    }

    std::string readCompressed(const QString &file) const {
        return requireTool(QStringLiteral("zcat"), {path(file)}).toStdString();
    }

    QString icon(const QString &folder, const QString &file) const {
        return path(QStringLiteral("/usr/share/icons/hicolor/%1/%2").arg(folder, file));
    }

    const QString entry_ = QStringLiteral("/usr/share/applications/%1.desktop").arg(id);
    const QString metainfo_ = QStringLiteral("/usr/share/metainfo/%1.metainfo.xml").arg(id);
    const QString manual_ = QStringLiteral("/usr/share/man/man1/quillmender.1.gz");

  private:
    QTemporaryDir folder_;
};

TEST_F(PackageFilesTest, VersionIsThatOfTheBuildEverywhere) {
    EXPECT_EQ(DebianPackage::field(QStringLiteral("Version")).toStdString(),
              QUILLMENDER_PACKAGE_VERSION);
    EXPECT_THAT(read(metainfo_), HasSubstr("<release version=\"" + version + "\""));
    EXPECT_THAT(readCompressed(manual_), HasSubstr("\"Quillmender " + version + "\""));
    EXPECT_THAT(readCompressed(QStringLiteral("/usr/share/doc/quillmender/changelog.gz")),
                testing::StartsWith("quillmender (" QUILLMENDER_PACKAGE_VERSION ") "));
}

TEST_F(PackageFilesTest, ProgramAnswersItsOptionsWithoutADisplay) {
    const QProcessEnvironment nothing;
    const QString program = path(QStringLiteral("/usr/bin/quillmender"));
    const ToolResult told = runTool(program, {QStringLiteral("--version")}, nothing);
    EXPECT_EQ(told.exitCode, 0);
    EXPECT_EQ(told.output.toStdString(), "Quillmender " + version + "\n");
    const ToolResult help = runTool(program, {QStringLiteral("--help")}, nothing);
    EXPECT_EQ(help.exitCode, 0);
    const QRegularExpression option(QStringLiteral("--([a-z]+)"));
    for (const QRegularExpressionMatch &each : option.globalMatch(QString::fromUtf8(help.output)))
        EXPECT_THAT(readCompressed(manual_), HasSubstr("\\-\\-" + each.captured(1).toStdString()));
}

TEST_F(PackageFilesTest, EntryOffersWhatTheStatusMenuOffers) {
    const std::string entry = read(entry_);
    EXPECT_THAT(entry, HasSubstr("\nDBusActivatable=true\n"));
    EXPECT_THAT(entry, HasSubstr("\nActions=transform;settings;about;quit;\n"));
    const std::pair<const char *, const char *> actions[] = {{"transform", "Transform"},
                                                             {"settings", "Settings"},
                                                             {"about", "About"},
                                                             {"quit", "Quit Quillmender"}};
    for (const auto &[action, title] : actions)
        EXPECT_THAT(
            entry, HasSubstr(std::string("[Desktop Action ") + action + "]\nName=" + title + "\n"));
}

TEST_F(PackageFilesTest, EntryAsksForWhatKwinGivesToTheProgramThatItStarts) {
    EXPECT_THAT(read(entry_),
                HasSubstr("\nX-KDE-Wayland-Interfaces=org_kde_kwin_fake_input,"
                          "org_kde_plasma_window_management,org_kde_kwin_keystate\n"));
}

TEST_F(PackageFilesTest, EverythingStartsTheProgramOfThePackage) {
    const QString service = QStringLiteral("/usr/share/dbus-1/services/%1.service").arg(id);
    EXPECT_EQ(read(service), "[D-BUS Service]\n"
                             "Name=com.quillmender.Quillmender\n"
                             "Exec=/usr/bin/quillmender\n");
    EXPECT_THAT(read(entry_), HasSubstr("\nExec=/usr/bin/quillmender\n"));
    EXPECT_THAT(read(entry_), HasSubstr("\nTryExec=/usr/bin/quillmender\n"));
    EXPECT_TRUE(
        QFile::permissions(path(QStringLiteral("/usr/bin/quillmender"))).testFlag(QFile::ExeOther));
}

TEST_F(PackageFilesTest, IconsAreDrawnInEverySize) {
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256, 512}) {
        const QImage image(icon(QStringLiteral("%1x%1/apps").arg(size), id + ".png"));
        ASSERT_EQ(image.size(), QSize(size, size));
        EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0) << size;
        EXPECT_TRUE(hasPixel(image, isNearlyWhite)) << "no quotation at " << size;
        EXPECT_TRUE(hasPixel(image, isAmber)) << "no mended line at " << size;
    }
    EXPECT_TRUE(QFile::exists(icon(QStringLiteral("scalable/apps"), id + ".svg")));
    EXPECT_TRUE(QFile::exists(icon(QStringLiteral("symbolic/apps"), id + "-symbolic.svg")));
    for (const char *background : {"light", "dark"})
        EXPECT_TRUE(QFile::exists(
            icon(QStringLiteral("scalable/status"),
                 QStringLiteral("%1-status-%2.svg").arg(id, QLatin1String(background)))));
}

TEST_F(PackageFilesTest, CopyrightNamesTheHolderAndGrantsNothing) {
    const std::string text = read(QStringLiteral("/usr/share/doc/quillmender/copyright"));
    EXPECT_THAT(text, HasSubstr("Copyright 2026 Orvelline\n"));
    EXPECT_THAT(text, HasSubstr("has not granted a licence yet"));
}

TEST_F(PackageFilesTest, ServicesThatItTalksToAreDependencies) {
    const QString depends = DebianPackage::field(QStringLiteral("Depends"));
    for (const char *package :
         {"at-spi2-core", "dbus-session-bus", "libqt6widgets6", "libsecret-1-0"})
        EXPECT_TRUE(depends.contains(QLatin1String(package))) << package;
    const QString recommends = DebianPackage::field(QStringLiteral("Recommends"));
    for (const char *package : {"gnome-keyring", "ca-certificates"})
        EXPECT_TRUE(recommends.contains(QLatin1String(package))) << package;
}

TEST_F(PackageFilesTest, CheckersFindNothing) {
    const std::pair<const char *, QStringList> checkers[] = {
        {"desktop-file-validate", {path(entry_)}},
        {"appstreamcli", {"validate", "--no-net", "--no-color", path(metainfo_)}},
        {"lintian", {"--allow-root", "--fail-on", "error,warning", DebianPackage::path()}},
    };
    for (const auto &[program, arguments] : checkers) {
        const ToolResult result = runTool(QLatin1String(program), arguments);
        EXPECT_EQ(result.exitCode, 0) << program << ": " << result.output.toStdString();
    }
}

} // namespace
} // namespace quillmender
