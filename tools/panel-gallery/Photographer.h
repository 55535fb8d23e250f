#pragma once

#include "GalleryModel.h"
#include "ui/ActionPanelController.h"
#include "ui/Theme.h"

#include <QObject>

#include <memory>

namespace quillmender {

/// Shows each state in turn and writes a picture of its beginning and one of its end.
class Photographer : public QObject {
    Q_OBJECT

  public:
    Photographer(Theme &theme, OwnWindows &ownWindows, QString folder);

    void start();

  Q_SIGNALS:
    void finished();

  private:
    void showNext();
    void takePictures();

    Theme &theme_;
    OwnWindows &ownWindows_;
    QString folder_;
    QStringList waiting_;
    QString state_;
    std::unique_ptr<GalleryModel> model_;
    std::unique_ptr<ActionPanelController> controller_;
};

/// Scrolls the panel's middle part.
void scrollPanel(const ActionPanelController &controller, int percent);

} // namespace quillmender
