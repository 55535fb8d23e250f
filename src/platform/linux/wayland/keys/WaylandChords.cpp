#include "platform/linux/wayland/keys/WaylandChords.h"

#include "platform/SignalWait.h"
#include "platform/linux/wayland/windows/WaylandRunningApplication.h"

#include <QPointer>
#include <QScopeGuard>

namespace quillmender::wayland {

QCoro::Task<ChordResult> WaylandChords::type(Chord chord, ChordTarget into) {
    const quint64 turn = ++asked_;
    turns_.append(turn);
    const auto next = qScopeGuard([self = QPointer(this), turn] {
        if (!self)
            return;
        self->turns_.removeOne(turn);
        Q_EMIT self->finished();
    });
    while (turns_.constFirst() != turn)
        co_await SignalWait(this, &WaylandChords::finished);

    auto application = std::dynamic_pointer_cast<const WaylandRunningApplication>(into.application);
    if (!application)
        co_return ChordResult{ChordResult::Outcome::withheld,
                              QStringLiteral("the application has no window")};
    WaylandChordTyping typing(around_, this, chord, std::move(into), std::move(application));
    co_return co_await typing.run();
}

} // namespace quillmender::wayland
