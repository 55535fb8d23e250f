#include "platform/linux/desktop/ExecLine.h"

#include <gtest/gtest.h>

namespace quillmender {
namespace {

TEST(ExecLineTest, QuotesWhatIsReservedAndNothingElse) {
    const QList<std::pair<QString, QString>> values{
        {QStringLiteral("/usr/bin/quillmender"), QStringLiteral("/usr/bin/quillmender")},
        {QStringLiteral("/opt/my tools/q"), QStringLiteral("\"/opt/my tools/q\"")},
        {QStringLiteral("/opt/50%/q"), QStringLiteral("/usr/bin/env /opt/50%%/q")},
        {QStringLiteral("/opt/%u %/q"), QStringLiteral("/usr/bin/env \"/opt/%%u %%/q\"")},
        {QStringLiteral("/opt/a \"b\"/q"), QStringLiteral("\"/opt/a \\\"b\\\"/q\"")},
        {QStringLiteral("/opt/$HOME/`q`"), QStringLiteral("\"/opt/\\$HOME/\\`q\\`\"")},
        {QStringLiteral("/opt/a\\b"), QStringLiteral("\"/opt/a\\\\b\"")},
        {QStringLiteral("/opt/it's"), QStringLiteral("\"/opt/it's\"")},
        {QStringLiteral("/opt/größe"), QStringLiteral("/opt/größe")},
    };
    for (const auto &[path, value] : values) {
        EXPECT_EQ(execLine::format({path}), value);
        EXPECT_EQ(execLine::parse(value), QStringList{path});
    }
    EXPECT_EQ(execLine::format({QStringLiteral("q"), QString(), QStringLiteral("a=b")}),
              QStringLiteral("q \"\" a=b"));
}

TEST(ExecLineTest, EveryReservedCharacterComesBack) {
    const QString all = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`%%u");
    const QStringList command{QStringLiteral("/opt/") + all, all, QString()};
    EXPECT_EQ(execLine::parse(execLine::format(command).value()), command);
}

TEST(ExecLineTest, KeepsALauncherThatItDidNotWrite) {
    for (const char *line :
         {"/usr/bin/env", "/usr/bin/env /opt/q", "/usr/bin/env A=%%b /opt/q", "env /opt/50%%/q"})
        EXPECT_EQ(execLine::parse(QLatin1String(line))
                      ->join(u' ')
                      .replace(QStringLiteral("%"), QStringLiteral("%%")),
                  QLatin1String(line));
}

TEST(ExecLineTest, RefusesWhatCannotBeWritten) {
    EXPECT_EQ(execLine::format({}), std::nullopt);
    EXPECT_EQ(execLine::format({QString()}), std::nullopt);
    EXPECT_EQ(execLine::format({QStringLiteral("/opt/a=b/q")}), std::nullopt);
}

TEST(ExecLineTest, LeavesFieldCodesOut) {
    EXPECT_EQ(execLine::parse(QStringLiteral("q  --new %U\t-x %i")),
              QStringList({QStringLiteral("q"), QStringLiteral("--new"), QStringLiteral("-x")}));
    EXPECT_EQ(execLine::parse(QStringLiteral("q %")), QStringList{QStringLiteral("q")});
}

TEST(ExecLineTest, RefusesWhatStartsNothing) {
    EXPECT_EQ(execLine::parse(QString()), std::nullopt);
    EXPECT_EQ(execLine::parse(QStringLiteral("  ")), std::nullopt);
    EXPECT_EQ(execLine::parse(QStringLiteral("\"/opt/open")), std::nullopt);
    EXPECT_EQ(execLine::parse(QStringLiteral("\"\" x")), std::nullopt);
}

} // namespace
} // namespace quillmender
