#pragma once

#include "platform/OwnWindows.h"
#include "ui/Alert.h"
#include "ui/Theme.h"

#include <QDialog>
#include <QList>

#include <functional>

namespace quillmender {

class PushButton;

/// A small window above all others that waits for one answer. Nothing else waits meanwhile.
class AlertWindow : public QDialog {
    Q_OBJECT

  public:
    /// `answered` is called once, with the index of the button, when the window has gone. Theme and
    /// own windows outlive it.
    AlertWindow(const Alert &alert, std::function<void(int)> answered, Theme &theme,
                OwnWindows &ownWindows);

    /// Shows it in the middle of the screen with the pointer, with the keyboard focus.
    void makeKeyAndOrderFront();

    /// Escape and the title bar's button end here, too.
    void done(int button) override;
    void reject() override;

    const QList<PushButton *> &buttons() const { return buttons_; }

  private:
    void build(const Alert &alert, Theme &theme);

    std::function<void(int)> answered_;
    OwnWindows &ownWindows_;
    QList<PushButton *> buttons_;
};

} // namespace quillmender
