#include "ui/settings/CopyableLines.h"

#include "ui/Announcer.h"
#include "ui/PushButton.h"
#include "ui/TextLabel.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>

namespace quillmender {

namespace {
constexpr int gap = 12;
} // namespace

CopyableLines::CopyableLines(Theme &theme, const QString &lines, QWidget *parent)
    : QWidget(parent),
      lines_(lines),
      label_(new TextLabel(theme, TextStyle::caption, TextLabel::Tone::primary, this)),
      button_(
          new PushButton(theme, QStringLiteral("Copy"), PushButton::Prominence::standard, this)),
      announcer_(new Announcer(this)) {
    label_->setCode(TextLabel::Code::all);
    label_->show(lines);
    connect(button_, &QPushButton::clicked, this, &CopyableLines::copy);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(gap);
    row->addWidget(label_, 1);
    row->addWidget(button_, 0, Qt::AlignTop);
}

void CopyableLines::copy() {
    QGuiApplication::clipboard()->setText(lines_);
    announcer_->say(QStringLiteral("Copied"));
}

} // namespace quillmender
