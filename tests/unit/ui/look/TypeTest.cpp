#include "LookFixture.h"

namespace quillmender {

namespace {

using Role = QColor Colors::*;

struct Row {
    const char *text;
    int pixelSize;
    QFont::Weight weight;
    Role color;
};

const QFont::Weight semibold = QFont::DemiBold;
const QFont::Weight regular = QFont::Normal;

void expectType(QWidget *window, const Theme &theme, const QList<Row> &rows) {
    for (const Row &row : rows) {
        TextLabel *label = look::label(window, QString::fromUtf8(row.text));
        ASSERT_TRUE(label) << row.text;
        EXPECT_EQ(label->font().pixelSize(), row.pixelSize) << row.text;
        EXPECT_EQ(label->font().weight(), row.weight) << row.text;
        const QImage image = look::painted(*label, theme.colors().window);
        EXPECT_GT(look::count(image, theme.colors().*row.color), 0) << row.text;
        for (const Role other :
             {&Colors::text, &Colors::secondary, &Colors::error, &Colors::success}) {
            if (other != row.color) {
                EXPECT_EQ(look::count(image, theme.colors().*other), 0) << row.text;
            }
        }
    }
}

class FontTest : public testing::Test {
  protected:
    static QList<int> sizesFor(int pixelSize) {
        const QFont before = QApplication::font();
        QFont font = before;
        font.setPixelSize(pixelSize);
        QApplication::setFont(font);
        QList<int> sizes;
        for (const TextStyle style : {TextStyle::largeTitle, TextStyle::title, TextStyle::headline,
                                      TextStyle::body, TextStyle::subheadline, TextStyle::caption})
            sizes.append(fontFor(style).pixelSize());
        QApplication::setFont(before);
        return sizes;
    }
};

class PanelTypeTest : public PanelLookFixture {};
class SettingsTypeTest : public SettingsWindowFixture {};
class AboutTypeTest : public AboutLookFixture {};

} // namespace

TEST_F(FontTest, TheScaleGrowsWithTheTextExceptForTheTitles) {
    EXPECT_EQ(sizesFor(13), QList<int>({30, 26, 14, 13, 12, 11}));
    EXPECT_EQ(sizesFor(8), QList<int>({30, 26, 14, 13, 12, 11}));
    EXPECT_EQ(sizesFor(21), QList<int>({30, 26, 23, 21, 19, 18}));
    EXPECT_EQ(sizesFor(26), QList<int>({30, 26, 28, 26, 24, 22}));
}

TEST_F(PanelTypeTest, EachTextHasItsSizeItsWeightAndItsColour) {
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        appearance.become({scheme, std::nullopt});
        showEverything();
        expectType(controller.panel(), theme,
                   {
                       {"Quillmender", 26, semibold, &Colors::text},
                       {"Transform the captured text and replace it in place.", 12, regular,
                        &Colors::secondary},
                       {"Selected Text", 14, semibold, &Colors::text},
                       {"Making it formal", 11, regular, &Colors::text},
                       {"some text", 13, regular, &Colors::text},
                       {"Using only the highlighted text.", 11, regular, &Colors::secondary},
                       {"It failed.", 13, regular, &Colors::error},
                       {"Generate From Prompt", 14, semibold, &Colors::text},
                       {"Type what you want to generate. Quillmender will use the captured text "
                        "as the source prompt or raw notes.",
                        11, regular, &Colors::secondary},
                   });
    }
}

TEST_F(PanelTypeTest, TextsStandInTheirOrder) {
    showEverything();
    QStringList names;
    QList<int> places;
    for (const char *text :
         {"Quillmender", "Transform the captured text and replace it in place.", "Selected Text",
          "Making it formal", "some text", "Using only the highlighted text.", "It failed."}) {
        names.append(QString::fromUtf8(text));
        places.append(
            look::label(controller.panel(), names.last())->mapTo(controller.panel(), QPoint()).y());
    }
    const auto placeOf = [this](const QWidget *widget) {
        return widget->mapTo(controller.panel(), QPoint()).y();
    };
    places.append(placeOf(button(QStringLiteral("Request Accessibility Access"))));
    places.append(placeOf(button(QStringLiteral("Formalize"))));
    places.append(placeOf(button(QStringLiteral("Fix My Grammar"))));
    places.append(placeOf(look::label(controller.panel(), QStringLiteral("Generate From Prompt"))));
    places.append(placeOf(editor()));
    places.append(placeOf(button(QStringLiteral("Generate"))));
    EXPECT_TRUE(std::ranges::is_sorted(places)) << "from top to bottom";
    const int x[] = {button(QStringLiteral("Capture Again"))->x(),
                     button(QStringLiteral("Settings"))->x(), button(QStringLiteral("Close"))->x()};
    EXPECT_TRUE(std::ranges::is_sorted(x));
    EXPECT_EQ(placeOf(button(QStringLiteral("Close"))),
              placeOf(button(QStringLiteral("Settings"))));
}

TEST_F(SettingsTypeTest, EachTextHasItsSizeItsWeightAndItsColour) {
    loginItem.current = LoginItemStatus::enabled;
    show();
    expectType(
        window(), theme,
        {
            {"Settings", 26, semibold, &Colors::text},
            {"Configure your provider, API key, and actions.", 12, regular, &Colors::secondary},
            {"Start by choosing your provider and adding its API key. After that, you can keep "
             "the starter actions, edit them, remove them, or create your own custom actions.",
             13, regular, &Colors::text},
            {"Provider", 14, semibold, &Colors::text},
            {"Active Provider", 13, regular, &Colors::text},
            {"Quillmender sends requests through the currently selected provider.", 11, regular,
             &Colors::secondary},
            {"Quillmender will open automatically when you log in.", 11, regular,
             &Colors::secondary},
            {"Gemini Base URL", 13, regular, &Colors::text},
            {"For Gemini, use the models base URL. Quillmender appends "
             "`/<model>:generateContent` automatically.",
             11, regular, &Colors::secondary},
            {"Control + Option + Space", 13, regular, &Colors::secondary},
            {"Accessibility access not granted", 13, regular, &Colors::error},
            {"Actions", 14, semibold, &Colors::text},
            {"Formalize", 13, regular, &Colors::text},
        });
    EXPECT_EQ(look::label(window(), QStringLiteral("Starter"))->font().pixelSize(), 11);
    permissions.refresh();
    settle();
    expectType(window(), theme, {{"Accessibility access granted", 13, regular, &Colors::success}});
}

TEST_F(SettingsTypeTest, TheEditorHasItsOwn) {
    show();
    button("New Action")->click();
    ASSERT_TRUE(sheet() && QTest::qWaitForWindowActive(sheet()));
    expectType(sheet(), theme,
               {
                   {"New Action", 26, semibold, &Colors::text},
                   {"Button Title", 14, semibold, &Colors::text},
                   {"Prompt Template", 14, semibold, &Colors::text},
                   {"Use `{{text}}` where the captured text should be inserted.", 11, regular,
                    &Colors::secondary},
               });
    EXPECT_EQ(sheet()->width(), 540);
    EXPECT_GE(sheet()->templateEditor()->height(),
              11 * sheet()->templateEditor()->fontMetrics().lineSpacing());
}

TEST_F(AboutTypeTest, EachTextHasItsSizeItsWeightAndItsColour) {
    show();
    const QList<TextLabel *> labels = controller.window()->findChildren<TextLabel *>();
    ASSERT_EQ(labels.size(), 8);
    const auto text = [&](int index) { return labels.at(index)->text().toUtf8(); };
    const QByteArray texts[] = {text(0), text(1), text(2), text(3),
                                text(4), text(5), text(6), text(7)};
    expectType(controller.window(), theme,
               {
                   {texts[0].constData(), 30, semibold, &Colors::text},
                   {texts[1].constData(), 12, regular, &Colors::secondary},
                   {texts[2].constData(), 14, semibold, &Colors::text},
                   {texts[3].constData(), 13, regular, &Colors::secondary},
                   {texts[4].constData(), 14, semibold, &Colors::text},
                   {texts[5].constData(), 13, regular, &Colors::text},
                   {texts[6].constData(), 13, regular, &Colors::text},
                   {texts[7].constData(), 13, regular, &Colors::text},
               });
}

} // namespace quillmender
