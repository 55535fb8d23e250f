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
/// Compositors differ in what a surface of this shell gets that wants the keyboard "on demand":
/// some give it when the surface appears, others only when it is clicked, and then what is typed
/// right after the hot key would go into the document. One that wants the keyboard for itself alone
/// gets it everywhere, but some keep it there until the surface goes, even when the user clicks
/// elsewhere. So the panel asks for the keyboard alone, and once it has it, is content with "on
/// demand". Where the compositor takes that for a reason to give the keyboard back, which it says
/// before it answers the next question, the panel takes it again at once and asks no more.
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
    void relax();
    void keepAlone();
    bool hasKeyboard() const;

    KeyboardWatch &keyboard_;
    QPointer<QWindow> panel_;
    QPointer<LayerShellQt::Window> layer_; ///< the panel's
    std::unique_ptr<RoundTrip> trial_;     ///< of "on demand", while nobody knows
    bool keepsOnDemand_ = true;            ///< as far as has been seen
    bool comesQuietly_ = false;            ///< is on its way to the screen without the keyboard
};

} // namespace quillmender::wayland
