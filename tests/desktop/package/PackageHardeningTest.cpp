#include "desktop/package/DebianPackage.h"
#include "desktop/package/Tool.h"

#include <QDirIterator>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillmender {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

/// The program of the package or the module beside it, as the tools of the linker show them.
class PackageHardeningTest : public testing::TestWithParam<const char *> {
  protected:
    void SetUp() override {
        DebianPackage::extract(folder_.path());
        QDirIterator files(folder_.path(), {QLatin1String(GetParam())}, QDir::Files,
                           QDirIterator::Subdirectories);
        ASSERT_TRUE(files.hasNext());
        file_ = files.next();
    }

    std::string show(const char *tool, const char *what) const {
        return requireTool(QLatin1String(tool),
                           {QLatin1String(what), QStringLiteral("--wide"), file_})
            .toStdString();
    }

    bool isProgram() const { return QLatin1String(GetParam()) == QLatin1String(program); }

    static constexpr auto program = "quillmender";

  private:
    QTemporaryDir folder_;
    QString file_;
};

INSTANTIATE_TEST_SUITE_P(All, PackageHardeningTest, testing::Values("quillmender", "wayland.so"));

TEST_P(PackageHardeningTest, IsLoadedAtAnyAddress) {
    EXPECT_THAT(show("readelf", "--file-header"), ContainsRegex("Type: +DYN"));
    if (isProgram()) {
        EXPECT_THAT(show("readelf", "--dynamic"), ContainsRegex("FLAGS_1.* PIE"));
    }
}

TEST_P(PackageHardeningTest, TablesOfFunctionsCannotBeWritten) {
    EXPECT_THAT(show("readelf", "--segments"), HasSubstr("GNU_RELRO"));
    EXPECT_THAT(show("readelf", "--dynamic"), HasSubstr("BIND_NOW"));
}

TEST_P(PackageHardeningTest, TheStackIsNoCode) {
    const std::string segments = show("readelf", "--segments");
    EXPECT_THAT(segments, ContainsRegex("GNU_STACK[ 0-9a-fx]+RW "));
    EXPECT_THAT(segments, Not(ContainsRegex("RWE")));
}

TEST_P(PackageHardeningTest, StackAndBuffersAreChecked) {
    // Without their listing in a failure, which is long.
    const QByteArray symbols = QByteArray::fromStdString(show("readelf", "--dyn-syms"));
    EXPECT_TRUE(symbols.contains(" __stack_chk_fail@"));
    if (QUILLMENDER_OPTIMISED) {
        EXPECT_TRUE(symbols.contains("_chk@"));
    }
}

TEST_P(PackageHardeningTest, JumpsLeadToWhereAFunctionBegins) {
    // A few are in the parts that the compiler adds to every program.
    const qsizetype many = isProgram() ? 1000 : 300;
    const QByteArray code = QByteArray::fromStdString(show("objdump", "--disassemble"));
    EXPECT_GT(code.count("endbr64") + code.count("bti\t") + code.count("paciasp"), many);
}

} // namespace
} // namespace quillmender
