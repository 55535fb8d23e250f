#pragma once

#include "applications/EditorField.h"

namespace quillmender::applications {

/// A document that can be selected and copied and not changed.
class ReaderField : public EditorField {
  public:
    using EditorField::EditorField;

    QList<Scenario> scenarios() const override;
    void prepare(const Scenario &scenario) override;
};

} // namespace quillmender::applications
