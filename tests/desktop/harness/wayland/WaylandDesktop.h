#pragma once

#include "desktop/harness/AnyDesktop.h"
#include "desktop/harness/wayland/Compositor.h"

namespace quillmender::harness {

/// A whole private desktop on Wayland: compositor, session bus, accessibility bus and keyring, with
/// a home folder of its own. Any number of them run side by side.
class WaylandDesktop : public AnyDesktop {
  public:
    struct Options {
        CompositorKind kind = CompositorKind::sway;
        Compositor::Options compositor{};
        /// Whether there is an accessibility bus at all.
        bool accessibilityBus = true;
        /// What IsEnabled says when applications start.
        bool accessibilityEnabled = true;
        bool keyring = true;
        /// The D-Bus service files of programs that the session bus starts when they are called.
        // NOLINTNEXTLINE(readability-redundant-member-init): g++ warns where it is left out
        QStringList services = {};
    };

    explicit WaylandDesktop(const Options &options);
    ~WaylandDesktop() override;

    Compositor &compositor() { return *compositor_; }
    QString socketPath() const { return compositor_->socketPath(); }

    WindowList &windows() override { return compositor_->windows(); }
    WaylandUser &input() override { return compositor_->user(); }
    QImage screenshot() override { return compositor_->screenshot(); }
    QSize screen() const override { return compositor_->screen(); }

    std::unique_ptr<SelectionOwner>
    ownClipboard(const QList<ClipboardRepresentation> &offer) override;
    std::unique_ptr<SelectionOwner> ownSelectedText(const QString &text) override;
    ClipboardContents readClipboard() override;
    std::optional<QByteArray> readClipboardText(std::chrono::milliseconds deadline) override;
    QString selectedText() override;

    /// It is trusted with what the product's .desktop file asks for.
    void prepareFor(const QString &program) override;

  private:
    std::unique_ptr<Compositor> compositor_;
};

} // namespace quillmender::harness
