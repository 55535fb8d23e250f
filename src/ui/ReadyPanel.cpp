#include "ui/ReadyPanel.h"

#include "ui/ActionPanel.h"
#include "ui/ActionPickerView.h"
#include "ui/TextStyle.h"

#include <QApplication>
#include <QFontMetrics>
#include <QLayout>
#include <QPixmap>
#include <QWindow>

#include <array>
#include <utility>

namespace quillmender {

namespace {
constexpr int bandHeight = 160;
constexpr int topWithoutFrame = 8; ///< as much air as there is beneath the buttons
} // namespace

ReadyPanel::ReadyPanel(ActionPickerModel &model, Theme &theme, OwnWindows &ownWindows)
    : model_(model),
      theme_(theme),
      ownWindows_(ownWindows) {}

ReadyPanel::~ReadyPanel() = default;

bool ReadyPanel::prepareMore() {
    const Piece piece = next_;
    if (piece != Piece::none)
        next_ = Piece(int(piece) + 1);
    switch (piece) {
    case Piece::style:
        QApplication::style();
        break;
    case Piece::fonts:
        if (loadNextFont())
            next_ = Piece::fonts;
        break;
    case Piece::view:
        makeView();
        break;
    case Piece::panel:
        makePanel();
        break;
    case Piece::content:
        view_->renderNow();
        break;
    case Piece::layout:
        panel_->ensurePolished();
        panel_->resize(ActionPanel::contentSize);
        panel_->layout()->activate();
        break;
    case Piece::nativeWindow:
        panel_->winId();
        // The theme's pointer is looked for and sent to the server with the first that is wanted.
        panel_->windowHandle()->setCursor(Qt::ArrowCursor);
        break;
    case Piece::picture:
        if (drawNextBand())
            next_ = Piece::picture;
        break;
    case Piece::none:
        break;
    }
    return next_ != Piece::none;
}

void ReadyPanel::makeView() {
    if (view_)
        return;
    unplaced_ =
        std::make_unique<ActionPickerView>(model_, theme_, QList{GridColumn(), GridColumn()});
    view_ = unplaced_.get();
}

void ReadyPanel::makePanel() {
    makeView();
    if (panel_)
        return;
    panel_ = std::make_unique<ActionPanel>(unplaced_.release());
    ActionPanel *const panel = panel_.get();
    if (!ownWindows_.framesPanel())
        panel->frameItself(theme_);
    QObject::connect(panel, &ActionPanel::nativeWindowMade, panel,
                     [&ownWindows = ownWindows_, panel] {
                         ownWindows.applyPanelAttributes(panel->windowHandle());
                         // A toolkit that keeps it free by itself takes the larger of both.
                         const int covered = ownWindows.coveredHeight(panel->windowHandle());
                         const int top = ownWindows.framesPanel() ? covered : topWithoutFrame;
                         panel->setContentsMargins(0, top, 0, 0);
                     });
}

bool ReadyPanel::loadNextFont() {
    constexpr std::array styles{TextStyle::body, TextStyle::caption, TextStyle::headline,
                                TextStyle::title};
    const QFont font = fontFor(styles.at(std::size_t(styles_)));
    // Measuring loads the font, and what shapes its letters.
    QFontMetrics(font).horizontalAdvance(QStringLiteral("Quillmender"));
    return ++styles_ < std::ssize(styles);
}

// Drawn for the sake of what drawing leaves behind: fonts, the shapes of their letters, symbols.
bool ReadyPanel::drawNextBand() {
    const QRect band(0, drawn_, panel_->width(), bandHeight);
    QPixmap picture(band.size());
    panel_->render(&picture, QPoint(), band);
    drawn_ += bandHeight;
    return drawn_ < panel_->height();
}

ActionPickerView *ReadyPanel::view() {
    makeView();
    return view_;
}

std::unique_ptr<ActionPanel> ReadyPanel::take() {
    makePanel();
    next_ = Piece::none;
    return std::move(panel_);
}

} // namespace quillmender
