#pragma once

#include <QKeyCombination>
#include <QObject>

#include <functional>
#include <optional>

namespace quillmender {

/// A system-wide keyboard shortcut for as long as the object lives; its end lets go. It can be lost
/// to another program and come back. Main thread only, and never longer than the service that made
/// it.
class HeldHotKey : public QObject {
    Q_OBJECT

  public:
    /// The keys that are held at the moment: others than were asked for where the user has chosen
    /// others, nothing while somebody else has them.
    virtual std::optional<QKeyCombination> keys() const = 0;

  Q_SIGNALS:
    /// `keys()` answers something else now.
    void keysChanged();

  protected:
    explicit HeldHotKey(std::function<void()> handler);

    /// For each press: runs the handler on the main thread in a turn of the event loop of its own,
    /// unless the hot key has ended by then. To be called on any thread.
    void press();

  private:
    void invoke();

    std::function<void()> handler_;
};

} // namespace quillmender
