#include "desktop/package/DebianPackage.h"
#include "desktop/package/Tool.h"

#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillmender {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

/// The program of the package, as the tools of the linker show it.
class PackageHardeningTest : public testing::Test {
  protected:
    void SetUp() override { DebianPackage::extract(folder_.path()); }

    std::string show(const char *tool, const char *what) const {
        return requireTool(QLatin1String(tool), {QLatin1String(what), QStringLiteral("--wide"),
                                                 folder_.filePath("usr/bin/quillmender")})
            .toStdString();
    }

  private:
    QTemporaryDir folder_;
};

TEST_F(PackageHardeningTest, IsLoadedAtAnyAddress) {
    EXPECT_THAT(show("readelf", "--file-header"), ContainsRegex("Type: +DYN"));
    EXPECT_THAT(show("readelf", "--dynamic"), ContainsRegex("FLAGS_1.* PIE"));
}

TEST_F(PackageHardeningTest, TablesOfFunctionsCannotBeWritten) {
    EXPECT_THAT(show("readelf", "--segments"), HasSubstr("GNU_RELRO"));
    EXPECT_THAT(show("readelf", "--dynamic"), HasSubstr("BIND_NOW"));
}

TEST_F(PackageHardeningTest, TheStackIsNoCode) {
    const std::string segments = show("readelf", "--segments");
    EXPECT_THAT(segments, ContainsRegex("GNU_STACK[ 0-9a-fx]+RW "));
    EXPECT_THAT(segments, Not(ContainsRegex("RWE")));
}

TEST_F(PackageHardeningTest, StackAndBuffersAreChecked) {
    // Without their listing in a failure, which is long.
    const QByteArray symbols = QByteArray::fromStdString(show("readelf", "--dyn-syms"));
    EXPECT_TRUE(symbols.contains(" __stack_chk_fail@"));
    if (QUILLMENDER_OPTIMISED) {
        EXPECT_TRUE(symbols.contains("_chk@"));
    }
}

TEST_F(PackageHardeningTest, JumpsLeadToWhereAFunctionBegins) {
    // A few are in the parts that the compiler adds to every program.
    constexpr qsizetype many = 1000;
    const QByteArray code = QByteArray::fromStdString(show("objdump", "--disassemble"));
    EXPECT_GT(code.count("endbr64") + code.count("bti\t") + code.count("paciasp"), many);
}

} // namespace
} // namespace quillmender
