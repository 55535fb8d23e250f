#include "LookFixture.h"
#include "ui/ErrorLabel.h"
#include "ui/FormSection.h"
#include "ui/ScrollRegion.h"
#include "ui/Spinner.h"
#include "ui/SymbolView.h"

namespace quillmender {

namespace {

QRect placeIn(const QWidget *window, const QWidget *widget) {
    return QRect(widget->mapTo(window, QPoint()), widget->size());
}

class PanelLayoutTest : public PanelLookFixture {};
class SettingsLayoutTest : public SettingsWindowFixture {};
class AboutLayoutTest : public AboutLookFixture {};

} // namespace

TEST_F(PanelLayoutTest, HasItsMargins) {
    show();
    settle();
    const QWidget *panel = controller.panel();
    const auto place = [panel](const QWidget *widget) { return placeIn(panel, widget); };
    EXPECT_EQ(place(look::label(controller.panel(), QStringLiteral("Quillmender"))).topLeft(),
              QPoint(24, 6));
    for (Card *card : controller.panel()->findChildren<Card *>()) {
        EXPECT_EQ(place(card).left(), 24);
        EXPECT_EQ(place(card).right() + 1, 620 - 24);
    }
    const Button *captureAgain = button(QStringLiteral("Capture Again"));
    const Button *settings = button(QStringLiteral("Settings"));
    const Button *close = button(QStringLiteral("Close"));
    EXPECT_EQ(place(captureAgain).left(), 24);
    EXPECT_EQ(place(settings).left() - place(captureAgain).right() - 1, 8);
    EXPECT_EQ(place(close).right() + 1, 620 - 24);
    EXPECT_EQ(place(close).bottom() + 1, 620 - 8);
    const auto cards = controller.panel()->findChildren<Card *>();
    const QWidget *grid = button(QStringLiteral("Formalize"))->parentWidget();
    EXPECT_EQ(place(grid).top() - place(cards.first()).bottom() - 1, 12);
    EXPECT_EQ(place(cards.last()).top() - place(grid).bottom() - 1, 12);
}

TEST_F(PanelLayoutTest, ShowsEveryStarterActionAndTheTopOfTheInstruction) {
    show();
    settle();
    const QWidget *panel = controller.panel();
    const auto *region = controller.panel()->findChild<ScrollRegion *>();
    const QRect seen = placeIn(panel, region->viewport());
    ASSERT_EQ(model.state().actions.size(), 7);
    for (const PromptAction &action : model.state().actions)
        EXPECT_TRUE(seen.contains(placeIn(panel, button(action.title()))));
    for (const char *text :
         {"Generate From Prompt", "Type what you want to generate. Quillmender will use the "
                                  "captured text as the source prompt or raw notes."})
        EXPECT_TRUE(seen.contains(
            placeIn(panel, look::label(controller.panel(), QString::fromLatin1(text)))))
            << text;
    constexpr int cornerAndMore = 16;
    EXPECT_GE(seen.bottom() - placeIn(panel, editor()).top(), cornerAndMore);
    EXPECT_LT(seen.bottom(), placeIn(panel, editor()).bottom()) << "one sees that it goes on";
}

TEST_F(PanelLayoutTest, NoLineOfTextEndsOnTheEdge) {
    for (const int lines : {1, 2, 3}) {
        change([lines](auto &state) {
            state.preview = QString(lines - 1, u'\n').prepend(QStringLiteral("x")).append(u'x');
        });
        show();
        settle();
        const QWidget *panel = controller.panel();
        const QRect seen =
            placeIn(panel, controller.panel()->findChild<ScrollRegion *>()->viewport());
        for (const TextLabel *label : controller.panel()->findChildren<TextLabel *>()) {
            const int descent = label->fontMetrics().descent();
            for (const QRect &line : label->lines()) {
                const int baseline =
                    line.translated(placeIn(panel, label).topLeft()).bottom() - descent;
                const int tallest = label->fontMetrics().capHeight();
                const bool isClear = baseline + 4 <= seen.bottom();
                const bool isBeyond = baseline - tallest >= seen.bottom() - 1;
                EXPECT_TRUE(isClear || isBeyond) << lines << ": " << label->text().toStdString();
            }
        }
        controller.orderOut();
    }
}

TEST_F(PanelLayoutTest, ProgressAndItsEndMoveNothing) {
    show();
    settle();
    const auto places = [this] {
        QList<QRect> all;
        for (const QWidget *widget : controller.panel()->findChildren<QWidget *>())
            if (widget->isVisible() && qobject_cast<const Button *>(widget))
                all.append(placeIn(controller.panel(), widget));
        const auto *spinner = controller.panel()->findChild<Spinner *>();
        for (const QWidget *label : controller.panel()->findChildren<TextLabel *>())
            if (label->isVisible() && label->parent() != spinner->parent() &&
                !qobject_cast<const ErrorLabel *>(label))
                all.append(placeIn(controller.panel(), label));
        return all;
    };
    const QList<QRect> before = places();
    change([](auto &state) {
        state.working = true;
        state.running = QStringLiteral("An action with a name that is much longer than its line "
                                       "in the card, and than any other place");
    });
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    EXPECT_EQ(places(), before);
    QWidget *card = controller.panel()->findChild<Card *>();
    const QRect progress = placeIn(card, look::label(card, model.state().running));
    EXPECT_EQ(progress.right() + 1, card->width() - 16);
    const auto *title = look::label(card, model.state().title);
    EXPECT_GE(progress.left(), placeIn(card, title).right());
    EXPECT_LE(progress.height(), title->height());
}

TEST_F(SettingsLayoutTest, HasItsMargins) {
    show();
    const auto place = [this](const QWidget *widget) { return placeIn(window(), widget); };
    EXPECT_EQ(place(look::label(window(), QStringLiteral("Settings"))).topLeft(), QPoint(24, 20));
    const auto sections = window()->findChildren<FormSection *>();
    ASSERT_EQ(sections.size(), 10);
    for (qsizetype i = 0; i < sections.size(); ++i) {
        EXPECT_EQ(place(sections[i]).left(), 24);
        EXPECT_EQ(place(sections[i]).right() + 1, window()->width() - 24);
        if (i > 0) {
            EXPECT_EQ(place(sections[i]).top() - place(sections[i - 1]).bottom() - 1, 20);
        }
    }
    const PushButton *close = button("Close");
    EXPECT_EQ(place(close).right() + 1, window()->width() - 24);
    EXPECT_EQ(place(close).top(), 20);
}

TEST_F(AboutLayoutTest, HasEighteenBetweenAndTwentyFourAround) {
    show();
    QWidget *content = controller.window()->findChild<ScrollRegion *>()->widget();
    const auto labels = content->findChildren<TextLabel *>();
    ASSERT_EQ(labels.size(), 8);
    const auto *symbol = content->findChild<SymbolView *>();
    const auto place = [content](const QWidget *widget) { return placeIn(content, widget); };

    const QRect name = place(labels[0]).united(place(symbol));
    EXPECT_EQ(name.topLeft(), QPoint(24, 24));
    EXPECT_EQ(symbol->width(), 30);
    EXPECT_EQ(place(labels[1]).top() - name.bottom() - 1, 18);
    for (int i = 2; i < 5; ++i)
        EXPECT_EQ(place(labels[i]).top() - place(labels[i - 1]).bottom() - 1, 18) << i;
    for (int i = 5; i < 8; ++i)
        EXPECT_EQ(place(labels[i]).top() - place(labels[i - 1]).bottom() - 1, 8) << i;
    for (int i = 1; i < 8; ++i) {
        EXPECT_EQ(place(labels[i]).left(), 24);
        EXPECT_EQ(place(labels[i]).right() + 1, 520 - 24);
    }
    EXPECT_EQ(content->height() - place(labels[7]).bottom() - 1, 24);
    EXPECT_GT(content->height(), 420) << "it scrolls";
}

} // namespace quillmender
