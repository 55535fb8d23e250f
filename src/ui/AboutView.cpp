#include "ui/AboutView.h"

#include "ui/Accessibles.h"
#include "ui/ScrollRegion.h"
#include "ui/SlimScrollBar.h"
#include "ui/SymbolView.h"
#include "ui/TextLabel.h"
#include "ui/WholeLines.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quillmender {

namespace {

constexpr int margin = 24;
constexpr int gap = 18;
constexpr int legalGap = 8;
constexpr int symbolSize = 30;

TextLabel *makeText(Theme &theme, TextStyle style, TextLabel::Tone tone, const QString &text) {
    auto *label = new TextLabel(theme, style, tone);
    label->show(text);
    return label;
}

} // namespace

AboutView::AboutView(Theme &theme, const QString &version, QWidget *parent)
    : QWidget(parent),
      theme_(theme) {
    installAccessibles();
    auto *content = new QWidget;
    auto *stack = new QVBoxLayout(content);
    stack->setContentsMargins(margin, margin, margin - SlimScrollBar::breadth, margin);
    stack->setSpacing(gap);
    addName(stack);
    stack->addWidget(makeText(theme, TextStyle::subheadline, TextLabel::Tone::secondary,
                              QStringLiteral("Version ") + version));
    auto *author = makeText(theme, TextStyle::headline, TextLabel::Tone::primary,
                            QStringLiteral("Created by Orvelline"));
    author->setHeading(false);
    stack->addWidget(author);
    stack->addWidget(makeText(
        theme, TextStyle::body, TextLabel::Tone::secondary,
        QStringLiteral("Quillmender is a macOS text-assistance utility that sends captured text to "
                       "a language model provider you configure and replaces the result back into "
                       "the active app.")));
    addLegalNotice(stack);
    stack->addStretch(1);

    auto *frame = new QVBoxLayout(this);
    frame->setContentsMargins(0, 0, 0, 0);
    auto *region = new ScrollRegion(theme, content, this);
    // The notice is longer than the window: its keys scroll.
    region->setFocusPolicy(Qt::StrongFocus);
    region->setAccessibleName(QStringLiteral("About Quillmender"));
    region->setFocus();
    frame->addWidget(region);
    new WholeLines(theme, *region);
}

void AboutView::addName(QVBoxLayout *stack) {
    auto *symbol = new SymbolView(theme_, symbolSize);
    symbol->setSymbol(programSymbol);
    symbol->alignInk();
    auto *row = new QHBoxLayout;
    row->setSpacing(10);
    row->addWidget(symbol, 0, Qt::AlignVCenter);
    row->addWidget(makeText(theme_, TextStyle::largeTitle, TextLabel::Tone::primary,
                            QStringLiteral("Quillmender")),
                   1);
    stack->addLayout(row);
}

void AboutView::addLegalNotice(QVBoxLayout *stack) {
    auto *group = new QVBoxLayout;
    group->setSpacing(legalGap);
    group->addWidget(makeText(theme_, TextStyle::headline, TextLabel::Tone::primary,
                              QStringLiteral("Legal Notice")));
    for (const QString &paragraph :
         {QStringLiteral(
              "Quillmender is provided on an \"as is\" and \"as available\" basis for convenience "
              "and productivity purposes only, without warranties of any kind, express or implied, "
              "including any warranty of accuracy, reliability, merchantability, fitness for a "
              "particular purpose, non-infringement, or uninterrupted availability."),
          QStringLiteral(
              "AI-generated output may be inaccurate, incomplete, misleading, offensive, or "
              "unsuitable for your intended use. You are solely responsible for reviewing, "
              "editing, validating, and deciding whether to use any output generated through the "
              "app."),
          QStringLiteral(
              "To the maximum extent permitted by applicable law, Orvelline disclaims "
              "responsibility and liability for any claims, losses, damages, liabilities, costs, "
              "or consequences arising out of or related to your use of Quillmender, your reliance "
              "on generated output, or any third-party model provider services connected to it.")})
        group->addWidget(makeText(theme_, TextStyle::body, TextLabel::Tone::primary, paragraph));
    stack->addLayout(group);
}

} // namespace quillmender
