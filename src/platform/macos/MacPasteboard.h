#pragma once

#include "platform/Pasteboard.h"
#include "platform/macos/ObjcRef.h"

#import <AppKit/AppKit.h>

namespace quillmender {

/// The general pasteboard, which the system's pasteboard server keeps for every program.
class MacPasteboard : public Pasteboard {
  public:
    MacPasteboard();

    QCoro::Task<QList<PasteboardItem>> items() override;
    qint64 changeCount() override;
    void replaceContents(const QList<PasteboardItem> &items) override;
    QCoro::Task<std::optional<QString>> string() override;
    /// Never null: what became of the write is not asked.
    LentTextRef lend(const QString &text, RunningApplicationRef reader) override;
    QCoro::Task<> handOver() override;

  private:
    ObjcRef<NSPasteboard> pasteboard_;
};

} // namespace quillmender
