#pragma once

#include "ui/FormSection.h"

namespace quillmender {

/// What to do first.
class IntroductionSection : public FormSection {
    Q_OBJECT

  public:
    explicit IntroductionSection(Theme &theme, QWidget *parent = nullptr);
};

} // namespace quillmender
