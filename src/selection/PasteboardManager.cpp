#include "selection/PasteboardManager.h"

namespace quillmender {

PasteboardManager::PasteboardManager(Pasteboard &pasteboard, Chords &chords)
    : pasteboard_(pasteboard),
      chords_(chords) {}

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
    pasteboard_.replaceContents(snapshot.items);
}

QCoro::Task<ChordResult> PasteboardManager::postCommandKeystroke(Chord chord, ChordTarget into) {
    return chords_.type(chord, std::move(into));
}

} // namespace quillmender
