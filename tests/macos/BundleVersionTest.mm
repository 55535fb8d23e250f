#include "platform/macos/BundleVersion.h"

#include "FrameworksTest.h"
#include "app/AppMetadata.h"
#include "doubles/foundation/Bundle.h"

namespace quillmender {

namespace {

using testing::ElementsAre;

class BundleVersionTest : public FrameworksTest {
  protected:
    doubles::Bundle &bundle = doubles::Bundle::shared();
};

} // namespace

TEST_F(BundleVersionTest, IsTheMainBundlesShortVersion) {
    bundle.shortVersion = "2.3.4";
    EXPECT_EQ(bundleVersion(), QStringLiteral("2.3.4"));
    EXPECT_THAT(calls(),
                ElementsAre("NSBundle objectForInfoDictionaryKey CFBundleShortVersionString"));
}

TEST_F(BundleVersionTest, MissingOrNoTextIsTheFirstVersion) {
    EXPECT_EQ(AppMetadata::version(bundleVersion()), QStringLiteral("1.0.0"));
    bundle.shortVersion = "9.9.9";
    bundle.versionIsText = false;
    EXPECT_EQ(bundleVersion(), std::nullopt);
    EXPECT_EQ(AppMetadata::version(bundleVersion()), QStringLiteral("1.0.0"));
}

} // namespace quillmender
