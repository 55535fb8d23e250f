#pragma once

#include "platform/linux/wayland/kwin/KwinProxies.h"

#include <QObject>
#include <QString>

#include <array>

namespace quillmender::wayland {
class WaylandConnection;
}

namespace quillmender::kwin {

/// Which modifiers are down, latched or locked, from the moment on that they have all been told.
class ModifierStates : public QObject {
    Q_OBJECT

  public:
    explicit ModifierStates(wayland::WaylandConnection &connection);

    /// Whether the compositor has told about each modifier.
    bool isComplete() const;

    /// Those that would mix with what is typed, by their names; empty when there is none.
    QString held() const;

  Q_SIGNALS:
    void changed();

  private:
    struct Events;
    enum class State { unknown, up, held };

    void note(quint32 key, quint32 state);

    /// By the numbers of the protocol; the locks are among them and never looked at.
    std::array<State, 8> states_{};
    wayland::Proxy<org_kde_kwin_keystate> keystate_;
};

} // namespace quillmender::kwin
