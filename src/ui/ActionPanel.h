#pragma once

#include <QDialog>

namespace quillmender {

/// The window of the action picker. Closing only hides it; no key closes it.
class ActionPanel : public QDialog {
    Q_OBJECT

  public:
    /// In points, where the screen has room for it.
    static constexpr QSize contentSize{620, 620};

    explicit ActionPanel(QWidget *content);

  Q_SIGNALS:
    void nativeWindowMade();

  protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
};

} // namespace quillmender
