#pragma once

#include <QByteArray>
#include <QTemporaryDir>

#include <functional>
#include <thread>

struct wl_display;
struct wl_event_source;
struct wl_global;
struct wl_interface;

namespace quillmender {

/// A compositor without anything in it, on a thread of its own. It ends with the object.
class TestCompositor {
  public:
    TestCompositor();
    TestCompositor(const TestCompositor &) = delete;
    TestCompositor &operator=(const TestCompositor &) = delete;
    ~TestCompositor();

    /// What clients connect to: the path of its socket.
    QByteArray name() const { return socket_; }

    /// Runs there; completes when it has run.
    void run(const std::function<void(wl_display *)> &job);

    /// A global that can be bound, with objects that do nothing.
    wl_global *add(const wl_interface &interface, int version);
    void remove(wl_global *global);

    /// It answers nothing any more, until it goes on, or the end.
    void stall();
    void goOn();
    /// All clients lose it.
    void end();

  private:
    QTemporaryDir folder_;
    QByteArray socket_;
    wl_display *display_;
    int jobs_[2] = {-1, -1};
    wl_event_source *source_ = nullptr;
    std::thread thread_;
};

} // namespace quillmender
