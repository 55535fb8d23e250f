#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace quillmender {

/// Sees every call on a message bus as it passes.
class CallWatch {
  public:
    /// The destination of the call and its member; "Get:NAME" for a property. Called on a thread
    /// of its own.
    using Observer = std::function<void(const QString &destination, const QString &member)>;

    /// Throws HarnessError when the bus does not allow it.
    CallWatch(const QString &busAddress, Observer observer);
    CallWatch(const CallWatch &) = delete;
    CallWatch &operator=(const CallWatch &) = delete;
    ~CallWatch();

  private:
    struct Connection;
    std::unique_ptr<Connection> connection_;
};

} // namespace quillmender
