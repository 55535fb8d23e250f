#include "ui/settings/PermissionRow.h"

#include "ui/PushButton.h"
#include "ui/StatusLabel.h"

#include <QVBoxLayout>

namespace quillmender {

namespace {
constexpr int gap = 8;
} // namespace

PermissionRow::PermissionRow(Theme &theme, const Lack &lack, QWidget *parent)
    : QWidget(parent),
      permission_(lack.permission),
      status_(new StatusLabel(theme, TextStyle::caption, TextLabel::Tone::error, this)),
      remedy_(new TextLabel(theme, TextStyle::caption, TextLabel::Tone::secondary, this)),
      button_(new PushButton(theme, QStringLiteral("Ask for Permission"),
                             PushButton::Prominence::standard, this)) {
    remedy_->show(lack.remedy);
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(gap);
    rows->addWidget(status_);
    rows->addWidget(remedy_);
    rows->addWidget(button_, 0, Qt::AlignLeading);
    connect(button_, &QPushButton::clicked, this, [this] { permission_->ask(); });
    connect(permission_.get(), &Permission::changed, this, &PermissionRow::render);
    render();
}

void PermissionRow::render() {
    const Permission::State state = permission_->state();
    const bool isGranted = state == Permission::State::granted;
    status_->setTone(isGranted ? TextLabel::Tone::success : TextLabel::Tone::error);
    status_->tell(permission_->sentence());
    remedy_->setVisible(state == Permission::State::missing);
    button_->setVisible(state == Permission::State::missing);
}

} // namespace quillmender
