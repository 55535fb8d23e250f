#pragma once

#include <QObject>

namespace quillmender {

/// An object whose published properties announce each change before it happens, so that views
/// redraw once the current turn of the event loop is over.
class Observable : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

  Q_SIGNALS:
    void objectWillChange();

  protected:
    /// Publishes `value`, also when it equals the old one.
    template <typename T, typename U> void publish(T &property, U &&value) {
        Q_EMIT objectWillChange();
        property = std::forward<U>(value);
    }
};

} // namespace quillmender
