#pragma once

#include "fakes/CallLog.h"
#include "platform/KeyEvents.h"

#include <functional>

namespace quillmender::fakes {

class FakeKeyEvents : public KeyEvents {
  public:
    explicit FakeKeyEvents(CallLog log) : log_(std::move(log)) {}

    QCoro::Task<ChordReadiness> prepareChord(RunningApplicationRef, Chord chord,
                                             ChordContextRef context) override {
        contexts.append(context);
        log_->append(chord == Chord::copy ? QStringLiteral("prepareChord copy")
                                          : QStringLiteral("prepareChord paste"));
        co_return readiness;
    }
    KeyEventSourceRef createSource(qint32 state) override {
        log_->append(QStringLiteral("createSource %1").arg(state));
        return createsSource ? std::make_shared<KeyEventSource>() : nullptr;
    }
    KeyEventRef createKeyboardEvent(const KeyEventSourceRef &, quint16 keyCode,
                                    bool keyDown) override {
        log_->append(QStringLiteral("createEvent %1 %2")
                         .arg(keyCode)
                         .arg(keyDown ? QStringLiteral("down") : QStringLiteral("up")));
        if (keyDown ? !createsDown : !createsUp)
            return nullptr;
        auto event = std::make_shared<Event>();
        event->keyCode = keyCode;
        event->keyDown = keyDown;
        return event;
    }
    void setFlags(const KeyEventRef &event, quint64 flags) override {
        log_->append(QStringLiteral("setFlags %1 0x%2").arg(name(event)).arg(flags, 0, 16));
    }
    bool post(quint32 tap, const KeyEventRef &event) override {
        log_->append(QStringLiteral("post %1 tap %2").arg(name(event)).arg(tap));
        if (acceptsPosts && onPost)
            onPost(dynamic_cast<const Event &>(*event).keyCode);
        return acceptsPosts;
    }

    QList<ChordContextRef> contexts; ///< of the chords that were prepared
    ChordReadiness readiness = ChordReadiness::ready;
    bool createsSource = true;
    bool createsDown = true;
    bool createsUp = true;
    bool acceptsPosts = true;
    std::function<void(quint16 keyCode)> onPost;

  private:
    struct Event : KeyEvent {
        quint16 keyCode = 0;
        bool keyDown = false;
    };

    static QString name(const KeyEventRef &event) {
        const auto &own = dynamic_cast<const Event &>(*event);
        return QStringLiteral("%1 %2")
            .arg(own.keyCode)
            .arg(own.keyDown ? QStringLiteral("down") : QStringLiteral("up"));
    }

    CallLog log_;
};

} // namespace quillmender::fakes
