#include "platform/linux/x11/keys/X11Chords.h"

#include "platform/SignalWait.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/keys/ChordTyping.h"

#include <QPointer>
#include <QScopeGuard>

namespace quillmender::x11 {

namespace {

ChordResult withheld(const QString &reason) {
    return {ChordResult::Outcome::withheld, reason};
}

ChordResult unavailable(const QString &reason) {
    return {ChordResult::Outcome::unavailable, reason};
}

} // namespace

X11Chords::X11Chords(const ChordSurroundings &around)
    : around_(around),
      keys_(std::make_shared<ChordKeys>(around.connection, around.keymap)) {}

X11Chords::~X11Chords() {
    keys_->retire();
}

QCoro::Task<ChordResult> X11Chords::type(Chord chord, ChordTarget into) {
    const quint64 turn = ++asked_;
    turns_.append(turn);
    const auto next = qScopeGuard([self = QPointer(this), turn] {
        if (!self)
            return;
        self->turns_.removeOne(turn);
        Q_EMIT self->finished();
    });
    // A modifier that one chord holds would be let go, or be pressed, by another.
    while (turns_.constFirst() != turn)
        co_await SignalWait(this, &X11Chords::finished);

    const auto lost = QStringLiteral("the X server is gone");
    X11Connection &connection = around_.connection;
    if (connection.isLost())
        co_return unavailable(lost);
    if (!connection.hasTest())
        co_return unavailable(QStringLiteral("the X server takes no keys from programs"));
    auto application = std::dynamic_pointer_cast<const X11RunningApplication>(into.application);
    if (!application)
        co_return withheld(QStringLiteral("the application has no window"));
    ChordTyping typing(around_, keys_, chord, into, std::move(application));
    const Obstacle obstacle = co_await typing.run();
    if (!obstacle)
        co_return ChordResult{ChordResult::Outcome::typed};
    if (connection.isLost())
        co_return unavailable(lost);
    co_return withheld(*obstacle);
}

} // namespace quillmender::x11
