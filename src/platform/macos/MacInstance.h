#pragma once

#include "platform/Instance.h"

namespace quillmender {

/// The system starts an application bundle once for each user, and reaches it by itself.
class MacInstance : public Instance {
  public:
    InstanceClaim claim(std::function<void(const QString &action)>) override { return {}; }
};

} // namespace quillmender
