#pragma once

#include "platform/OwnWindows.h"
#include "platform/linux/Memory.h"
#include "platform/linux/x11/windows/KeysAtFocus.h"

#include <QIcon>

#include <functional>

namespace quillmender::x11 {

class WindowStanding;

/// Windows of the toolkit on an X server. It gives the focus back to whatever window is activated,
/// with the panel on screen.
class X11OwnWindows : public OwnWindows {
  public:
    /// `icon` is made with the first window, so that a program that shows none pays for none.
    X11OwnWindows(WindowStanding &standing, std::function<QIcon()> icon);

    /// The panel alone says that it is none for the task bar.
    void setAccessoryPolicy() override {}
    void applyPanelAttributes(QWindow *window) override;
    void applyWindowAttributes(QWindow *window) override;
    bool areBlended() override;
    void provideMemory(void *begin, std::size_t bytes) override { populateMemory(begin, bytes); }
    void activate(QWindow *window) override;
    QSet<quint32> keysDownAtFocus(QWindow *window) override;
    bool isKeyDown(quint32 code) override;
    std::unique_ptr<SteppedAside> stepAside(QWindow *) override { return nullptr; }

  private:
    void ensureIcon() const;

    WindowStanding &standing_;
    std::function<QIcon()> icon_;
    KeysAtFocus keysAtFocus_;
};

} // namespace quillmender::x11
