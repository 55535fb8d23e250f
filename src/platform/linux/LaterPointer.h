#pragma once

#include <QObject>
#include <QPointer>

namespace quillmender {

/// Owns an object whose own signal may resume the code that drops it, and which its parent may
/// delete before.
template <typename Type> class LaterPointer {
  public:
    explicit LaterPointer(Type *object) : object_(object) {}
    LaterPointer(const LaterPointer &) = delete;
    LaterPointer &operator=(const LaterPointer &) = delete;
    ~LaterPointer() {
        if (!object_)
            return;
        object_->disconnect();
        object_->deleteLater();
    }

    Type *get() const { return object_; }
    Type *operator->() const { return object_; }

  private:
    QPointer<Type> object_;
};

} // namespace quillmender
