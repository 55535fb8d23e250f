#include "selection/PasteboardManager.h"

namespace quillmender {

PasteboardManager::PasteboardManager(Pasteboard &pasteboard, KeyEvents &keyEvents)
    : pasteboard_(pasteboard),
      keyEvents_(keyEvents) {}

QCoro::Task<PasteboardSnapshot> PasteboardManager::snapshot() {
    PasteboardSnapshot snapshot;
    snapshot.items = co_await pasteboard_.items();
    snapshot.changeCount = pasteboard_.changeCount();
    co_return snapshot;
}

QCoro::Task<PasteboardSnapshot> PasteboardManager::snapshotWithin(std::chrono::milliseconds limit) {
    PasteboardSnapshot snapshot;
    const std::optional<QList<PasteboardItem>> items = co_await pasteboard_.itemsWithin(limit);
    snapshot.isComplete = items.has_value();
    snapshot.items = items.value_or(QList<PasteboardItem>());
    snapshot.changeCount = pasteboard_.changeCount();
    co_return snapshot;
}

void PasteboardManager::restore(const PasteboardSnapshot &snapshot) {
    pasteboard_.clearContents();
    if (!snapshot.items.isEmpty())
        pasteboard_.writeItems(snapshot.items);
}

QCoro::Task<KeystrokeResult> PasteboardManager::postCommandKeystroke(RunningApplicationRef target,
                                                                     quint16 keyCode,
                                                                     ChordContextRef context) {
    const Chord chord = keyCode == keycode::c ? Chord::copy : Chord::paste;
    const ChordReadiness readiness =
        co_await keyEvents_.prepareChord(std::move(target), chord, std::move(context));
    if (readiness == ChordReadiness::withheld)
        co_return KeystrokeResult::withheld;

    const KeyEventSourceRef source = keyEvents_.createSource(combinedSessionState);
    if (!source)
        co_return KeystrokeResult::failed;
    const KeyEventRef down = keyEvents_.createKeyboardEvent(source, keyCode, true);
    const KeyEventRef up = keyEvents_.createKeyboardEvent(source, keyCode, false);
    if (!down || !up)
        co_return KeystrokeResult::failed;

    keyEvents_.setFlags(down, commandFlag);
    keyEvents_.setFlags(up, commandFlag);
    if (!keyEvents_.post(hidEventTap, down))
        co_return KeystrokeResult::withheld;
    keyEvents_.post(hidEventTap, up);
    co_return KeystrokeResult::posted;
}

} // namespace quillmender
