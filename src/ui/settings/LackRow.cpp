#include "ui/settings/LackRow.h"

#include "ui/PushButton.h"
#include "ui/StatusLabel.h"

#include <QVBoxLayout>

namespace quillmender {

namespace {
constexpr int gap = 8;
} // namespace

LackRow::LackRow(Theme &theme, const Lack &lack, QWidget *parent)
    : QWidget(parent),
      permission_(lack.permission),
      status_(new StatusLabel(theme, TextStyle::caption, TextLabel::Tone::error, this)),
      remedy_(new TextLabel(theme, TextStyle::caption, TextLabel::Tone::secondary, this)) {
    remedy_->show(lack.remedy);
    remedy_->setVisible(!lack.remedy.isEmpty());
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(gap);
    rows->addWidget(status_);
    rows->addWidget(remedy_);
    if (permission_)
        addButton(theme);
    else
        status_->tell(lack.sentence);
}

void LackRow::addButton(Theme &theme) {
    button_ = new PushButton(theme, QStringLiteral("Ask for Permission"),
                             PushButton::Prominence::standard, this);
    layout()->addWidget(button_);
    layout()->setAlignment(button_, Qt::AlignLeading);
    connect(button_, &QPushButton::clicked, this, [this] { permission_->ask(); });
    connect(permission_.get(), &Permission::changed, this, &LackRow::render);
    render();
}

void LackRow::render() {
    const Permission::State state = permission_->state();
    const bool isGranted = state == Permission::State::granted;
    status_->setTone(isGranted ? TextLabel::Tone::success : TextLabel::Tone::error);
    status_->tell(permission_->sentence());
    remedy_->setVisible(state == Permission::State::missing);
    button_->setVisible(state == Permission::State::missing);
}

} // namespace quillmender
