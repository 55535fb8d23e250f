#pragma once

#include <QPointer>

#include <functional>
#include <utility>

namespace quillmender {

/// Something that is held for as long as this lives, and given back at its end. Nothing is given
/// back to somebody who has gone.
class [[nodiscard]] Lease {
  public:
    /// Holds nothing.
    Lease() = default;
    Lease(QObject *lender, std::function<void()> giveBack)
        : lender_(lender),
          giveBack_(std::move(giveBack)) {}
    Lease(Lease &&other) noexcept
        : lender_(std::exchange(other.lender_, nullptr)),
          giveBack_(std::exchange(other.giveBack_, nullptr)) {}
    Lease &operator=(Lease &&other) noexcept {
        Lease(std::move(other)).swap(*this);
        return *this;
    }
    Lease(const Lease &) = delete;
    Lease &operator=(const Lease &) = delete;
    ~Lease() {
        if (lender_ && giveBack_)
            giveBack_();
    }

  private:
    void swap(Lease &other) noexcept {
        lender_.swap(other.lender_);
        giveBack_.swap(other.giveBack_);
    }

    QPointer<QObject> lender_;
    std::function<void()> giveBack_;
};

} // namespace quillmender
