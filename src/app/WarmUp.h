#pragma once

#include <QTimer>

#include <chrono>
#include <functional>

namespace quillmender {

/// Does, in quiet moments after the start, what the first session would otherwise wait for. One
/// short piece at a time, so that a hot key in between is answered as ever, and no piece while
/// something goes on. Main thread only.
class WarmUp : public QObject {
  public:
    /// Does one piece, of a few milliseconds. False when nothing is left.
    using Piece = std::function<bool()>;

    struct Pace {
        std::chrono::milliseconds afterStart{1500};
        std::chrono::milliseconds between{20};
        std::chrono::milliseconds whenBusy{2000};
    };

    WarmUp(std::function<bool()> isQuiet, Piece piece, Pace pace);

    void start();

    /// No piece is done any more.
    void stop();

  private:
    void goOn();

    std::function<bool()> isQuiet_;
    Piece piece_;
    Pace pace_;
    bool isStopped_ = false;
    QTimer timer_;
};

} // namespace quillmender
