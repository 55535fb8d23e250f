#include "platform/linux/portal/FileTokenStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quillmender {
namespace {

using portal::FileTokenStore;

class TokenStoreTest : public testing::Test {
  protected:
    const QTemporaryDir folder_;
    const QString path_ = folder_.filePath(QStringLiteral("made/on/the/way/token"));
};

TEST_F(TokenStoreTest, WhatIsKeptIsThereNextTimeForThisUserAlone) {
    EXPECT_EQ(FileTokenStore(path_).token(), QString());
    FileTokenStore(path_).setToken(QStringLiteral("first"));
    FileTokenStore(path_).setToken(QStringLiteral("second"));
    EXPECT_EQ(FileTokenStore(path_).token(), QStringLiteral("second"));
    EXPECT_EQ(QFile::permissions(path_) &
                  (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
              QFile::Permissions());
    EXPECT_EQ(QFileInfo(path_).dir().entryList(QDir::Files).size(), 1);
}

TEST_F(TokenStoreTest, WhatIsNoGoodAnyMoreIsForgotten) {
    FileTokenStore store(path_);
    store.setToken(QStringLiteral("first"));
    store.setToken({});
    EXPECT_EQ(store.token(), QString());
    EXPECT_FALSE(QFile::exists(path_));
    EXPECT_EQ(FileTokenStore(path_).token(), QString());
}

TEST_F(TokenStoreTest, WhereNothingCanBeWrittenItLastsAsLongAsTheProgram) {
    FileTokenStore store(QStringLiteral("/dev/null/token"));
    store.setToken(QStringLiteral("first"));
    EXPECT_EQ(store.token(), QStringLiteral("first"));
}

TEST_F(TokenStoreTest, IsAmongWhatTheProgramRemembers) {
    qputenv("XDG_STATE_HOME", "/state");
    EXPECT_EQ(FileTokenStore::usualPath(), QStringLiteral("/state/quillmender/portal-token"));
    qputenv("XDG_STATE_HOME", "nonsense");
    EXPECT_EQ(FileTokenStore::usualPath(),
              QDir::homePath() + QStringLiteral("/.local/state/quillmender/portal-token"));
    qunsetenv("XDG_STATE_HOME");
}

} // namespace
} // namespace quillmender
