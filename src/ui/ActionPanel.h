#pragma once

#include <QDialog>

namespace quillmender {

class Theme;

/// The window of the action picker. Closing only hides it; no key closes it.
class ActionPanel : public QDialog {
    Q_OBJECT

  public:
    /// In points, where the screen has room for it.
    static constexpr QSize contentSize{620, 620};

    explicit ActionPanel(QWidget *content);

    /// Draws an edge of its own, with round corners, where nobody draws a frame. Before the native
    /// window is made; the theme outlives the panel.
    void frameItself(Theme &theme);

  Q_SIGNALS:
    void nativeWindowMade();

  protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

  private:
    Theme *theme_ = nullptr; ///< null where it has no edge of its own
};

} // namespace quillmender
