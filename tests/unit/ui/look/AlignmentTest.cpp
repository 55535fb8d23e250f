#include "LookFixture.h"
#include "ui/FormRow.h"
#include "ui/FormSection.h"
#include "ui/PopUpButton.h"
#include "ui/ScrollRegion.h"
#include "ui/Spinner.h"
#include "ui/ToggleSwitch.h"
#include "ui/style/Drawing.h"

namespace quillmender {

namespace {

/// The smallest area that has every pixel in which that colour is plain.
QRect inkIn(const QImage &image, const QColor &ink, const QColor &ground) {
    QRect found;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (contrast(image.pixelColor(x, y), ground) > contrast(ink, ground) / 3)
                found |= QRect(x, y, 1, 1);
    return found;
}

QRect inWindow(const QWidget &widget) {
    return QRect(widget.mapTo(widget.window(), QPoint()), widget.size());
}

/// Whether it has each of the three primary colours in full or not at all.
bool isPure(const QColor &color) {
    constexpr int rounding = 6;
    const auto isEnd = [](int part) { return part <= rounding || part >= 255 - rounding; };
    return isEnd(color.red()) && isEnd(color.green()) && isEnd(color.blue());
}

class PanelAlignmentTest : public PanelLookFixture {
  protected:
    QColor ground() const { return theme.colors().window; }
    /// Where the letters of that label end, in the panel.
    int baseline(const QString &text) {
        TextLabel *label = look::label(controller.panel(), text);
        const QImage image = look::painted(*label, ground());
        return inWindow(*label).top() + inkIn(image, theme.colors().text, ground()).bottom();
    }
};

class SettingsAlignmentTest : public SettingsWindowFixture {
  protected:
    QColor ground() const { return theme.colors().window; }

    QList<QWidget *> cards() {
        QList<QWidget *> found;
        for (const FormSection *section : window()->findChildren<FormSection *>())
            found.append(section->findChild<Card *>());
        return found;
    }

    /// What can be seen on the card and has nothing of its own in it.
    QList<QWidget *> contents(QWidget *card) {
        QList<QWidget *> found;
        for (QWidget *widget : card->findChildren<QWidget *>()) {
            const bool counts =
                qobject_cast<TextLabel *>(widget) || qobject_cast<QLineEdit *>(widget) ||
                qobject_cast<QAbstractButton *>(widget) || qobject_cast<PopUpButton *>(widget);
            if (counts && widget->isVisibleTo(card))
                found.append(widget);
        }
        return found;
    }
};

} // namespace

TEST_F(PanelAlignmentTest, TheProgressStandsOnTheLineOfItsTitle) {
    model.change([](auto &state) {
        state.title = QStringLiteral("Selected Text");
        state.working = true;
        state.running = QStringLiteral("Translate to French");
    });
    show();
    settle();
    EXPECT_EQ(baseline(QStringLiteral("Translate to French")),
              baseline(QStringLiteral("Selected Text")));
    const QRect spinner = inWindow(*controller.panel()->findChild<Spinner *>());
    TextLabel *caption = look::label(controller.panel(), QStringLiteral("Translate to French"));
    const QRect letters = inkIn(look::painted(*caption, ground()), theme.colors().text, ground())
                              .translated(inWindow(*caption).topLeft());
    EXPECT_LE(qAbs(spinner.center().y() - letters.center().y()), 1);
}

TEST_F(SettingsAlignmentTest, EveryTextInAFrameBeginsAtTheSameInset) {
    TextField field(theme);
    field.setText(QStringLiteral("HHHH"));
    InstructionEditor editor(theme, {}, {});
    editor.setPlainText(QStringLiteral("HHHH"));
    PopUpButton choice(theme);
    choice.addItem(QStringLiteral("HHHH"));
    QList<int> insets;
    for (QWidget *control : {static_cast<QWidget *>(&field), static_cast<QWidget *>(&editor),
                             static_cast<QWidget *>(&choice)}) {
        control->setFont(fontFor(TextStyle::body));
        control->resize(240, control->sizeHint().height());
        const QImage image = control->grab().toImage();
        // Without the frame, and no further than the letters reach.
        const QRect within(5, 5, 60, image.height() - 10);
        const QColor fill = image.pixelColor(6, image.height() / 2);
        insets.append(5 + inkIn(image.copy(within), theme.colors().text, fill).left());
    }
    EXPECT_EQ(insets, QList<int>(3, insets.first()));
}

TEST_F(SettingsAlignmentTest, EveryCardHasTheSameAirAboveAndBeneath) {
    loginItem.current = LoginItemStatus::enabled;
    show();
    for (QWidget *card : cards()) {
        QRect all;
        QWidget *highest = nullptr;
        QWidget *lowest = nullptr;
        for (QWidget *widget : contents(card)) {
            const QRect place(widget->mapTo(card, QPoint()), widget->size());
            if (!highest || place.top() < highest->mapTo(card, QPoint()).y())
                highest = widget;
            if (!lowest || place.bottom() > all.bottom())
                lowest = widget;
            all |= place;
        }
        // The lines of a text have air of their own.
        const auto expected = [](QWidget *edge) {
            return qobject_cast<TextLabel *>(edge) ? 12 : 16;
        };
        const std::string name = card->parentWidget()->accessibleName().toStdString();
        EXPECT_EQ(all.top(), expected(highest)) << name;
        EXPECT_EQ(card->height() - all.bottom() - 1, expected(lowest)) << name;
    }
}

TEST_F(SettingsAlignmentTest, ACaptionStandsWithTheControlThatItIsAbout) {
    loginItem.current = LoginItemStatus::enabled;
    show();
    const auto place = [](const QWidget *widget) { return inWindow(*widget); };
    const auto label = [&](const char *text) {
        const TextLabel *found = look::label(window(), QString::fromUtf8(text));
        return found->contentsRect().translated(place(found).topLeft());
    };
    const QRect provider = place(window()->findChild<PopUpButton *>());
    EXPECT_EQ(label("Quillmender sends requests through the currently selected provider.").top() -
                  provider.bottom() - 1,
              4);
    const QRect status = label("Quillmender will open automatically when you log in.");
    EXPECT_EQ(status.top() - place(window()->findChild<ToggleSwitch *>()).bottom() - 1, 4);
    EXPECT_EQ(place(button("Open Login Items Settings")).top() - status.bottom() - 1, 12);
    EXPECT_EQ(
        label("Select text in any app, then press the shortcut to open the action picker.").top() -
            label("Control + Option + Space").bottom() - 1,
        4);
    EXPECT_EQ(place(field("OpenAI Model")).top() - place(field("OpenAI API Key")).bottom() - 1, 12);
}

TEST_F(SettingsAlignmentTest, OneSeesAtOnceThatTheFormGoesOn) {
    loginItem.current = LoginItemStatus::enabled;
    show();
    const QRect seen = inWindow(*window()->findChild<ScrollRegion *>()->viewport());
    bool isCut = false;
    constexpr int plainly = 16;
    for (QWidget *card : cards()) {
        const QRect place = inWindow(*card);
        isCut = isCut || (place.top() + plainly <= seen.bottom() &&
                          place.bottom() - plainly >= seen.bottom());
    }
    EXPECT_TRUE(isCut);
}

TEST_F(SettingsAlignmentTest, ALabelAndItsFieldShareABaselineAtEverySize) {
    const QFont before = QApplication::font();
    for (int size = 13; size <= 28; ++size) {
        QFont font = before;
        font.setPixelSize(size);
        QApplication::setFont(font);
        auto *field = new TextField(theme);
        FormRow row(theme, QStringLiteral("HHH"), field, nullptr);
        field->setText(QStringLiteral("HHH"));
        row.resize(400, row.sizeHint().height());
        row.show();
        settle();
        const auto foot = [&](QWidget *widget) {
            const QImage image = widget->grab().toImage();
            const QRect within(5, 5, std::min(60, image.width() - 5), image.height() - 10);
            const QRect ink = inkIn(image.copy(within & image.rect()), theme.colors().text,
                                    theme.colors().textBackground);
            return widget->mapTo(&row, QPoint()).y() + 5 + ink.bottom();
        };
        auto *label = row.findChild<TextLabel *>();
        const QImage painted = look::painted(*label, theme.colors().textBackground);
        const int labelFoot =
            label->y() +
            inkIn(painted, theme.colors().text, theme.colors().textBackground).bottom();
        EXPECT_EQ(labelFoot, foot(field)) << size;
    }
    QApplication::setFont(before);
}

TEST(DrawingTest, StraightEdgesStandOnWholePixelsAtEveryScale) {
    Look look;
    look.fill = Qt::white;
    look.outline = Qt::red;
    look.ring = Qt::blue;
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0})
        for (int at = 1; at < 5; ++at)
            for (const bool focused : {false, true}) {
                QImage image(100, 100, QImage::Format_RGB32);
                image.setDevicePixelRatio(scale);
                image.fill(Qt::black);
                QPainter painter(&image);
                drawing::focusable(painter, QRectF(at, at, 40, 30), 8, look, focused);
                painter.end();
                for (int along = 0; along < 100; ++along)
                    for (const QPoint place : {QPoint(int((at + 20) * scale), along),
                                               QPoint(along, int((at + 15) * scale))})
                        EXPECT_TRUE(isPure(image.pixelColor(place)))
                            << scale << ", " << at << ": " << place.x() << ", " << place.y();
            }
}

} // namespace quillmender
