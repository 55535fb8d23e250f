#pragma once

#include "platform/HeldHotKey.h"

#include <QCoroTask>
#include <QString>

#include <functional>
#include <memory>

namespace quillmender {

/// What came of asking for a hot key: either it, or why there is none, in words for the log.
struct HotKeyOutcome {
    std::unique_ptr<HeldHotKey> hotKey;
    QString reason;
};

/// System-wide keyboard shortcuts. A modifier means the key of that name on every system, also
/// where the toolkit swaps two of them: Qt::ControlModifier is Control, Qt::AltModifier is Option
/// or Alt, Qt::MetaModifier is Command or Super.
class HotKeys {
  public:
    HotKeys() = default;
    HotKeys(const HotKeys &) = delete;
    HotKeys &operator=(const HotKeys &) = delete;
    virtual ~HotKeys() = default;

    /// `handler` runs on the main thread, in a turn of the event loop of its own, once for each
    /// press by the user and never for the repeats of a key that is held down. Keys that another
    /// program has give a hot key that holds none for now. Completes when the system has answered,
    /// which may take as long as a user takes to be asked.
    virtual QCoro::Task<HotKeyOutcome> hold(QKeyCombination keys,
                                            std::function<void()> handler) = 0;
};

} // namespace quillmender
