#pragma once

#include "ui/GridColumn.h"
#include "ui/PickerSpeech.h"
#include "ui/Theme.h"

#include <QList>
#include <QWidget>

#include <optional>

class QHBoxLayout;
class QVBoxLayout;

namespace quillmender {

class ActionGrid;
class ActionPickerModel;
class InstructionEditor;
class PreviewCard;
class PromptCard;
class PushButton;
class ScrollRegion;
class StatusLabel;

/// The content of the action picker panel. Holds no state that the model has: once a change has
/// been announced, it reads everything again, once per turn of the event loop, and only while it
/// can be seen.
class ActionPickerView : public QWidget {
    Q_OBJECT

  public:
    /// The model and the theme outlive the view.
    ActionPickerView(ActionPickerModel &model, Theme &theme, QList<GridColumn> columns,
                     QWidget *parent = nullptr);

    /// Brings the view up to date at once, as before it is shown.
    void renderNow();

    /// The state of a fresh panel: scrolled to the top, the keyboard on the first action, or, where
    /// none can be pressed, on what helps then.
    void resetFocus();

    /// Whether the keyboard is where it is only because the place where the user had it has gone.
    bool hasStopgapFocus() const;

    /// Says in the header that what is typed goes elsewhere, and what to do, or no longer.
    void setKeyboardWithheld(bool isWithheld);

    ScrollRegion *region() const { return region_; }
    InstructionEditor *editor() const;

  Q_SIGNALS:
    /// The view has read the model.
    void rendered();

  protected:
    void showEvent(QShowEvent *event) override;

  private:
    void render();
    QWidget *startingPoint() const;
    /// Leaves the keyboard where it was, unless that place has gone.
    void keepFocus(QWidget *focus);
    void showNews();
    void showError();
    void buildHeader(QVBoxLayout *stack);
    void buildBody(QVBoxLayout *stack, QList<GridColumn> columns);
    void buildFooter(QVBoxLayout *stack);
    void connectControls();
    void orderTabs();

    ActionPickerModel &model_;
    Theme &theme_;
    PickerSpeech speech_;
    StatusLabel *subtitle_ = nullptr;
    PreviewCard *previewCard_ = nullptr;
    ActionGrid *grid_ = nullptr;
    PromptCard *promptCard_ = nullptr;
    ScrollRegion *region_ = nullptr;
    PushButton *captureAgain_ = nullptr;
    PushButton *settings_ = nullptr;
    PushButton *close_ = nullptr;
    bool stale_ = true;
    bool isStopgap_ = false;
    bool shownWorking_ = false;
    std::optional<QString> shownError_;
};

} // namespace quillmender
