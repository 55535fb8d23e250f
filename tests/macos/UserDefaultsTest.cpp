#include "DoublesTest.h"
#include "doubles/cf/Data.h"
#include "doubles/cf/Preferences.h"
#include "doubles/cf/String.h"
#include "platform/macos/MacUserDefaults.h"

namespace quillmender {
namespace {

using testing::ElementsAre;

constexpr auto copy = "CFPreferencesCopyAppValue settings.openai.model "
                      "kCFPreferencesCurrentApplication";
constexpr auto synchronize = "CFPreferencesAppSynchronize kCFPreferencesCurrentApplication";

class UserDefaultsTest : public DoublesTest {
  protected:
    const QString key = QStringLiteral("settings.openai.model");
    doubles::Preferences preferences;
    MacUserDefaults defaults;
};

TEST_F(UserDefaultsTest, ReadsATextUnderItsExactKey) {
    preferences.give("settings.openai.model", doubles::makeString(u"  m\u00F6del "));
    EXPECT_EQ(defaults.string(key), QStringLiteral("  m\u00F6del "));
    EXPECT_THAT(calls(), ElementsAre(copy));
}

TEST_F(UserDefaultsTest, AnEmptyTextIsNotAbsent) {
    preferences.give("settings.openai.model", doubles::makeString(u""));
    ASSERT_TRUE(defaults.string(key).has_value());
    EXPECT_TRUE(defaults.string(key)->isEmpty());
}

TEST_F(UserDefaultsTest, AMissingValueIsAbsent) {
    EXPECT_EQ(defaults.string(key), std::nullopt);
    EXPECT_EQ(defaults.data(key), std::nullopt);
    EXPECT_THAT(calls(), ElementsAre(copy, copy));
}

TEST_F(UserDefaultsTest, AValueOfAnotherTypeIsAbsent) {
    preferences.give("settings.openai.model", doubles::makeData("bytes"));
    EXPECT_EQ(defaults.string(key), std::nullopt);
    preferences.give("settings.openai.model", doubles::makeString(u"text"));
    EXPECT_EQ(defaults.data(key), std::nullopt);
    preferences.give("settings.openai.model", CFRetain(kCFBooleanTrue));
    EXPECT_EQ(defaults.string(key), std::nullopt);
    EXPECT_EQ(defaults.data(key), std::nullopt);
}

TEST_F(UserDefaultsTest, WritesATextAtOnce) {
    defaults.setString(key, QStringLiteral("model"));
    EXPECT_THAT(calls(), ElementsAre("CFPreferencesSetAppValue settings.openai.model model "
                                     "kCFPreferencesCurrentApplication",
                                     synchronize));
    EXPECT_TRUE(preferences.isWritten);
    EXPECT_EQ(defaults.string(key), QStringLiteral("model"));
}

TEST_F(UserDefaultsTest, WritesBytesAtOnce) {
    defaults.setData(key, QByteArray("[1]"));
    EXPECT_THAT(calls(), ElementsAre("CFPreferencesSetAppValue settings.openai.model <[1]> "
                                     "kCFPreferencesCurrentApplication",
                                     synchronize));
    EXPECT_EQ(defaults.data(key), QByteArray("[1]"));
}

TEST_F(UserDefaultsTest, ALaterWriteReplaces) {
    defaults.setString(key, QStringLiteral("first"));
    defaults.setString(key, QStringLiteral("second"));
    EXPECT_EQ(preferences.stored("settings.openai.model"), "second");
}

TEST_F(UserDefaultsTest, AWriteThatIsLostIsLoggedByItsKeyOnly) {
    preferences.synchronizes = false;
    testing::internal::CaptureStderr();
    defaults.setString(key, QStringLiteral("private words"));
    const std::string logged = testing::internal::GetCapturedStderr();
    EXPECT_THAT(logged, testing::HasSubstr("settings.openai.model"));
    EXPECT_THAT(logged, testing::Not(testing::HasSubstr("private words")));
}

TEST_F(UserDefaultsTest, WithoutMemoryNothingIsDeleted) {
    defaults.setString(key, QStringLiteral("kept"));
    calls();
    testing::internal::CaptureStderr();
    {
        const doubles::ScarceStrings none(0);
        EXPECT_EQ(defaults.string(key), std::nullopt);
        defaults.setString(key, QStringLiteral("new"));
    }
    {
        const doubles::ScarceStrings one(1);
        defaults.setString(key, QStringLiteral("new"));
    }
    doubles::nextDataIsNull = true;
    defaults.setData(key, QByteArray("new"));
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("no memory"));
    EXPECT_THAT(calls(), ElementsAre());
    EXPECT_EQ(preferences.stored("settings.openai.model"), "kept");
}

} // namespace
} // namespace quillmender
