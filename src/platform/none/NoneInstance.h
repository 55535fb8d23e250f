#pragma once

#include "platform/Instance.h"

namespace quillmender {

/// Every copy runs by itself.
class NoneInstance : public Instance {
  public:
    bool claim(std::function<void(const QString &action)>) override { return true; }
};

} // namespace quillmender
