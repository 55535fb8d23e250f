#pragma once

#include "platform/Presence.h"
#include "platform/macos/MenuTarget.h"
#include "platform/macos/ObjcRef.h"

#import <AppKit/AppKit.h>

namespace quillmender {

/// A live object is an item in the system's status bar, with its menu.
class StatusBarItem {
  public:
    explicit StatusBarItem(StatusItem item);
    StatusBarItem(const StatusBarItem &) = delete;
    StatusBarItem &operator=(const StatusBarItem &) = delete;
    ~StatusBarItem();

    /// Nothing happens when there is no such item.
    void update(int index, const QString &title, bool hidden);

  private:
    void configureButton(const StatusItem &item);
    void makeMenu(const QList<StatusMenuItem> &items);

    ObjcRef<QuillmenderMenuTarget> target_;
    ObjcRef<NSStatusItem> statusItem_; ///< the status bar itself keeps none
    ObjcRef<NSMenu> menu_;
};

} // namespace quillmender
