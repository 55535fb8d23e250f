#include "platform/linux/wayland/clipboard/SelectionReader.h"

#include "platform/SignalWait.h"
#include "platform/linux/LaterPointer.h"
#include "platform/linux/wayland/clipboard/ClipboardText.h"
#include "platform/linux/wayland/clipboard/OfferReading.h"

#include <QLoggingCategory>

namespace quillmender::wayland {

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.wayland", QtWarningMsg)

constexpr int attempts = 3;

} // namespace

QList<QByteArray> SelectionReader::offeredTypes() const {
    const std::shared_ptr<DataOffer> offer = control_.offer(selection_);
    return offer ? offer->types() : QList<QByteArray>();
}

QCoro::Task<SelectionReader::Reading> SelectionReader::readAll(TransferBudget whole) {
    for (int i = 0; i < attempts; ++i) {
        Attempt attempt = co_await readOnce(offeredTypes(), whole.again(), bounds_);
        if (!attempt.isOwnerReplaced)
            co_return std::move(attempt.reading);
    }
    qCWarning(log, "a selection changed hands during each of %d reads", attempts);
    co_return Reading{{}, whole.untilLimit() <= std::chrono::milliseconds(0)};
}

QCoro::Task<SelectionReader::Attempt>
SelectionReader::readOnce(QList<QByteArray> types, TransferBudget budget, TransferBounds bounds) {
    if (types.isEmpty())
        co_return Attempt{};
    const LaterPointer<OfferReading> reading(
        new OfferReading(control_, selection_, budget, bounds));
    reading->request(types);
    co_await SignalWait(reading.get(), &OfferReading::settled);
    Attempt attempt{{reading->contents(), reading->isCutShort()}, reading->isOwnerReplaced()};
    const qsizetype read = attempt.reading.contents.size();
    if (read < types.size() && !attempt.isOwnerReplaced)
        qCInfo(log, "%lld of %lld types were not handed over", qlonglong{types.size() - read},
               qlonglong{types.size()});
    co_return attempt;
}

QCoro::Task<std::optional<QString>> SelectionReader::readText(std::chrono::milliseconds limit) {
    // To decode more would hold up the loop.
    constexpr qsizetype mostText = qsizetype{64} * 1024 * 1024;
    const TransferBounds bounds{mostText, mostText};
    const TransferBudget budget(limit);
    co_await control_.catchUp(limit);
    for (int i = 0; i < attempts; ++i) {
        Attempt attempt;
        const QList<QByteArray> texts = textTypes(offeredTypes());
        for (const QByteArray &type : texts) {
            const QList<QByteArray> types{type};
            attempt = co_await readOnce(types, budget.again(), bounds);
            std::optional<QString> text = findText(attempt.reading.contents);
            const bool isRefused = text && text->isEmpty();
            if (attempt.isOwnerReplaced || attempt.reading.isCutShort)
                break;
            if (text && !isRefused)
                co_return text;
        }
        if (!attempt.isOwnerReplaced)
            break;
    }
    co_return std::nullopt;
}

} // namespace quillmender::wayland
