#pragma once

#include "fakes/CallLog.h"
#include "platform/OwnWindows.h"

#include <QPointer>
#include <QWindow>

namespace quillmender::fakes {

/// Hides a window as a window system does that gives the focus back only then.
class FakeSteppedAside : public SteppedAside {
  public:
    explicit FakeSteppedAside(QWindow *window) : window_(window) { window_->hide(); }
    ~FakeSteppedAside() override {
        if (window_)
            window_->show();
    }
    void stayAway() override { window_.clear(); }

  private:
    QPointer<QWindow> window_;
};

/// Records what is asked for each window.
class FakeOwnWindows : public OwnWindows {
  public:
    explicit FakeOwnWindows(CallLog log = makeCallLog()) : log_(std::move(log)) {}

    struct Call {
        QString name;
        const QWindow *window = nullptr;

        friend bool operator==(const Call &, const Call &) = default;
    };

    void setAccessoryPolicy() override { log_->append(QStringLiteral("setAccessoryPolicy")); }
    void applyPanelAttributes(QWindow *window) override { record("applyPanelAttributes", window); }
    void applyWindowAttributes(QWindow *window) override {
        record("applyWindowAttributes", window);
    }
    void flush() override {
        if (whenFlushed)
            whenFlushed();
    }
    void activate(QWindow *window) override { record("activate", window); }
    void watchForKeyboard(std::function<void(QWindow *, bool)> tell) override {
        tellOfKeyboard = std::move(tell);
    }
    void provideMemory(void *, std::size_t bytes) override { memoryProvided += bytes; }
    int coveredHeight(QWindow *) override { return covered; }
    bool framesPanel() override { return frames; }
    QScreen *screenInUse() override { return screen; }
    std::unique_ptr<SteppedAside> stepAside(QWindow *window) override {
        if (!needsSteppingAside)
            return nullptr;
        record("stepAside", window);
        return std::make_unique<FakeSteppedAside>(window);
    }

    QSet<quint32> keysDownAtFocus(QWindow *) override { return keysDown; }
    bool isKeyDown(quint32 code) override { return keysDownNow.contains(code); }

    QList<Call> calls;
    QSet<quint32> keysDown;
    QSet<quint32> keysDownNow;
    std::function<void(QWindow *, bool)> tellOfKeyboard;
    std::function<void()> whenFlushed;
    bool needsSteppingAside = false;
    std::size_t memoryProvided = 0; ///< bytes
    int covered = 0;
    bool frames = true;
    QScreen *screen = nullptr;

  private:
    void record(const char *name, const QWindow *window) {
        calls.append({QString::fromLatin1(name), window});
    }

    CallLog log_;
};

} // namespace quillmender::fakes
