#pragma once

#include "platform/SecretItems.h"
#include "platform/linux/services/SerialWorker.h"

#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace quillmender {

/// Passwords in the desktop's Secret Service (org.freedesktop.secrets), found by the attributes
/// `service` and `account` alone. Every operation runs on one worker in the order in which it was
/// called, except that a deletion drops what still waits to be done to the same item: however slow
/// the service is, it never lags behind more than one change of each. The log has why something did
/// not work; a problem that goes on is told once.
class SecretServiceItems : public SecretItems {
  public:
    /// Destruction waits `lastWait` at most for what was accepted to be written.
    explicit SecretServiceItems(std::chrono::milliseconds lastWait = std::chrono::seconds(3));
    ~SecretServiceItems() override;

    QCoro::Task<SecretMatch> copyMatching(SecretAttributes query) override;
    qint32 add(const SecretAttributes &attributes) override;
    qint32 remove(const SecretAttributes &query) override;

  private:
    struct Cancellation;
    using Job = std::function<void(Cancellation &)>;

    void enqueue(Job job, const std::string &subject = {});

    std::chrono::milliseconds lastWait_;
    std::shared_ptr<Cancellation> cancellation_;
    SerialWorker worker_;
};

} // namespace quillmender
