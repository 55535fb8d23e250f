#include "platform/none/NoneFocusedText.h"

namespace quillmender {

QCoro::Task<FocusReading> NoneFocusedText::read(RunningApplicationRef application) {
    FocusReading reading;
    reading.application = std::move(application);
    co_return reading;
}

QCoro::Task<std::optional<TextRange>> NoneFocusedText::selectedRange(FocusedElementRef) {
    co_return std::nullopt;
}

QCoro::Task<Replacement> NoneFocusedText::replace(FocusedElementRef, TextRange, QString) {
    co_return Replacement{Replacement::Outcome::refused,
                          QStringLiteral("this system gives no access to other applications")};
}

QCoro::Task<PasteTarget> NoneFocusedText::select(FocusedElementRef, TextRange) {
    co_return PasteTarget::unknown;
}

} // namespace quillmender
