#pragma once

#include <QElapsedTimer>
#include <QSet>
#include <QString>

#include <chrono>
#include <memory>

namespace quillmender::atspi {

/// The time that one capture may spend waiting for other applications: 600 ms in all, 250 ms per
/// call, and up to five seconds more where large texts travel. An application that let one call run
/// out of time is not asked again. After a second without use everything is forgiven, so that a
/// write-back much later starts afresh.
class CallBudget {
  public:
    /// Counts time against the budget while it lives.
    class Use {
      public:
        explicit Use(std::shared_ptr<CallBudget> budget);
        Use(const Use &) = delete;
        Use &operator=(const Use &) = delete;
        ~Use();

      private:
        std::shared_ptr<CallBudget> budget_;
    };

    /// A call's, when nothing is allowed besides.
    static constexpr std::chrono::milliseconds perCall{250};

    /// How long the outcome of an order is awaited.
    static constexpr std::chrono::milliseconds orderPatience{5000};

    /// How long an application is awaited that is about to be pasted into.
    static constexpr std::chrono::milliseconds pastePatience{1000};

    /// The time that carrying `characters` may take besides: several times what the slowest
    /// toolkit needs on an idle machine, nothing for everyday texts. Four seconds at most: nobody
    /// waits longer because an application says that it has a very long text.
    static std::chrono::milliseconds transferAllowance(qint64 characters);

    /// How long the next call may take; zero when the budget is spent. The allowance lengthens
    /// the budget too: it was earned by an application that answered. Later calls may take as long,
    /// since an application that arranges a large text is slow to answer anything.
    std::chrono::milliseconds nextCall(std::chrono::milliseconds allowance = {});

    /// A write has as much time of its own.
    void renew();

    /// From now on an application that stalls is worth waiting for, because of what it was told or
    /// is about to be told: each call may take `patience`, all together twice as long. Until the
    /// budget is renewed.
    void beginWait(std::chrono::milliseconds patience);

    void forgive(const QString &service) { silent_.remove(service); }
    void noteSilence(const QString &service) { silent_.insert(service); }
    bool isSilent(const QString &service) const { return silent_.contains(service); }

  private:
    qint64 spentMs() const;

    qint64 spentMs_ = 0;
    qint64 limitMs_ = wholeMs;
    qint64 perCallMs_ = perCall.count();
    qint64 earnedMs_ = 0;
    qint64 grantedMs_ = 0; ///< of what large texts may add to the limit
    int users_ = 0;
    QElapsedTimer since_;
    QSet<QString> silent_;

    void reset(qint64 limitMs, qint64 perCallMs);

    static constexpr qint64 wholeMs = 600;
    static constexpr qint64 mostGrantedMs = 5000;
};

using CallBudgetRef = std::shared_ptr<CallBudget>;

} // namespace quillmender::atspi
