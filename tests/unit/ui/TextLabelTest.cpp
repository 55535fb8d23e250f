#include "PanelFixture.h"
#include "ui/ElidedText.h"

#include <QFontMetrics>

namespace quillmender {

namespace {

class TextLabelTest : public PanelFixture {
  protected:
    TextLabel label{theme, TextStyle::body, TextLabel::Tone::primary};
};

/// A label that tells what stands in its lines.
class TellingLabel : public TextLabel {
  public:
    using TextLabel::TextLabel;

    QStringList texts() const {
        QStringList found;
        const QTextLayout &layout = laidOut();
        for (int i = 0; i < layout.lineCount(); ++i)
            found.append(
                layout.text().mid(layout.lineAt(i).textStart(), layout.lineAt(i).textLength()));
        return found;
    }
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

TEST_F(TextLabelTest, CodeThatFitsALineIsNotBroken) {
    const QString code = QStringLiteral("`/<model>:generateContent`");
    TellingLabel hint(theme, TextStyle::caption, TextLabel::Tone::secondary);
    hint.setCode(TextLabel::Code::marked);
    hint.show(code);
    const int whole = [&] {
        int width = 50;
        for (hint.resize(width, 200); hint.texts().size() > 1; hint.resize(++width, 200)) {
        }
        return width;
    }();
    hint.show(QStringLiteral("Use the models base URL. The program appends ") + code +
              QStringLiteral(" automatically, and more."));
    for (int width = whole + 4; width < 3 * whole; ++width) {
        hint.resize(width, 400);
        EXPECT_EQ(hint.texts().filter(code).size(), 1) << width;
        EXPECT_EQ(hint.texts().join(QString()), hint.text());
    }
    hint.resize(whole / 2, 400);
    EXPECT_EQ(hint.texts().filter(code).size(), 0) << "there it has to be";
}

TEST_F(TextLabelTest, NoBlankStandsBeforeTheEllipsis) {
    TellingLabel label(theme, TextStyle::body, TextLabel::Tone::primary);
    label.setMaximumLines(2);
    label.show(QStringLiteral("The server said no and then it said no again and again and again ") +
               QString(200, u'x'));
    int cut = 0;
    for (int width = 60; width < 400; ++width) {
        label.resize(width, 200);
        const QString last = label.texts().last();
        cut += last.endsWith(QChar(0x2026)) ? 1 : 0;
        EXPECT_FALSE(last.endsWith(QStringLiteral(" \u2026"))) << width;
    }
    EXPECT_GT(cut, 300);
}

TEST_F(TextLabelTest, MixedDirectionsEndInAnEllipsisToo) {
    TellingLabel label(theme, TextStyle::body, TextLabel::Tone::error);
    label.setMaximumLines(4);
    const QString hebrew = QStringLiteral("\u05e9\u05d2\u05d9\u05d0\u05d4");
    for (const QString &part :
         {hebrew + QStringLiteral(" word "),
          hebrew + QStringLiteral(", ") + hebrew + QStringLiteral(" 12.5% (x) "),
          QStringLiteral("word ") + hebrew + QStringLiteral(" 7 ")}) {
        label.show(part.repeated(100));
        for (int width = 150; width < 600; width += 7) {
            label.resize(width, 200);
            const QStringList lines = label.texts();
            EXPECT_EQ(lines.size(), 4) << width;
            EXPECT_TRUE(lines.last().endsWith(QChar(0x2026))) << width;
        }
    }
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

TEST(ElidedTextTest, NoBlankStandsBeforeTheEllipsis) {
    const QFont font = fontFor(TextStyle::body);
    const QString text = QStringLiteral("alpha beta gamma delta epsilon zeta eta theta iota kappa");
    for (int width = 60; width < 160; ++width)
        EXPECT_FALSE(elidedLines(text, font, width, 2).last().endsWith(QStringLiteral(" \u2026")))
            << width;
}

} // namespace quillmender
