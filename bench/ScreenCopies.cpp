#include "bench/ScreenCopies.h"

#include "desktop/harness/HarnessError.h"
#include "wlr-screencopy-unstable-v1-client-protocol.h"

#include <algorithm>
#include <poll.h>
#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client-protocol.h>

namespace quillmender::bench {

using harness::HarnessError;
using std::chrono::steady_clock;

namespace {

// The part of the pixels in the middle that differ.
double difference(const QImage &a, const QImage &b, QSize area) {
    if (a.size() != b.size())
        return 1;
    QRect middle(QPoint(), area);
    middle.moveCenter(a.rect().center());
    middle &= a.rect();
    qint64 different = 0;
    for (int y = middle.top(); y <= middle.bottom(); ++y) {
        const auto *lineOfA = reinterpret_cast<const QRgb *>(a.constScanLine(y));
        const auto *lineOfB = reinterpret_cast<const QRgb *>(b.constScanLine(y));
        for (int x = middle.left(); x <= middle.right(); ++x)
            different += (lineOfA[x] & RGB_MASK) != (lineOfB[x] & RGB_MASK);
    }
    return double(different) / (double(middle.width()) * middle.height());
}

} // namespace

struct ScreenCopies::Events {
    static ScreenCopies &of(void *self) { return *static_cast<ScreenCopies *>(self); }

    static void buffer(void *self, zwlr_screencopy_frame_v1 *, uint32_t format, uint32_t width,
                       uint32_t height, uint32_t stride) {
        of(self).provideBuffer(format, QSize(int(width), int(height)), stride);
    }
    static void flags(void *, zwlr_screencopy_frame_v1 *, uint32_t) {}
    static void ready(void *self, zwlr_screencopy_frame_v1 *, uint32_t high, uint32_t low,
                      uint32_t nanoseconds) {
        const auto seconds = static_cast<qint64>((quint64{high} << 32U) | low);
        of(self).take(
            TimePoint(std::chrono::seconds(seconds) + std::chrono::nanoseconds(nanoseconds)));
    }
    static void failed(void *self, zwlr_screencopy_frame_v1 *) { of(self).hasFailed_ = true; }
    static void damage(void *, zwlr_screencopy_frame_v1 *, uint32_t, uint32_t, uint32_t, uint32_t) {
    }
    static constexpr zwlr_screencopy_frame_v1_listener frame{buffer, flags, ready, failed, damage};
};

ScreenCopies::ScreenCopies(const QString &socketPath)
    : client_(socketPath),
      shm_(client_.bind<wl_shm>(wl_shm_interface, 1)),
      output_(client_.bind<wl_output>(wl_output_interface, 1)),
      manager_(client_.bind<zwlr_screencopy_manager_v1>(zwlr_screencopy_manager_v1_interface, 2)) {
    askForNext();
}

ScreenCopies::~ScreenCopies() {
    if (pixels_)
        ::munmap(pixels_, size_t(shared_.sizeInBytes()));
}

void ScreenCopies::start() {
    while (waitForCopy(std::chrono::milliseconds(0))) {
    }
    // The first one is given whatever was drawn.
    const bool isFirst = copies_.isEmpty() && before_.isNull();
    if (isFirst && !waitForCopy(harness::defaultDeadline))
        throw HarnessError(QStringLiteral("the compositor copies no picture of its screen"));
    if (!copies_.isEmpty())
        before_ = copies_.last().picture;
    copies_.clear();
}

TimePoint ScreenCopies::waitForPaint(QSize window) {
    // What is behind the window may look like part of it.
    constexpr double muchOfIt = 0.25;
    // A caret blinks.
    constexpr double littleOfIt = 0.01;
    constexpr std::chrono::milliseconds quiet(150);
    const auto deadline = steady_clock::now() + harness::defaultDeadline;
    const auto isThere = [&] {
        return !copies_.isEmpty() &&
               difference(copies_.last().picture, before_, window) >= muchOfIt;
    };
    while (steady_clock::now() < deadline) {
        if (waitForCopy(quiet) || !isThere())
            continue;
        const QImage last = copies_.last().picture;
        const auto first = std::ranges::find_if(copies_, [&](const Copy &copy) {
            return difference(copy.picture, last, window) <= littleOfIt;
        });
        return first->at;
    }
    throw HarnessError(QStringLiteral("no window was painted"));
}

void ScreenCopies::waitUntilStill(std::chrono::milliseconds quiet) {
    while (waitForCopy(quiet))
        copies_.remove(0, copies_.size() - 1);
}

void ScreenCopies::askForNext() {
    frame_.reset(zwlr_screencopy_manager_v1_capture_output(manager_.get(), 0, output_.get()));
    zwlr_screencopy_frame_v1_add_listener(frame_.get(), &Events::frame, this);
    wl_display_flush(client_.display());
}

void ScreenCopies::provideBuffer(quint32 format, QSize size, quint32 stride) {
    if (!buffer_) {
        const size_t bytes = size_t(stride) * size_t(size.height());
        const int file = ::memfd_create("screen", MFD_CLOEXEC);
        void *memory = MAP_FAILED;
        if (file >= 0 && ::ftruncate(file, off_t(bytes)) == 0)
            memory = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        if (memory == MAP_FAILED) {
            hasFailed_ = true; // the library that calls this knows no exceptions
            return;
        }
        pixels_ = static_cast<uchar *>(memory);
        shared_ =
            QImage(pixels_, size.width(), size.height(), qsizetype(stride), QImage::Format_RGB32);
        wl_shm_pool *const pool = wl_shm_create_pool(shm_.get(), file, int(bytes));
        buffer_.reset(
            wl_shm_pool_create_buffer(pool, 0, size.width(), size.height(), int(stride), format));
        wl_shm_pool_destroy(pool);
        ::close(file);
    }
    zwlr_screencopy_frame_v1_copy_with_damage(frame_.get(), buffer_.get());
}

void ScreenCopies::take(TimePoint at) {
    copies_.append({at, shared_.copy()});
    zwlr_screencopy_frame_v1_destroy(frame_.release());
    askForNext();
}

bool ScreenCopies::waitForCopy(std::chrono::milliseconds deadline) {
    const qsizetype before = copies_.size();
    const auto end = steady_clock::now() + deadline;
    do {
        wl_display_flush(client_.display());
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end - steady_clock::now()).count();
        pollfd source{wl_display_get_fd(client_.display()), POLLIN, 0};
        ::poll(&source, 1, std::max(0, int(left)));
        if (!client_.dispatch() || hasFailed_)
            throw HarnessError(QStringLiteral("the compositor copies no picture of its screen"));
    } while (copies_.size() == before && steady_clock::now() < end);
    return copies_.size() != before;
}

} // namespace quillmender::bench
