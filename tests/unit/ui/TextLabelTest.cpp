#include "PanelFixture.h"
#include "ui/ElidedText.h"

#include <QFontMetrics>

namespace quillmender {

namespace {

class TextLabelTest : public PanelFixture {
  protected:
    TextLabel label{theme, TextStyle::body, TextLabel::Tone::primary};
};

} // namespace

TEST_F(TextLabelTest, OneLongWordWraps) {
    label.show(QString(180, u'W'));
    const int line = label.heightForWidth(100000);
    EXPECT_GE(label.heightForWidth(200), 5 * line);
    EXPECT_LE(label.minimumSizeHint().width(), 100);
}

TEST_F(TextLabelTest, HeightFollowsTheText) {
    label.show(QStringLiteral("short"));
    const int line = label.heightForWidth(300);
    label.show(QStringLiteral("first\nsecond\r\nthird"));
    EXPECT_EQ(label.heightForWidth(300), 3 * line);
}

TEST_F(TextLabelTest, AHostileClusterStaysBounded) {
    QString cluster(5'000'000, QChar(0x0301));
    cluster.prepend(u'e');
    label.show(cluster);
    EXPECT_GT(label.heightForWidth(500), 0);
    EXPECT_EQ(label.text(), cluster) << "assistive technology has the whole text";
}

TEST(ElidedTextTest, TheLastLineEndsInAnEllipsis) {
    const QFont font = fontFor(TextStyle::body);
    const QString text = QStringLiteral("alpha beta gamma delta epsilon zeta eta theta iota");
    const QStringList lines = elidedLines(text, font, 100, 2);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines.last().endsWith(QChar(0x2026)));
    for (const QString &line : lines)
        EXPECT_LE(QFontMetrics(font).horizontalAdvance(line), 100);
    EXPECT_EQ(elidedLines(text, font, 10000, 2), QStringList(text));
    EXPECT_EQ(elidedLines(QString(), font, 100, 2), QStringList());
}

} // namespace quillmender
