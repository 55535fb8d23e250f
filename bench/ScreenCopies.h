#pragma once

#include "bench/PaintWatch.h"
#include "desktop/harness/wayland/WaylandClient.h"

#include <QImage>
#include <QList>

struct wl_buffer;
struct wl_output;
struct wl_shm;
struct zwlr_screencopy_frame_v1;
struct zwlr_screencopy_manager_v1;

namespace quillmender::bench {

/// Has the compositor copy its picture of the screen each time that something is drawn in it
/// (wlr-screencopy), with the moment at which it was done. A window counts as painted with the
/// first picture that shows it, in the middle of the screen, as it looks once everything is still.
class ScreenCopies : public PaintWatch {
  public:
    explicit ScreenCopies(const QString &socketPath);
    ~ScreenCopies() override;

    void start() override;
    TimePoint waitForPaint(QSize window) override;
    void waitUntilStill(std::chrono::milliseconds quiet) override;

  private:
    struct Events;
    struct Copy {
        TimePoint at;
        QImage picture;
    };

    void askForNext();
    void provideBuffer(quint32 format, QSize size, quint32 stride);
    void take(TimePoint at);
    /// Whether something was drawn before the deadline.
    bool waitForCopy(std::chrono::milliseconds deadline);

    harness::WaylandClient client_;
    harness::Held<wl_shm> shm_;
    harness::Held<wl_output> output_;
    harness::Held<zwlr_screencopy_manager_v1> manager_;
    harness::Held<zwlr_screencopy_frame_v1> frame_;
    harness::Held<wl_buffer> buffer_;
    uchar *pixels_ = nullptr; ///< shared with the compositor
    QImage shared_;           ///< over them
    QImage before_;           ///< how the screen looked at the start
    QList<Copy> copies_;      ///< since then
    bool hasFailed_ = false;
};

} // namespace quillmender::bench
