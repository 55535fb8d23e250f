#pragma once

#include "platform/linux/wayland/WaylandConnection.h"

#include <QPoint>
#include <QSize>

#include <memory>
#include <string_view>

namespace quillmender::test {

/// Somebody at a keyboard with the layout `us` and at a mouse, for as long as it lives. A seat has
/// no keyboard, and gives nobody the focus, before there is such a person.
class TestUser {
  public:
    /// `desktop` is the size of all outputs together. Throws HarnessError when the compositor has
    /// no virtual devices.
    TestUser(const QByteArray &display, QSize desktop);
    TestUser(const TestUser &) = delete;
    TestUser &operator=(const TestUser &) = delete;
    ~TestUser();

    /// Small letters and blanks, one after the other, as fast as the compositor takes them.
    void type(std::string_view text);

    void press(char letter);
    void release(char letter);
    void click(QPoint where);

  private:
    struct Devices;

    void key(char letter, bool isDown);
    void settle();

    std::unique_ptr<wayland::WaylandConnection> connection_;
    std::unique_ptr<Devices> devices_;
    QSize desktop_;
};

/// The code that the toolkit gives the key of that letter.
quint32 toolkitCodeOf(char letter);

} // namespace quillmender::test
