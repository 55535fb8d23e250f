#pragma once

#include "platform/linux/wayland/Toplevels.h"

namespace quillmender::wayland {

/// Windows as a test has them.
class FakeToplevels : public Toplevels {
  public:
    std::optional<Toplevel> active() const override { return front; }
    bool hasKeyboard(const QByteArray &id) const override {
        return isWithWindows && front && front->id == id;
    }
    bool activate(const QByteArray &id) override {
        activated.append(id);
        return true;
    }

    void show(const Toplevel &toplevel) {
        front = toplevel;
        Q_EMIT changed();
    }

    std::optional<Toplevel> front;
    bool isWithWindows = true;
    QByteArrayList activated;
};

} // namespace quillmender::wayland
