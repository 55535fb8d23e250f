#pragma once

#include "../SettingsWindowFixture.h"
#include "ui/AboutWindowController.h"
#include "ui/Card.h"

#include <QImage>
#include <QLayout>
#include <QPainter>
#include <QScreen>

#include <functional>

namespace quillmender {

/// The panel on a fake model, with everything that it can show.
class PanelLookFixture : public PanelFixture {
  protected:
    void showEverything() {
        model.change([](auto &state) {
            state.error = QStringLiteral("It failed.");
            state.working = true;
            state.running = QStringLiteral("Making it formal");
            state.granted = false;
        });
        show();
        settle();
    }
};

/// The window about the program.
class AboutLookFixture : public testing::Test {
  protected:
    void show() {
        controller.centre();
        controller.makeKeyAndOrderFront();
        ASSERT_TRUE(QTest::qWaitForWindowActive(controller.window()));
        QCoreApplication::sendPostedEvents();
    }

    fakes::FakeAppearance appearance;
    fakes::FakeSymbols symbols;
    fakes::FakeOwnWindows ownWindows;
    Theme theme{appearance, symbols};
    AboutWindowController controller{QStringLiteral("1.0.0"), theme, ownWindows};
};

namespace look {

/// The label with that text that can be seen.
inline TextLabel *label(QWidget *window, const QString &text) {
    for (TextLabel *candidate : window->findChildren<TextLabel *>())
        if (candidate->isVisibleTo(window) && candidate->text() == text)
            return candidate;
    return nullptr;
}

inline int count(const QImage &image, const QColor &color) {
    int found = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            found += image.pixelColor(x, y).rgb() == color.rgb() ? 1 : 0;
    return found;
}

/// What `widget` paints itself, over an even ground.
inline QImage painted(QWidget &widget, const QColor &ground) {
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(ground);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawWindowBackground);
    return image;
}

/// A picture of the same size as `widget`, painted by `paint`.
inline QImage reference(const QWidget &widget, const QColor &ground,
                        const std::function<void(QPainter &)> &paint) {
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(ground);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paint(painter);
    return image;
}

/// Whether both are the same within `size` pixels of each corner.
inline bool haveSameCorners(const QImage &a, const QImage &b, int size) {
    const int right = a.width() - size;
    const int bottom = a.height() - size;
    for (const QPoint corner :
         {QPoint(0, 0), QPoint(right, 0), QPoint(0, bottom), QPoint(right, bottom)}) {
        const QRect area(corner, QSize(size, size));
        if (a.copy(area) != b.copy(area))
            return false;
    }
    return a.size() == b.size();
}

} // namespace look

} // namespace quillmender
