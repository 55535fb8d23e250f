#include "app/TextPreview.h"

#include <gtest/gtest.h>

namespace quillmender {
namespace {

TEST(TextPreviewTest, Keeps180CharactersWhole) {
    const QString text(180, u'a');
    EXPECT_EQ(textPreview(text), text);
}

TEST(TextPreviewTest, Shortens181Characters) {
    EXPECT_EQ(textPreview(QString(181, u'a')), QString(180, u'a') + u'…');
}

TEST(TextPreviewTest, CountsUserPerceivedCharacters) {
    const QString family =
        QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466");
    EXPECT_EQ(textPreview(family.repeated(180)), family.repeated(180));
    EXPECT_EQ(textPreview(family.repeated(181)), family.repeated(180) + u'…');
}

TEST(TextPreviewTest, CountsALineFeedAsTheSpaceThatItBecomes) {
    const QString text = QStringLiteral("\r\n").repeated(100);
    const QString shown = textPreview(u'a' + text + u'b');
    EXPECT_EQ(shown, u'a' + QStringLiteral("\r ").repeated(89) + u'\r' + u'…');
}

TEST(TextPreviewTest, PutsSpacesForLineFeedsAndTabs) {
    EXPECT_EQ(textPreview(QStringLiteral("one\ntwo\tthree")), QStringLiteral("one two three"));
    EXPECT_EQ(textPreview(QStringLiteral("a\rb")), QStringLiteral("a\rb"));
}

TEST(TextPreviewTest, TrimsFirst) {
    EXPECT_EQ(textPreview(QStringLiteral(" \n\t ")), QString());
    EXPECT_EQ(textPreview(u' ' + QString(180, u'a') + u'\n'), QString(180, u'a'));
}

TEST(TextPreviewTest, LooksAtTheBeginningOfALongTextOnly) {
    const QString shown = textPreview(QString(10'000'000, u'x'));
    EXPECT_EQ(shown, QString(180, u'x') + u'…');
    const QString marks = u'e' + QString(5000, QChar(0x301));
    EXPECT_EQ(textPreview(marks + u'f'), marks + u'f');
}

} // namespace
} // namespace quillmender
