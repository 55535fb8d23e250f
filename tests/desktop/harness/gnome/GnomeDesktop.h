#pragma once

#include "desktop/harness/AnyDesktop.h"
#include "desktop/harness/gnome/GnomeDialogs.h"
#include "desktop/harness/gnome/GnomeShell.h"

namespace quillmender::harness {

/// A whole private GNOME desktop: shell, portals, session bus, accessibility bus and keyring, with
/// a home folder of its own. The product's desktop entry is installed, as the portals want it.
class GnomeDesktop : public AnyDesktop {
  public:
    struct Options {
        GnomeShell::Options shell{};
        bool keyring = true;
    };

    explicit GnomeDesktop(const Options &options);
    ~GnomeDesktop() override;

    GnomeShell &shell() { return *shell_; }
    GnomeDialogs &dialogs() { return *dialogs_; }

    /// Of one of the portal's interfaces, named without `org.freedesktop.portal.`; 0 when it is not
    /// there.
    uint portalVersion(const QString &interface);

    WindowList &windows() override { return shell_->windows(); }
    GnomeUser &input() override { return shell_->user(); }
    QImage screenshot() override { return shell_->screenshot(); }
    QSize screen() const override { return shell_->screen(); }

    std::unique_ptr<SelectionOwner>
    ownClipboard(const QList<ClipboardRepresentation> &offer) override;
    ClipboardContents readClipboard() override;
    std::optional<QByteArray> readClipboardText(std::chrono::milliseconds deadline) override;

    /// Nobody but the window with the keyboard has to do with it there: both throw HarnessError.
    std::unique_ptr<SelectionOwner> ownSelectedText(const QString &text) override;
    QString selectedText() override;

    void prepareFor(const QString &program) override;

  private:
    void waitForPortals();

    std::unique_ptr<GnomeShell> shell_;
    std::unique_ptr<GnomeDialogs> dialogs_;
};

} // namespace quillmender::harness
