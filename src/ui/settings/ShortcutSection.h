#pragma once

#include "settings/SettingsStore.h"
#include "ui/FormSection.h"

namespace quillmender {

/// The hot key.
class ShortcutSection : public FormSection {
    Q_OBJECT

  public:
    ShortcutSection(const SettingsStore &store, Theme &theme, QWidget *parent = nullptr);
};

} // namespace quillmender
