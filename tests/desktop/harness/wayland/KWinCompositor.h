#pragma once

#include "desktop/harness/wayland/KWinScripting.h"
#include "desktop/harness/wayland/KWinWindows.h"
#include "desktop/harness/wayland/SwayCompositor.h"

namespace quillmender::harness {

/// KWin as the only window of a sway without a screen: KWin takes no virtual keyboard from its
/// clients, so the user types on that sway, which to KWin is a real keyboard, and the picture of
/// the screen is that sway's.
class KWinCompositor : public Compositor {
  public:
    KWinCompositor(const Options &options, const Place &place);
    ~KWinCompositor() override;

    ChildProcess &process() override { return *process_; }
    KWinWindows &windows() override { return *windows_; }
    WaylandUser &user() override { return host_.user(); }
    QString screenSocketPath() const override { return host_.socketPath(); }
    QImage screenshot() override { return host_.screenshot(); }
    void useLayout(quint32 layout) override;
    void reload() override;
    void trust(const QString &program, const QString &desktopFile) override;

  private:
    void writeSettings(const Options &options);
    void readDesktopFiles();
    void keepScreenAwake();

    SwayCompositor host_;
    std::unique_ptr<ChildProcess> process_;
    std::unique_ptr<ChildProcess> pulse_; ///< of the host's screen
    std::unique_ptr<KWinScripting> scripting_;
    std::unique_ptr<KWinWindows> windows_;
};

} // namespace quillmender::harness
