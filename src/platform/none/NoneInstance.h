#pragma once

#include "platform/Instance.h"

namespace quillmender {

/// Every copy runs by itself.
class NoneInstance : public Instance {
  public:
    InstanceClaim claim(std::function<void(const QString &action)>) override { return {}; }
};

} // namespace quillmender
