#pragma once

#include "GalleryServices.h"
#include "selection/PermissionManager.h"
#include "settings/SettingsStore.h"
#include "ui/AboutWindowController.h"
#include "ui/AlertWindow.h"
#include "ui/SettingsWindowController.h"

#include <QObject>

namespace quillmender {

/// Shows the settings, the action editor, About and an alert, one after the other in the states
/// that are worth a look, and writes a picture of each.
class WindowScenes : public QObject {
    Q_OBJECT

  public:
    WindowScenes(Theme &theme, OwnWindows &ownWindows, QString folder);

    void start();

  Q_SIGNALS:
    void finished();

  private:
    struct Scene {
        QString name;
        std::function<QWidget *()> enter; ///< the window to be photographed
    };

    void next();
    static void scroll(SettingsWindowController &settings, int percent);
    QWidget *openContextMenu();
    QWidget *showToolTip();
    QWidget *openEditor(const std::function<void()> &open);

    QString folder_;
    NoneUserDefaults defaults_;
    GallerySecrets secrets_;
    GalleryLoginItem loginItem_;
    NoneAccessibilityAccess accessibility_;
    NoneWorkspace workspace_;
    SettingsStore store_{defaults_, secrets_, loginItem_};
    PermissionManager permissions_{accessibility_, workspace_};
    SettingsWindowController settings_;
    SettingsStore poorStore_{defaults_, secrets_, loginItem_};
    SettingsWindowController poorSettings_;
    AboutWindowController about_;
    AlertWindow alert_;
    QList<Scene> waiting_;
};

} // namespace quillmender
