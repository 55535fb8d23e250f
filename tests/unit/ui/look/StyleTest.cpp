#include "ui/style/Style.h"

#include "LookFixture.h"
#include "ui/PopUpButton.h"
#include "ui/SlimScrollBar.h"
#include "ui/ToggleSwitch.h"
#include "ui/style/Look.h"
#include "ui/style/Metrics.h"

#include <QMenu>
#include <QToolTip>

namespace quillmender {

namespace {

QWidget *toolTip() {
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (widget->inherits("QTipLabel") && widget->isVisible())
            return widget;
    return nullptr;
}

/// Round corners through which one sees what is behind, and that surface within.
void expectFloats(QWidget &window, const Look &look) {
    const QImage image = window.grab().toImage();
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(image.pixelColor(image.width() - 1, image.height() - 1).alpha(), 0);
    EXPECT_GT(look::count(image, look.fill), image.width() * image.height() / 4);
    int readable = 0;
    const QRect within = image.rect().adjusted(5, 5, -5, -5);
    for (int y = within.top(); y <= within.bottom(); ++y)
        for (int x = within.left(); x <= within.right(); ++x)
            readable += contrast(image.pixelColor(x, y), look.fill) > 7 ? 1 : 0;
    EXPECT_GT(readable, 20);
    // The line along the middle of an edge.
    EXPECT_EQ(image.pixelColor(image.width() / 2, 0).rgb(), look.outline.rgb());
}

int lastInk(QWidget &widget, const QColor &ground) {
    const QImage image = look::painted(widget, ground);
    for (int x = image.width() - 1; x >= 0; --x)
        if (look::count(image.copy(x, 0, 1, image.height()), ground) < image.height())
            return x;
    return -1;
}

class StyleTest : public SettingsWindowFixture {
  protected:
    Look look(Part part, State state = State::rest) const {
        return lookOf(part, state, theme.colors());
    }
    /// What a widget without a parent stands on.
    QColor ground() const { return theme.colors().window; }

    void forBothSchemes(const std::function<void()> &check) {
        for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
            appearance.become({scheme, 0x3584e4});
            check();
        }
    }
};

} // namespace

TEST_F(StyleTest, IsMadeOnceAndFollowsTheColours) {
    const QStyle *style = QApplication::style();
    ASSERT_TRUE(qobject_cast<const Style *>(style));
    forBothSchemes([&] {
        EXPECT_EQ(QApplication::style(), style);
        EXPECT_EQ(Style::installed().colors().card, theme.colors().card);
    });
}

TEST_F(StyleTest, TheListOfAPopUpButtonIsOfTheSameKind) {
    show();
    forBothSchemes([this] {
        auto *provider = window()->findChild<PopUpButton *>();
        provider->showPopup();
        QWidget *list = provider->findChild<QFrame *>();
        ASSERT_TRUE(list && QTest::qWaitForWindowExposed(list));
        expectFloats(*list, look(Part::menu));
        const QImage image = list->grab().toImage();
        EXPECT_GT(look::count(image, look(Part::menuItem, State::hovered).fill), 100);
        EXPECT_EQ(look::count(image, theme.colors().window), 0);
        provider->hidePopup();
    });
}

TEST_F(StyleTest, AContextMenuIsOfTheSameKind) {
    show();
    forBothSchemes([this] {
        TextField *model = field("OpenAI Model");
        model->selectAll();
        const std::unique_ptr<QMenu> menu(model->createStandardContextMenu());
        menu->popup(window()->geometry().center());
        ASSERT_TRUE(QTest::qWaitForWindowExposed(menu.get()));
        expectFloats(*menu, look(Part::menu));
        EXPECT_GT(look::count(menu->grab().toImage(), look(Part::menuItem, State::disabled).text),
                  0)
            << "nothing can be undone";
        for (QAction *action : menu->actions()) {
            if (action->isSeparator()) {
                EXPECT_EQ(menu->actionGeometry(action).height(), metrics::separatorHeight);
            }
        }
    });
}

TEST_F(StyleTest, AToolTipIsOfTheSameKind) {
    show();
    forBothSchemes([this] {
        QToolTip::showText(window()->geometry().center(), QStringLiteral("<p>A whole title</p>"),
                           window());
        ASSERT_TRUE(QTest::qWaitFor([] { return toolTip() != nullptr; }, 5000));
        expectFloats(*toolTip(), look(Part::toolTip));
        QToolTip::hideText();
        ASSERT_TRUE(QTest::qWaitFor([] { return toolTip() == nullptr; }, 5000));
    });
}

TEST_F(StyleTest, WithoutACompositorNothingIsSeenThroughAndTheCornersAreCutOff) {
    Style::installed().setBlending([] { return false; });
    show();
    const auto expectIsCut = [](QWidget &floating) {
        const QImage image = floating.grab().toImage();
        const QRegion mask = floating.mask();
        int veiled = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                veiled += mask.contains(QPoint(x, y)) && image.pixelColor(x, y).alpha() < 255;
        EXPECT_EQ(veiled, 0);
        const QRect all = image.rect();
        for (const QPoint corner :
             {all.topLeft(), all.topRight(), all.bottomLeft(), all.bottomRight()})
            EXPECT_FALSE(mask.contains(corner));
        EXPECT_TRUE(mask.contains(all.center()));
        EXPECT_EQ(mask.boundingRect(), all);
    };
    auto *provider = window()->findChild<PopUpButton *>();
    provider->showPopup();
    QWidget *list = provider->findChild<QFrame *>();
    ASSERT_TRUE(list && QTest::qWaitForWindowExposed(list));
    expectIsCut(*list);
    provider->hidePopup();
    const std::unique_ptr<QMenu> menu(field("OpenAI Model")->createStandardContextMenu());
    menu->popup(window()->geometry().center());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(menu.get()));
    expectIsCut(*menu);
    menu->close();
    QToolTip::showText(window()->geometry().center(), QStringLiteral("<p>A title</p>"), window());
    ASSERT_TRUE(QTest::qWaitFor([] { return toolTip() != nullptr; }, 5000));
    expectIsCut(*toolTip());
    QToolTip::hideText();
    ASSERT_TRUE(QTest::qWaitFor([] { return toolTip() == nullptr; }, 5000));
    Style::installed().setBlending({});
}

TEST_F(StyleTest, WhatIsDisabledLooksSo) {
    forBothSchemes([this] {
        TextField field(theme);
        field.setText(QStringLiteral("text"));
        InstructionEditor editor(theme, {}, {});
        editor.setPlainText(QStringLiteral("text"));
        PopUpButton choice(theme);
        choice.addItem(QStringLiteral("text"));
        PushButton plain(theme, QStringLiteral("text"), PushButton::Prominence::standard);
        PushButton main(theme, QStringLiteral("text"), PushButton::Prominence::prominent);
        PushButton remove(theme, QStringLiteral("text"), PushButton::Prominence::destructive);
        const std::pair<QWidget *, Part> controls[] = {
            {&field, Part::field},          {&editor, Part::editor},
            {&choice, Part::popUpButton},   {&plain, Part::button},
            {&main, Part::prominentButton}, {&remove, Part::destructiveButton}};
        for (const auto &[control, part] : controls) {
            control->resize(control->sizeHint());
            EXPECT_GT(look::count(control->grab().toImage(), look(part).text), 0) << int(part);
            control->setEnabled(false);
            const QImage image = control->grab().toImage();
            EXPECT_EQ(look::count(image, look(part).text), 0) << int(part);
            EXPECT_GT(look::count(image, look(part, State::disabled).text), 0) << int(part);
        }
    });
}

TEST_F(StyleTest, AQuietButtonIsACaptionAlone) {
    PushButton button(theme, QStringLiteral("Remove"), PushButton::Prominence::destructive);
    button.resize(button.sizeHint());
    EXPECT_EQ(look::painted(button, ground()).pixelColor(10, 3), theme.colors().control);
    button.setQuiet(true);
    const QImage image = look::painted(button, ground());
    EXPECT_EQ(image.pixelColor(10, 3), ground());
    EXPECT_GT(look::count(image, look(Part::quietDestructiveButton).text), 0);
}

TEST_F(StyleTest, TheThumbOfAScrollBarIsDraggedAndItsTrackPages) {
    SlimScrollBar bar(theme);
    bar.setRange(0, 900);
    bar.setPageStep(100);
    bar.resize(bar.sizeHint().width(), 200);
    bar.show();
    EXPECT_EQ(bar.width(), metrics::scrollBarBreadth);
    QTest::mousePress(&bar, Qt::LeftButton, {}, QPoint(5, 10));
    QTest::mouseMove(&bar, QPoint(5, 300));
    EXPECT_EQ(bar.value(), 900);
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, QPoint(5, 300));
    QTest::mouseClick(&bar, Qt::LeftButton, {}, QPoint(5, 20));
    EXPECT_EQ(bar.value(), 800);
    EXPECT_GT(look::count(look::painted(bar, ground()), look(Part::scrollThumb).fill), 50);
    bar.setRange(0, 0);
    EXPECT_EQ(look::count(look::painted(bar, ground()), ground()), bar.width() * bar.height());
}

TEST_F(StyleTest, OnlyHintsOfOurOwnHaveAMonospacedFace) {
    const QString narrow = QStringLiteral("`iiiiiiii`");
    const QString wide = QStringLiteral("`WWWWWWWW`");
    const auto end = [this](const QString &text, bool marked) {
        TextLabel label(theme, TextStyle::caption, TextLabel::Tone::secondary);
        if (marked)
            label.setCode(TextLabel::Code::marked);
        label.show(text);
        EXPECT_EQ(label.text(), text) << "what assistive technology reads";
        label.resize(400, label.heightForWidth(400));
        return lastInk(label, ground());
    };
    EXPECT_EQ(end(narrow, true), end(wide, true));
    EXPECT_LT(end(narrow, false), end(wide, false)) << "what was captured stays as it is";
    EXPECT_GT(end(QStringLiteral("`one accent alone"), true), 0);
}

TEST_F(StyleTest, TheHintsAreMarked) {
    show();
    const auto ends = [this](TextLabel *label) { return lastInk(*label, ground()); };
    const QString hint = QStringLiteral("For Gemini, use the models base URL. Quillmender appends "
                                        "`/<model>:generateContent` automatically.");
    TextLabel plain(theme, TextStyle::caption, TextLabel::Tone::secondary);
    TextLabel *shown = look::label(window(), hint);
    ASSERT_TRUE(shown);
    plain.show(hint);
    plain.resize(shown->size());
    EXPECT_GT(ends(shown), ends(&plain)) << "the monospaced face is wider";
}

} // namespace quillmender
