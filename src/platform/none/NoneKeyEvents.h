#pragma once

#include "platform/KeyEvents.h"

namespace quillmender {

/// No synthetic input: no source of events can be made.
class NoneKeyEvents : public KeyEvents {
  public:
    QCoro::Task<ChordReadiness> prepareChord(RunningApplicationRef target, Chord chord,
                                             ChordContextRef context) override;
    KeyEventSourceRef createSource(qint32) override { return nullptr; }
    KeyEventRef createKeyboardEvent(const KeyEventSourceRef &, quint16, bool) override {
        return nullptr;
    }
    void setFlags(const KeyEventRef &, quint64) override {}
    bool post(quint32, const KeyEventRef &) override { return false; }
};

} // namespace quillmender
