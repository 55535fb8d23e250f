#include "platform/linux/atspi/TextSelector.h"

#include <QCoroTimer>
#include <QDeadlineTimer>

namespace quillmender::atspi {

namespace {
constexpr std::chrono::milliseconds betweenLooks(15);
} // namespace

QCoro::Task<bool> TextSelector::shows(TextElementRef element, OffsetPair offsets) {
    const TextReader::Selection found = co_await reader_.trueSelection(element);
    co_return found.kind != TextReader::Selection::Kind::unreadable &&found.offsets == offsets;
}

QCoro::Task<PasteTarget> TextSelector::select(TextElementRef element, DecodedText text,
                                              TextRange range, std::chrono::milliseconds patience) {
    if (!text.unit)
        co_return PasteTarget::unknown;
    const auto start = fromUtf16(text.text, range.location, *text.unit);
    const auto end = fromUtf16(text.text, range.location + range.length, *text.unit);
    if (!start || !end || *end < *start)
        co_return PasteTarget::gone;

    const OffsetPair offsets{*start, *end};
    const bool alreadyThere = co_await shows(element, offsets);
    if (alreadyThere)
        co_return PasteTarget::selected;

    const ObjectRef &object = element->traits.object;
    const PendingCall countCall =
        bus_.call(element->budget, object, protocol::text, "GetNSelections");
    const auto count = co_await countCall.answer();
    const bool wantsAdding =
        element->toolkit == Toolkit::gtk || element->toolkit == Toolkit::unknown;
    // Sent without waiting for an answer: GTK 4 obeys and never replies. What counts is what can
    // be read afterwards.
    if (range.length == 0)
        bus_.post(object, protocol::text, "SetCaretOffset", {int(*start)});
    else if (intValue(count).value_or(0) == 0 && wantsAdding)
        bus_.post(object, protocol::text, "AddSelection", {int(*start), int(*end)});
    else
        bus_.post(object, protocol::text, "SetSelection", {0, int(*start), int(*end)});
    const QDeadlineTimer deadline(patience);
    TextReader::Selection found = co_await reader_.trueSelection(element);
    while (found.offsets != offsets && !deadline.hasExpired()) {
        co_await QCoro::sleepFor(betweenLooks);
        found = co_await reader_.trueSelection(element);
    }
    if (found.kind == TextReader::Selection::Kind::unreadable)
        co_return PasteTarget::unknown;
    co_return found.offsets == offsets ? PasteTarget::selected : PasteTarget::another;
}

} // namespace quillmender::atspi
