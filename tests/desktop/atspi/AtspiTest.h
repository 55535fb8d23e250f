#pragma once

#include "desktop/harness/DesktopTest.h"
#include "desktop/harness/TestApplication.h"
#include "platform/linux/FocusContext.h"
#include "platform/linux/atspi/AtspiAccess.h"
#include "platform/linux/atspi/AtspiFocusedText.h"

namespace quillmender::atspi {

/// An application with its window, as the window system knows it.
class WindowApplication : public RunningApplication {
  public:
    explicit WindowApplication(qint64 processId, xcb_window_t window = XCB_WINDOW_NONE)
        : processId_(processId),
          window_(window) {}

    qint64 processId() const override { return processId_; }
    bool isSame(const RunningApplication &other) const override;

  private:
    qint64 processId_;
    xcb_window_t window_;
};

/// The window that the desktop says is in front.
class DesktopFrontmost : public FrontmostSource {
  public:
    explicit DesktopFrontmost(harness::Desktop &desktop) : desktop_(desktop) {}

    RunningApplicationRef application() const override;
    bool isTerminal() const override { return terminal; }
    QCoro::Task<std::optional<QString>> primarySelection() override;

    /// From now on an application with this process is in front, whatever window is.
    void pretend(qint64 processId);

    bool terminal = false;
    std::optional<RunningApplicationRef> pretended;

  private:
    harness::Desktop &desktop_;
};

/// The focused text under test on a desktop of its own.
class AtspiTest : public harness::DesktopTest {
  protected:
    void start(const harness::Desktop::Options &options = {});
    /// The same on the desktop that is already there.
    void adopt();

    DesktopFrontmost &frontmost() { return *frontmost_; }
    AtspiAccess &access() { return *access_; }
    AtspiFocusedText &focusedText() { return *focusedText_; }
    /// What was learned for chords by the last reading; of nothing when that was elsewhere.
    const FocusContext &record() const { return *record_; }

    /// One capture's reading of the application that is in front.
    FocusReading read();
    FocusReading read(const RunningApplicationRef &application);

    /// Null when there is no focused element.
    FocusedElementRef focusedElement() { return read().element; }
    /// Read until there is an element whose role is as expected.
    FocusReading waitForFocus(FocusContext::Role role = FocusContext::Role::text);
    /// Read until the whole text is this; a starting browser moves its focus.
    FocusReading waitForValue(const QString &value);
    /// Read until this is selected.
    FocusReading waitForSelection(const QString &selected);

    Replacement replace(const FocusedElementRef &element, TextRange range, const QString &text);
    PasteTarget select(const FocusedElementRef &element, TextRange range);
    std::optional<TextRange> selectedRange(const FocusedElementRef &element);

    void TearDown() override;

  private:
    FocusReading waitForReading(const std::function<bool(const FocusReading &)> &isRight,
                                const QString &description);

    std::unique_ptr<DesktopFrontmost> frontmost_;
    std::shared_ptr<const FocusContext> record_ = std::make_shared<FocusContext>();
    std::unique_ptr<AtspiBus> bus_;
    std::unique_ptr<AtspiAccess> access_;
    std::unique_ptr<AtspiFocusedText> focusedText_;
};

/// A refusal, or an outcome that nobody knows, for a reason that may be logged.
void expectReasonWithout(const Replacement &replacement, const QStringList &texts);

} // namespace quillmender::atspi
