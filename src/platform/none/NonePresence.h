#pragma once

#include "platform/Presence.h"

namespace quillmender {

/// A desktop without status area, symbols or colours of its own.
class NonePresence : public Presence {
  public:
    void setAccessoryPolicy() override {}
    void showStatusItem(const StatusItem &) override {}
    void updateStatusMenuItem(int, const QString &, bool) override {}
    void applyPanelAttributes(quintptr) override {}
    void applyWindowAttributes(quintptr) override {}
    void activateWindow(quintptr) override {}
    QByteArray symbolImage(const QString &, int, quint32) override { return {}; }
    Appearance appearance() override { return {}; }
    void onAppearanceChange(std::function<void()>) override {}
};

} // namespace quillmender
