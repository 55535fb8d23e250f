#include "platform/linux/atspi/TextFlow.h"

#include "platform/linux/atspi/Decoding.h"

namespace quillmender::atspi {

namespace {

// Of the protocol's RelationType enumeration.
constexpr uint flowsTo = 10;
constexpr uint flowsFrom = 11;

// Nobody leaves more blank lines than that within one selection.
constexpr int mostEmptyParagraphs = 20;

} // namespace

QCoro::Task<bool> TextFlow::selectionGoesOn(ObjectRef paragraph, CallBudgetRef budget) {
    const bool isBefore = co_await selectionGoesOnTowards(flowsFrom, paragraph, budget);
    if (isBefore)
        co_return true;
    co_return co_await selectionGoesOnTowards(flowsTo, paragraph, budget);
}

QCoro::Task<bool> TextFlow::selectionGoesOnTowards(uint relation, ObjectRef paragraph,
                                                   CallBudgetRef budget) {
    for (int passed = 0; passed < mostEmptyParagraphs; ++passed) {
        paragraph = co_await neighbour(relation, paragraph, budget);
        if (paragraph.isNull())
            co_return false;
        const PendingCall lengthCall =
            bus_.property(budget, paragraph, protocol::text, "CharacterCount");
        const PendingCall countCall =
            bus_.call(budget, paragraph, protocol::text, "GetNSelections");
        const PendingCall selectionCall =
            bus_.call(budget, paragraph, protocol::text, "GetSelection", {0});
        const auto length = co_await lengthCall.answer();
        const auto count = co_await countCall.answer();
        const auto selection = co_await selectionCall.answer();
        if (intValue(length).value_or(-1) != 0) {
            co_return intValue(count).value_or(0) > 0 && selection &&
                selection->value(0).toInt() != selection->value(1).toInt();
        }
    }
    co_return false;
}

QCoro::Task<ObjectRef> TextFlow::neighbour(uint relation, ObjectRef paragraph,
                                           CallBudgetRef budget) {
    const PendingCall call = bus_.call(budget, paragraph, protocol::accessible, "GetRelationSet");
    const auto answer = co_await call.answer();
    co_return decodeRelation(firstValue(answer), relation);
}

} // namespace quillmender::atspi
