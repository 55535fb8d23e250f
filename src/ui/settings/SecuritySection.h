#pragma once

#include "ui/FormSection.h"

namespace quillmender {

/// Where keys and settings are kept.
class SecuritySection : public FormSection {
    Q_OBJECT

  public:
    explicit SecuritySection(Theme &theme, QWidget *parent = nullptr);
};

} // namespace quillmender
