#include "TestCompositor.h"

#include <QFile>

#include <fcntl.h>
#include <future>
#include <unistd.h>
#include <wayland-server.h>

namespace quillmender {

namespace {

using Job = std::function<void()>;

int runJob(int descriptor, uint32_t, void *) {
    Job *job = nullptr;
    if (read(descriptor, &job, sizeof job) == sizeof job) {
        (*job)();
        delete job;
    }
    return 0;
}

void bindNothing(wl_client *client, void *data, uint32_t version, uint32_t id) {
    // Its requests are taken and lead to nothing.
    wl_resource *resource = wl_resource_create(client, static_cast<const wl_interface *>(data),
                                               static_cast<int>(version), id);
    const auto ignore = [](const void *, void *, uint32_t, const wl_message *,
                           wl_argument *) -> int { return 0; };
    wl_resource_set_dispatcher(resource, ignore, nullptr, nullptr, nullptr);
}

} // namespace

TestCompositor::TestCompositor()
    : socket_(QFile::encodeName(folder_.filePath(QStringLiteral("wayland-test")))),
      display_(wl_display_create()) {
    wl_display_add_socket(display_, socket_.constData());
    if (pipe2(jobs_, O_CLOEXEC) == 0)
        source_ = wl_event_loop_add_fd(wl_display_get_event_loop(display_), jobs_[0],
                                       WL_EVENT_READABLE, runJob, nullptr);
    goOn();
}

TestCompositor::~TestCompositor() {
    end();
    close(jobs_[0]);
    close(jobs_[1]);
}

void TestCompositor::run(const std::function<void(wl_display *)> &job) {
    std::promise<void> ran;
    Job *const posted = new Job([&] {
        job(display_);
        ran.set_value();
    });
    if (write(jobs_[1], &posted, sizeof posted) == sizeof posted)
        ran.get_future().wait();
    else
        delete posted;
}

wl_global *TestCompositor::add(const wl_interface &interface, int version) {
    wl_global *global = nullptr;
    run([&](wl_display *display) {
        global = wl_global_create(display, &interface, version,
                                  const_cast<wl_interface *>(&interface), bindNothing);
    });
    return global;
}

void TestCompositor::remove(wl_global *global) {
    run([&](wl_display *) { wl_global_destroy(global); });
}

void TestCompositor::stall() {
    run([](wl_display *display) { wl_display_terminate(display); });
    thread_.join();
}

void TestCompositor::goOn() {
    thread_ = std::thread([this] { wl_display_run(display_); });
}

void TestCompositor::end() {
    if (!display_)
        return;
    if (thread_.joinable())
        stall();
    wl_display_destroy_clients(display_);
    wl_event_source_remove(source_);
    wl_display_destroy(display_);
    display_ = nullptr;
}

} // namespace quillmender
