#include "platform/linux/wayland/clipboard/LateCopy.h"

#include "platform/linux/wayland/clipboard/OwnerQuestion.h"
#include "platform/linux/wayland/keys/CopyWatch.h"

#include <QLoggingCategory>

#include <utility>

namespace quillmender::wayland {

namespace {
Q_LOGGING_CATEGORY(log, "quillmender.wayland", QtWarningMsg)
} // namespace

LateCopy::LateCopy(DataControl &control, const CopyWatch &watch)
    : control_(control),
      watch_(watch) {
    connect(&watch_, &CopyWatch::started, this, [this] {
        forget();
        isToCome_ = true;
    });
    connect(&watch_, &CopyWatch::settled, this, [this] {
        // Of one that has just come the owner is still being asked.
        if (!question_ && !isToExamine_)
            forget();
    });
}

void LateCopy::expect(const QList<PasteboardItem> &restored) {
    if (!isToCome_ || watch_.pending() == 0)
        return;
    process_ = watch_.pending();
    restored_ = restored;
}

void LateCopy::forget() {
    isToCome_ = false;
    isToExamine_ = false;
    ++turn_;
    restored_.reset();
    if (question_)
        question_->disconnect(this);
    question_ = nullptr;
}

void LateCopy::noteChange() {
    // It has come in time, or somebody has copied after it.
    if (!restored_ || question_)
        return forget();
    if (std::exchange(isToExamine_, true))
        return;
    // That a source of ours is no more the clipboard is told before what has taken its place.
    control_.afterRoundTrip(this, [this, turn = turn_] {
        if (turn == turn_)
            examine();
    });
}

void LateCopy::examine() {
    isToExamine_ = false;
    const std::shared_ptr<DataOffer> copied = control_.offer(Selection::clipboard);
    if (copied) {
        question_ = new OwnerQuestion(control_, *copied);
        connect(question_, &OwnerQuestion::answered, this, &LateCopy::judge);
    } else if (watch_.pending() == 0) {
        // Some give up what they had before they offer something.
        forget();
    }
}

void LateCopy::judge(qint64 owner) {
    const auto restored = std::exchange(restored_, std::nullopt);
    forget();
    if (!restored || owner != process_)
        return;
    qCInfo(log, "process %lld copied too late", qlonglong{owner});
    Q_EMIT came(*restored);
}

} // namespace quillmender::wayland
