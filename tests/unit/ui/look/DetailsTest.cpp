#include "LookFixture.h"
#include "ui/ActionGrid.h"
#include "ui/ScrollRegion.h"
#include "ui/SymbolView.h"
#include "ui/ToggleSwitch.h"

#include <QScrollBar>

namespace quillmender {

namespace {

/// The columns from the first to the last in which something differs from the ground.
std::pair<int, int> inkOf(const QImage &image, const QColor &ground) {
    int first = image.width();
    int last = -1;
    for (int x = 0; x < image.width(); ++x) {
        if (look::count(image.copy(x, 0, 1, image.height()), ground) < image.height()) {
            first = std::min(first, x);
            last = x;
        }
    }
    return {first, last};
}

bool hasSurface(QWidget &button, const QColor &ground) {
    const QImage image = look::painted(button, ground);
    const QRect edges[] = {image.rect().adjusted(0, 0, 0, 4 - image.height()),
                           image.rect().adjusted(0, image.height() - 4, 0, 0)};
    return std::ranges::any_of(edges, [&](const QRect &edge) {
        return look::count(image.copy(edge), ground) < edge.width() * edge.height();
    });
}

class SettingsDetailsTest : public SettingsWindowFixture {
  protected:
    QColor ground() const { return theme.colors().window; }

    void pointAt(QWidget *widget) {
        // On the offscreen platform the pointer moves, and an event tells a window of it.
        const QPoint place = widget->mapTo(window(), widget->rect().center());
        QTest::mouseMove(window(), place);
        ASSERT_TRUE(QTest::qWaitFor([&] { return widget->underMouse(); }, 5000));
        settle();
    }
};

class AboutDetailsTest : public AboutLookFixture {};
class GridDetailsTest : public PanelLookFixture {};

} // namespace

TEST_F(SettingsDetailsTest, TheSwitchEndsWhereTheFieldsEnd) {
    for (const bool isOn : {false, true}) {
        loginItem.current = isOn ? LoginItemStatus::enabled : LoginItemStatus::notRegistered;
        show();
        auto *toggle = window()->findChild<ToggleSwitch *>();
        ASSERT_EQ(toggle->isChecked(), isOn);
        const int end = inkOf(look::painted(*toggle, ground()), ground()).second;
        const TextField *other = field("OpenAI Model");
        EXPECT_EQ(toggle->mapTo(window(), QPoint(end, 0)).x(),
                  other->mapTo(window(), QPoint(other->width() - 1, 0)).x());
        toggle->setFocus();
        EXPECT_GT(inkOf(look::painted(*toggle, ground()), ground()).second, end)
            << "its ring goes beyond";
        window()->close();
    }
}

TEST_F(SettingsDetailsTest, TheButtonsOfARowAreQuietUntilItIsPointedAt) {
    show();
    ActionRow *row = rows().at(1);
    for (PushButton *button : {static_cast<PushButton *>(row->editButton()),
                               static_cast<PushButton *>(row->removeButton())}) {
        EXPECT_FALSE(hasSurface(*button, ground())) << button->caption().toStdString();
        EXPECT_GT(look::count(look::painted(*button, ground()), theme.colors().secondary), 0)
            << "but readable";
        EXPECT_NE(button->focusPolicy() & Qt::TabFocus, 0);
    }
    auto *region = window()->findChild<ScrollRegion *>();
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            region->reveal(row);
            return !row->visibleRegion().isEmpty();
        },
        5000));
    for (QWidget *part : {static_cast<QWidget *>(row), static_cast<QWidget *>(row->editButton())}) {
        pointAt(part);
        EXPECT_TRUE(hasSurface(*row->editButton(), ground()));
        EXPECT_TRUE(hasSurface(*row->removeButton(), ground()));
        EXPECT_GT(look::count(look::painted(*row->removeButton(), ground()), theme.colors().error),
                  0);
        EXPECT_FALSE(hasSurface(*rows().at(2)->editButton(), ground())) << "only this row";
    }
    pointAt(button("Close"));
    EXPECT_FALSE(hasSurface(*row->editButton(), ground()));
}

TEST_F(SettingsDetailsTest, TheButtonsOfARowAreButtonsWhileTheKeyboardIsThere) {
    show();
    ActionRow *row = rows().at(1);
    for (QWidget *place : {static_cast<QWidget *>(row), static_cast<QWidget *>(row->editButton()),
                           static_cast<QWidget *>(row->removeButton())}) {
        place->setFocus();
        EXPECT_TRUE(hasSurface(*row->editButton(), ground()));
        EXPECT_TRUE(hasSurface(*row->removeButton(), ground()));
    }
    button("Close")->setFocus();
    EXPECT_FALSE(hasSurface(*row->editButton(), ground()));
    EXPECT_FALSE(hasSurface(*row->removeButton(), ground()));
}

TEST_F(SettingsDetailsTest, TheEditorBecomesLowerOnALowScreen) {
    const QFont before = QApplication::font();
    QFont large = before;
    large.setPixelSize(21);
    QApplication::setFont(large);
    QCursor::setPos(QGuiApplication::screens().at(1)->geometry().center());
    controller().centre();
    show();
    button("New Action")->click();
    ASSERT_TRUE(sheet() && QTest::qWaitForWindowActive(sheet()));
    EXPECT_EQ(sheet()->width(), 540);
    EXPECT_LE(sheet()->height(), 560 - 40);
    EXPECT_TRUE(sheet()->rect().contains(
        QRect(sheet()->okButton()->mapTo(sheet(), QPoint()), sheet()->okButton()->size())));
    QCursor::setPos(QGuiApplication::screens().at(0)->geometry().center());
    QApplication::setFont(before);
}

TEST_F(AboutDetailsTest, TheSymbolBeginsWhereTheTextsBegin) {
    symbols.drawsSymbols = true;
    symbols.bearing = 4;
    appearance.become(appearance.current);
    show();
    auto *symbol = controller.window()->findChild<SymbolView *>();
    const QColor ground = theme.colors().window;
    EXPECT_EQ(symbol->mapTo(controller.window(), QPoint()).x(), 24);
    EXPECT_EQ(inkOf(look::painted(*symbol, ground), ground).first, 0);
}

TEST_F(AboutDetailsTest, EveryLineIsWholeWhereverItIsScrolledTo) {
    show();
    auto *region = controller.window()->findChild<ScrollRegion *>();
    QScrollBar *bar = region->verticalScrollBar();
    ASSERT_GT(bar->maximum(), 20);
    const QColor ground = theme.colors().window;
    const QRect view = region->viewport()->rect();
    int cut = 0;
    for (int value = bar->minimum(); value <= bar->maximum(); ++value) {
        bar->setValue(value);
        const QImage image = region->viewport()->grab().toImage();
        for (const auto *label : region->widget()->findChildren<TextLabel *>()) {
            const QPoint place = label->mapTo(region->viewport(), QPoint());
            for (const QRect &line : label->lines()) {
                const QRect here = line.translated(place) & view;
                if (here.isEmpty() || here.height() == line.height())
                    continue;
                ++cut;
                EXPECT_EQ(look::count(image.copy(here), ground), here.width() * here.height())
                    << value << ": " << label->text().toStdString();
            }
        }
    }
    EXPECT_GT(cut, 20) << "otherwise nothing was looked at";
    bar->setValue(0);
    EXPECT_GT(look::count(region->viewport()->grab().toImage(), theme.colors().text), 100);
}

TEST_F(GridDetailsTest, AColumnIsNeverNarrowerThanTen) {
    ActionGrid grid(theme, {GridColumn(), GridColumn()});
    grid.render(model.state().actions, true);
    EXPECT_EQ(grid.minimumSizeHint().width(), 10 + 12 + 10);
    grid.resize(20, 400);
    grid.show();
    settle();
    const QList<Button *> tiles = grid.findChildren<Button *>();
    ASSERT_EQ(tiles.size(), 7);
    for (const Button *tile : tiles)
        EXPECT_EQ(tile->width(), 10);
    grid.resize(10012, 400);
    settle();
    for (const Button *tile : tiles)
        EXPECT_EQ(tile->width(), 5000) << "and as wide as there is room";
}

} // namespace quillmender
