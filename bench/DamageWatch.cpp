#include "bench/DamageWatch.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

#include <QRegion>

#include <numeric>
#include <poll.h>

namespace quillmender::bench {

namespace {

using std::chrono::steady_clock;

int areaOf(const QRegion &region) {
    return std::accumulate(region.begin(), region.end(), 0, [](int sum, const QRect &part) {
        return sum + part.width() * part.height();
    });
}

} // namespace

DamageWatch::DamageWatch(const QString &display) : connection_(display) {
    xcb_connection_t *connection = connection_.get();
    const xcb_query_extension_reply_t *extension =
        xcb_get_extension_data(connection, &xcb_damage_id);
    if (!extension || !extension->present)
        throw harness::HarnessError(QStringLiteral("the X server has no DAMAGE extension"));
    damageNotify_ = extension->first_event + XCB_DAMAGE_NOTIFY;
    const harness::XcbPointer<xcb_damage_query_version_reply_t> version(
        xcb_damage_query_version_reply(connection, xcb_damage_query_version(connection, 1, 1),
                                       nullptr));
    xcb_damage_create(connection, xcb_generate_id(connection), connection_.root(),
                      XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    connection_.roundTrip();
}

void DamageWatch::start() {
    connection_.roundTrip();
    while (harness::XcbPointer<xcb_generic_event_t>(xcb_poll_for_event(connection_.get()))) {
    }
}

TimePoint DamageWatch::waitForPaint(QSize atLeast) {
    const int wanted = atLeast.width() * atLeast.height();
    QRegion painted;
    const auto deadline = steady_clock::now() + harness::defaultDeadline;
    while (steady_clock::now() < deadline) {
        const auto event = nextEvent(std::chrono::milliseconds(100));
        if (!event || (event->response_type & 0x7f) != damageNotify_)
            continue;
        const auto *damage = reinterpret_cast<const xcb_damage_notify_event_t *>(event.get());
        painted += QRect(damage->area.x, damage->area.y, damage->area.width, damage->area.height);
        if (areaOf(painted) >= wanted)
            return steady_clock::now();
    }
    throw harness::HarnessError(QStringLiteral("no window was painted"));
}

void DamageWatch::waitUntilStill(std::chrono::milliseconds quiet) {
    while (nextEvent(quiet)) {
    }
}

harness::XcbPointer<xcb_generic_event_t>
DamageWatch::nextEvent(std::chrono::milliseconds deadline) {
    xcb_connection_t *connection = connection_.get();
    harness::XcbPointer<xcb_generic_event_t> event(xcb_poll_for_event(connection));
    if (!event) {
        pollfd descriptor{xcb_get_file_descriptor(connection), POLLIN, 0};
        ::poll(&descriptor, 1, static_cast<int>(deadline.count()));
        event.reset(xcb_poll_for_event(connection));
    }
    return event;
}

} // namespace quillmender::bench
