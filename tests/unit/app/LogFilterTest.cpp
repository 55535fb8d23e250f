#include "app/LogFilter.h"

#include <QLoggingCategory>
#include <QScopeGuard>
#include <gtest/gtest.h>

namespace quillmender {
namespace {

TEST(LogFilterTest, OthersSayNothingBelowAWarningWhateverTheRules) {
    const QLoggingCategory before("toolkit.before");
    keepTextsOutOfTheLog();
    const auto restore = qScopeGuard([] {
        QLoggingCategory::setFilterRules(QString());
        QLoggingCategory::installFilter(nullptr);
    });
    QLoggingCategory::setFilterRules(QStringLiteral("*=true"));
    const QLoggingCategory after("toolkit.after");
    const QLoggingCategory alike("quillmenders");
    for (const QLoggingCategory *other : {&before, &after, &alike}) {
        EXPECT_FALSE(other->isDebugEnabled()) << other->categoryName();
        EXPECT_FALSE(other->isInfoEnabled()) << other->categoryName();
        EXPECT_TRUE(other->isWarningEnabled()) << other->categoryName();
        EXPECT_TRUE(other->isCriticalEnabled()) << other->categoryName();
    }
    const QLoggingCategory own("quillmender.session", QtWarningMsg);
    EXPECT_TRUE(own.isDebugEnabled());
    EXPECT_TRUE(own.isInfoEnabled());
}

TEST(LogFilterTest, TheRulesStillCountForOurOwn) {
    keepTextsOutOfTheLog();
    const auto restore = qScopeGuard([] {
        QLoggingCategory::setFilterRules(QString());
        QLoggingCategory::installFilter(nullptr);
    });
    QLoggingCategory::setFilterRules(QStringLiteral("quillmender.http.info=true"));
    const QLoggingCategory asked("quillmender.http", QtWarningMsg);
    const QLoggingCategory other("quillmender.session", QtWarningMsg);
    EXPECT_TRUE(asked.isInfoEnabled());
    EXPECT_FALSE(asked.isDebugEnabled());
    EXPECT_FALSE(other.isInfoEnabled());
    QLoggingCategory::setFilterRules(QStringLiteral("*.warning=false"));
    EXPECT_FALSE(other.isWarningEnabled());
}

} // namespace
} // namespace quillmender
