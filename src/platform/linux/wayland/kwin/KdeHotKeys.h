#pragma once

#include "platform/HotKeys.h"

#include <QDBusConnection>

namespace quillmender::kwin {

/// Hot keys of Plasma: global shortcuts of `org.kde.kglobalaccel`. One at a time: all are the same
/// action there, which the user finds in the system's settings.
class KdeHotKeys : public HotKeys {
  public:
    /// Null when that service is not on the bus. Waits for the bus, a second at most.
    static std::unique_ptr<KdeHotKeys> create(QDBusConnection bus);

    explicit KdeHotKeys(QDBusConnection bus) : bus_(std::move(bus)) {}

    QCoro::Task<HotKeyOutcome> hold(QKeyCombination keys, std::function<void()> handler) override;

  private:
    QDBusConnection bus_;
};

} // namespace quillmender::kwin
