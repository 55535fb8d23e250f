#pragma once

#include "platform/Capabilities.h"
#include "selection/PermissionManager.h"
#include "settings/SettingsStore.h"
#include "ui/ActionEditorState.h"
#include "ui/Theme.h"

#include <QList>
#include <QWidget>

#include <functional>
#include <optional>

class QVBoxLayout;

namespace quillmender {

class ActionEditorSheet;
class ActionListItem;
class CredentialsSection;
class FormSection;
class ScrollRegion;

/// The form over all settings. It holds no state that the models have, except which action is
/// being edited; a change of a model is shown once per turn of the event loop, and only while the
/// form can be seen. Keys are read from the keychain when it is shown, and leave it when it hides.
class SettingsView : public QWidget {
    Q_OBJECT

  public:
    /// Everything referred to outlives the view.
    SettingsView(SettingsStore &store, PermissionManager &permissionManager,
                 std::function<void()> onClose, Theme &theme, MissingCapabilities missing = {},
                 QWidget *parent = nullptr);

    /// Opens the editor for an action of the list.
    void edit(const ActionListItem &item);

    /// Writes back what the editor produced. Nothing happens for a custom action that is gone.
    void saveAction(const ActionEditorState &editor, const QString &title, const QString &prompt);

    /// The action being edited; present while the sheet is shown.
    const std::optional<ActionEditorState> &actionEditor() const { return actionEditor_; }

    /// The state of a window just opened: scrolled to its top, no field being typed in.
    void resetFocus();

  Q_SIGNALS:
    /// The view has read its models.
    void rendered();

  protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

  private:
    void buildHeader(QVBoxLayout *stack);
    void buildForm(QVBoxLayout *stack);
    void render();
    void setActionEditor(std::optional<ActionEditorState> editor);
    void presentSheet();

    SettingsStore &store_;
    PermissionManager &permissionManager_;
    std::function<void()> onClose_;
    std::optional<ActionEditorState> actionEditor_;
    Theme &theme_;
    MissingCapabilities missing_;
    ScrollRegion *region_ = nullptr;
    QList<FormSection *> sections_;
    QList<CredentialsSection *> credentials_;
    ActionEditorSheet *sheet_ = nullptr;
};

} // namespace quillmender
