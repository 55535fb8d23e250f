#pragma once

#include <QObject>

#include <memory>

namespace quillmender {

struct DeleteLater {
    void operator()(QObject *object) const {
        object->disconnect();
        object->deleteLater();
    }
};

/// An object whose own signal may resume the code that drops it.
template <typename Type> using LaterPointer = std::unique_ptr<Type, DeleteLater>;

} // namespace quillmender
