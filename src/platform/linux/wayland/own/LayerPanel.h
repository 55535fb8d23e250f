#pragma once

#include "platform/linux/wayland/own/PanelStanding.h"

#include <QObject>
#include <QPointer>

#include <LayerShellQt/Window>

namespace quillmender::wayland {

class KeyboardWatch;
class RoundTrip;

/// The panel as a surface above all windows (wlr-layer-shell), in the middle of its output.
///
/// Compositors differ in what a surface of this shell gets that wants the keyboard "on demand".
/// Some give it when the surface appears, and to the document again when the user clicks there.
/// Others give it only when the surface is clicked, and what is typed right after the hot key would
/// go into the document; there it has to be wanted "exclusively". That works everywhere, but such a
/// surface keeps the keyboard wherever the user clicks, and some compositors take the keyboard away
/// from it once it is content with less.
///
/// So the first time the panel asks on demand, and when the compositor has answered the next
/// question without having given the keyboard, asks exclusively, and does so from then on. That
/// takes a millisecond or two in which keys still go to the document, as they did before the panel
/// was there; no key goes there after the first one that comes here.
class LayerPanel : public QObject, public PanelStanding {
    Q_OBJECT

  public:
    /// The watch has the toolkit's display, and outlives this.
    explicit LayerPanel(KeyboardWatch &keyboard);
    ~LayerPanel() override;

    void prepare(QWindow &panel) override;
    void aboutToShow(bool takesKeyboard) override;
    void takeKeyboard() override;
    void giveWay() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

  private:
    using Interactivity = LayerShellQt::Window::KeyboardInteractivity;

    void want(Interactivity interactivity);
    void commit();
    void appeared();
    void tryOnDemand();
    void decide();

    KeyboardWatch &keyboard_;
    QPointer<QWindow> panel_;
    QPointer<LayerShellQt::Window> layer_; ///< the panel's
    std::unique_ptr<RoundTrip> trial_;     ///< whether the keyboard comes on demand
    /// What brings the keyboard, as far as is known.
    Interactivity way_ = LayerShellQt::Window::KeyboardInteractivityOnDemand;
    bool isOnScreen_ = false;
    bool takesKeyboard_ = true; ///< when it comes on the screen
};

} // namespace quillmender::wayland
