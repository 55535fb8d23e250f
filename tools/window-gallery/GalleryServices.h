#pragma once

#include "platform/none/NoneAccessibilityAccess.h"
#include "platform/none/NoneLoginItem.h"
#include "platform/none/NoneSecrets.h"
#include "platform/none/NoneUserDefaults.h"
#include "platform/none/NoneWorkspace.h"

namespace quillmender {

/// A keychain with the same made-up key for everybody; it keeps nothing.
class GallerySecrets : public NoneSecrets {
  public:
    QCoro::Task<SecretSearch> find(QString, QString) override {
        co_return SecretSearch{SecretOutcome::found, "sk-not-a-real-key-0123456789", {}};
    }
};

class GalleryLoginItem : public NoneLoginItem {
  public:
    LoginItemStatus status() override { return LoginItemStatus::enabled; }
};

} // namespace quillmender
