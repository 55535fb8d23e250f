#pragma once

#include "platform/StatusItem.h"
#include "platform/macos/MenuTarget.h"
#include "platform/macos/ObjcRef.h"

#import <AppKit/AppKit.h>

namespace quillmender {

/// An item in the system's status bar, with its menu. It goes with this object.
class MacStatusItem : public StatusItem {
  public:
    MacStatusItem() = default;
    ~MacStatusItem() override;

    void show(const StatusItemContents &contents) override;
    void updateMenuItem(int index, const QString &title, bool hidden) override;

  private:
    void remove();
    void configureButton(const StatusItemContents &contents);
    void makeMenu(const QList<StatusMenuItem> &items);

    ObjcRef<QuillmenderMenuTarget> target_;
    ObjcRef<NSStatusItem> statusItem_; ///< the status bar itself keeps none
    ObjcRef<NSMenu> menu_;
};

} // namespace quillmender
