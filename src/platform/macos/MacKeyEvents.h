#pragma once

#include "platform/KeyEvents.h"

namespace quillmender {

/// Quartz events. Each carries its own flags, so that what the user still holds does not matter.
class MacKeyEvents : public KeyEvents {
  public:
    QCoro::Task<ChordReadiness> prepareChord(RunningApplicationRef target, Chord chord,
                                             ChordContextRef context) override;
    KeyEventSourceRef createSource(qint32 state) override;
    KeyEventRef createKeyboardEvent(const KeyEventSourceRef &source, quint16 keyCode,
                                    bool keyDown) override;
    void setFlags(const KeyEventRef &event, quint64 flags) override;
    bool post(quint32 tap, const KeyEventRef &event) override;
};

} // namespace quillmender
