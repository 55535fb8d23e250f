#pragma once

#include "platform/Workspace.h"
#include "platform/macos/ObjcRef.h"

#import <AppKit/AppKit.h>

namespace quillmender {

/// Keeps the system's handle of the application.
class MacRunningApplication : public RunningApplication {
  public:
    explicit MacRunningApplication(NSRunningApplication *application)
        : application_(ObjcRef<NSRunningApplication>::retained(application)) {}

    qint64 processId() const override { return [application_.get() processIdentifier]; }

    NSRunningApplication *get() const { return application_.get(); }

  private:
    ObjcRef<NSRunningApplication> application_;
};

} // namespace quillmender
