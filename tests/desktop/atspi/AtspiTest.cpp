#include "desktop/atspi/AtspiTest.h"

#include "desktop/harness/ClipboardProbe.h"

#include <QCoroTask>

namespace quillmender::atspi {

bool WindowApplication::isSame(const RunningApplication &other) const {
    const auto *theirs = dynamic_cast<const WindowApplication *>(&other);
    return theirs != nullptr && theirs->processId_ == processId_ && theirs->window_ == window_;
}

RunningApplicationRef DesktopFrontmost::application() const {
    if (pretended)
        return *pretended;
    const xcb_window_t active = desktop_.windows().active();
    if (active == XCB_WINDOW_NONE)
        return nullptr;
    return std::make_shared<const WindowApplication>(desktop_.windows().processId(active), active);
}

QCoro::Task<std::optional<QString>> DesktopFrontmost::primarySelection() {
    harness::ClipboardProbe probe(desktop_.display(), "PRIMARY");
    if (probe.owner() == XCB_WINDOW_NONE)
        co_return std::nullopt;
    co_return probe.text();
}

void DesktopFrontmost::pretend(qint64 processId) {
    pretended = std::make_shared<const WindowApplication>(processId);
}

void AtspiTest::start(const harness::Desktop::Options &options) {
    startDesktop(options);
    adopt();
}

void AtspiTest::adopt() {
    frontmost_ = std::make_unique<DesktopFrontmost>(desktop());
    bus_ = std::make_unique<AtspiBus>(desktop().sessionBus().connection());
    access_ = std::make_unique<AtspiAccess>(*bus_);
    focusedText_ = std::make_unique<AtspiFocusedText>(*frontmost_, *bus_);
}

void AtspiTest::TearDown() {
    focusedText_.reset();
    access_.reset();
    bus_.reset();
    DesktopTest::TearDown();
}

FocusReading AtspiTest::read() {
    return read(frontmost_->application());
}

FocusReading AtspiTest::read(const RunningApplicationRef &application) {
    FocusReading reading = QCoro::waitFor(focusedText_->read(application));
    record_ = std::dynamic_pointer_cast<const FocusContext>(reading.chordContext);
    if (!record_)
        record_ = std::make_shared<FocusContext>();
    return reading;
}

FocusReading AtspiTest::waitForReading(const std::function<bool(const FocusReading &)> &isRight,
                                       const QString &description) {
    FocusReading reading;
    harness::waitUntil(
        [&] {
            reading = read();
            return reading.element != nullptr && isRight(reading);
        },
        description);
    return reading;
}

FocusReading AtspiTest::waitForFocus(FocusContext::Role role) {
    return waitForReading([&](const FocusReading &) { return record_->role == role; },
                          QStringLiteral("there is a focused element"));
}

FocusReading AtspiTest::waitForValue(const QString &value) {
    return waitForReading([&](const FocusReading &reading) { return reading.value == value; },
                          QStringLiteral("the focused element holds \"%1\"").arg(value.left(40)));
}

FocusReading AtspiTest::waitForSelection(const QString &selected) {
    return waitForReading(
        [&](const FocusReading &reading) { return reading.selectedText == selected; },
        QStringLiteral("\"%1\" is selected").arg(selected.left(40)));
}

Replacement AtspiTest::replace(const FocusedElementRef &element, TextRange range,
                               const QString &text) {
    return QCoro::waitFor(focusedText_->replace(element, range, text));
}

PasteTarget AtspiTest::select(const FocusedElementRef &element, TextRange range) {
    return QCoro::waitFor(focusedText_->select(element, range));
}

std::optional<TextRange> AtspiTest::selectedRange(const FocusedElementRef &element) {
    return QCoro::waitFor(focusedText_->selectedRange(element));
}

void expectReasonWithout(const Replacement &replacement, const QStringList &texts) {
    EXPECT_NE(replacement.outcome, Replacement::Outcome::done);
    EXPECT_FALSE(replacement.reason.isEmpty());
    for (const QString &text : texts) {
        if (!text.isEmpty()) {
            EXPECT_FALSE(replacement.reason.contains(text)) << qPrintable(replacement.reason);
        }
    }
}

} // namespace quillmender::atspi
