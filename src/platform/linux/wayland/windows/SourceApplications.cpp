#include "platform/linux/wayland/windows/SourceApplications.h"

#include <QDeadlineTimer>
#include <QPointer>

namespace quillmender::wayland {

namespace {
constexpr qsizetype mostKnown = 256;
} // namespace

SourceApplications::SourceApplications(Toplevels &toplevels, FindProcess findProcess)
    : toplevels_(toplevels),
      findProcess_(std::move(findProcess)) {}

std::shared_ptr<const WaylandRunningApplication> SourceApplications::frontmost() {
    const std::optional<Toplevel> active = toplevels_.active();
    if (!active)
        return nullptr;
    const std::shared_ptr<qint64> process = processOf(*active);
    const bool isWanted = *process == 0 && findProcess_ && searched_ != active->id &&
                          toplevels_.hasKeyboard(active->id);
    if (isWanted) {
        searched_ = active->id;
        search(this, *active);
    }
    return std::make_shared<WaylandRunningApplication>(*active, process);
}

std::shared_ptr<qint64> SourceApplications::processOf(const Toplevel &window) {
    const auto known = processes_.constFind(window.id);
    if (known != processes_.cend() && (window.processId == 0 || **known == window.processId))
        return *known;
    if (processes_.size() >= mostKnown)
        processes_.clear();
    const auto process = std::make_shared<qint64>(window.processId);
    processes_.insert(window.id, process);
    return process;
}

QCoro::Task<> SourceApplications::search(QPointer<SourceApplications> self, Toplevel window) {
    const std::shared_ptr<qint64> process = self->processOf(window);
    const QDeadlineTimer deadline(longestSearch);
    // It may be a coroutine, which lives in its function.
    const FindProcess find = self->findProcess_;
    const qint64 found = co_await find(window);
    if (!self)
        co_return;
    if (self->searched_ == window.id)
        self->searched_.clear();
    // Another window may have come to the front, and it may be its process.
    if (!deadline.hasExpired() && self->toplevels_.hasKeyboard(window.id) && *process == 0)
        *process = found;
}

} // namespace quillmender::wayland
