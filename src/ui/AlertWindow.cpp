#include "ui/AlertWindow.h"

#include "ui/PushButton.h"
#include "ui/SymbolView.h"
#include "ui/TextLabel.h"
#include "ui/WindowPlacement.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <utility>

namespace quillmender {

namespace {
constexpr int margin = 24;
constexpr int symbolSize = 40;
constexpr int symbolGap = 18;
constexpr int windowWidth = 460;
} // namespace

AlertWindow::AlertWindow(const Alert &alert, std::function<void(int)> answered, Theme &theme,
                         OwnWindows &ownWindows)
    : QDialog(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint),
      answered_(std::move(answered)),
      ownWindows_(ownWindows) {
    setAttribute(Qt::WA_QuitOnClose, false);
    setWindowTitle(alert.messageText);
    setAccessibleDescription(alert.informativeText);
    build(alert, theme);
}

void AlertWindow::build(const Alert &alert, Theme &theme) {
    auto *symbol = new SymbolView(theme, symbolSize, this);
    symbol->setSymbol(programSymbol);
    symbol->alignInk();
    auto *message = new TextLabel(theme, TextStyle::headline, TextLabel::Tone::primary, this);
    message->show(alert.messageText);
    auto *information = new TextLabel(theme, TextStyle::body, TextLabel::Tone::secondary, this);
    information->show(alert.informativeText);

    auto *texts = new QVBoxLayout;
    texts->setSpacing(8);
    texts->addWidget(message);
    texts->addWidget(information);
    auto *content = new QHBoxLayout;
    content->setSpacing(symbolGap);
    content->addWidget(symbol, 0, Qt::AlignTop);
    content->addLayout(texts, 1);

    auto *row = new QHBoxLayout;
    row->setSpacing(8);
    row->addStretch(1);
    // The default one is the outermost. They are made as they stand: so the keyboard and assistive
    // technology go through them.
    for (qsizetype i = alert.buttons.size() - 1; i >= 0; --i) {
        auto *button = new PushButton(
            theme, alert.buttons[i],
            i == 0 ? PushButton::Prominence::prominent : PushButton::Prominence::standard, this);
        connect(button, &QPushButton::clicked, this, [this, i] { done(int(i)); });
        row->addWidget(button);
        buttons_.prepend(button);
    }

    auto *stack = new QVBoxLayout(this);
    stack->setContentsMargins(margin, margin, margin, 20);
    stack->setSpacing(0);
    stack->addLayout(content);
    stack->addSpacing(20);
    stack->addLayout(row);
    stack->setSizeConstraint(QLayout::SetNoConstraint);
    if (!buttons_.isEmpty()) {
        buttons_.first()->setDefault(true);
        buttons_.first()->setFocus();
    }
}

void AlertWindow::makeKeyAndOrderFront() {
    if (QScreen *screen = screenInUse(ownWindows_))
        centreOnScreen(*this, *screen,
                       QSize(windowWidth, layout()->totalHeightForWidth(windowWidth)));
    show();
    raise();
    activateWindow();
    ownWindows_.activate(windowHandle());
}

void AlertWindow::done(int button) {
    const auto answered = std::exchange(answered_, nullptr);
    hide();
    if (answered)
        answered(button);
}

void AlertWindow::reject() {
    done(int(buttons_.size()) - 1);
}

} // namespace quillmender
