#pragma once

#include "desktop/harness/ChildProcess.h"

#include <QDBusConnection>

namespace quillmender::harness {

class SessionBus;

/// The accessibility bus of a session with its registry.
class AccessibilityBus {
  public:
    /// `enabled` is what applications find in IsEnabled when they start.
    AccessibilityBus(SessionBus &session, bool enabled, const QProcessEnvironment &environment,
                     const QString &logFile);
    AccessibilityBus(const AccessibilityBus &) = delete;
    AccessibilityBus &operator=(const AccessibilityBus &) = delete;
    ~AccessibilityBus();

    const QString &address() const { return address_; }
    const QDBusConnection &connection() const { return connection_; }

    bool isEnabled() const;
    void setEnabled(bool enabled);

    ChildProcess &process() { return process_; }

  private:
    SessionBus &session_;
    ChildProcess process_;
    QString address_;
    QDBusConnection connection_;
};

} // namespace quillmender::harness
