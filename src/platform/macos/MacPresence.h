#pragma once

#include "platform/Presence.h"
#include "platform/macos/AppearanceObserver.h"
#include "platform/macos/ObjcRef.h"

#include <QHash>

#include <memory>

namespace quillmender {

class StatusBarItem;

/// A program of the status bar, without a Dock icon. A window identifier is the toolkit's NSView;
/// the NSWindow around it may be another one at each show.
class MacPresence : public Presence {
  public:
    MacPresence();
    ~MacPresence() override;

    void setAccessoryPolicy() override;
    void showStatusItem(const StatusItem &item) override;
    void updateStatusMenuItem(int index, const QString &title, bool hidden) override;
    void applyPanelAttributes(quintptr windowId) override;
    void applyWindowAttributes(quintptr windowId) override;

    /// Gives a window that was made anew its attributes again first.
    void activateWindow(quintptr windowId) override;

    QByteArray symbolImage(const QString &name, int pixelSize, quint32 color) override;
    Appearance appearance() override;
    void onAppearanceChange(std::function<void()> listener) override;

  private:
    enum class WindowKind { panel, window };

    void apply(quintptr windowId);

    QHash<quintptr, WindowKind> windows_;
    std::unique_ptr<StatusBarItem> statusItem_;
    std::function<void()> listener_;
    ObjcRef<QuillmenderAppearanceObserver> observer_;
};

} // namespace quillmender
