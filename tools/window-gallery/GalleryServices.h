#pragma once

#include "platform/none/NoneAccessibilityAccess.h"
#include "platform/none/NoneLoginItem.h"
#include "platform/none/NoneSecretItems.h"
#include "platform/none/NoneUserDefaults.h"
#include "platform/none/NoneWorkspace.h"

namespace quillmender {

/// A keychain with the same made-up key for everybody; it keeps nothing.
class GallerySecretItems : public NoneSecretItems {
  public:
    QCoro::Task<SecretMatch> copyMatching(SecretAttributes) override {
        co_return SecretMatch{secret::success, QByteArray("sk-not-a-real-key-0123456789")};
    }
};

class GalleryLoginItem : public NoneLoginItem {
  public:
    LoginItemStatus status() override { return LoginItemStatus::enabled; }
};

} // namespace quillmender
