#pragma once

#include <QString>

#include <optional>

class QWidget;

namespace quillmender {

class ActionPickerModel;
class Announcer;

/// The panel for somebody who does not see it. When it comes, it is described by what was captured;
/// while it is open, the start of a request and its failure are announced. The end needs no words:
/// the screen reader tells where the focus is then.
class PickerSpeech {
  public:
    /// Both outlive it.
    PickerSpeech(const ActionPickerModel &model, QWidget &view);

    /// After each change of the model.
    void render();

  private:
    QString description() const;

    const ActionPickerModel &model_;
    QWidget &view_;
    Announcer *announcer_;
    bool wasWorking_ = false;
    std::optional<QString> lastError_;
};

} // namespace quillmender
