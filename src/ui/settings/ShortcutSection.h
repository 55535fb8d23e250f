#pragma once

#include "platform/Capabilities.h"
#include "settings/SettingsStore.h"
#include "ui/FormSection.h"

namespace quillmender {

class StatusLabel;
class TextLabel;

/// The hot key, as it is held at the moment.
class ShortcutSection : public FormSection {
    Q_OBJECT

  public:
    /// `lack` says why no shortcut can work on this desktop; empty where one can.
    ShortcutSection(const SettingsStore &store, const Lack &lack, Theme &theme,
                    QWidget *parent = nullptr);

    void render() override;

  private:
    const SettingsStore &store_;
    TextLabel *keys_;
    StatusLabel *status_;
    QList<QWidget *> remedy_; ///< seen while there is no shortcut
    QString lack_;
};

} // namespace quillmender
