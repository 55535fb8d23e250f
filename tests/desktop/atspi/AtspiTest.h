#pragma once

#include "desktop/harness/DesktopTest.h"
#include "desktop/harness/TestApplication.h"
#include "platform/linux/atspi/AtspiAccessibility.h"

namespace quillmender {

/// The window that the desktop says is in front.
class DesktopFrontmost : public FrontmostSource {
  public:
    explicit DesktopFrontmost(harness::Desktop &desktop) : desktop_(desktop) {}

    RunningApplicationRef application() const override { return pretendedApplication; }
    qint64 processId() const override;
    bool isTerminal() const override { return terminal; }
    QCoro::Task<std::optional<QString>> primarySelection() override;

    bool terminal = false;
    std::optional<qint64> pretendedProcess;
    RunningApplicationRef pretendedApplication;

  private:
    harness::Desktop &desktop_;
};

/// The accessibility under test on a desktop of its own.
class AtspiTest : public harness::DesktopTest {
  protected:
    void start(const harness::Desktop::Options &options = {});
    /// The same on the desktop that is already there.
    void adopt();

    DesktopFrontmost &frontmost() { return *frontmost_; }
    AtspiAccessibility &accessibility() { return *accessibility_; }
    /// What was learned when the focused element was last asked for.
    const FocusRecord &record() const { return *record_; }

    AttributeResult get(const AccessibilityElementRef &element, const char *attribute);
    AccessibilityError set(const AccessibilityElementRef &element, const char *attribute,
                           const AccessibilityValue &value);

    /// One capture's question; null when there is no focused element.
    AccessibilityElementRef focusedElement();
    /// Asks until there is one whose role is as expected.
    AccessibilityElementRef waitForFocusedElement(FocusRecord::Role role = FocusRecord::Role::text);

    /// Asks until it holds this text; a starting browser moves its focus.
    AccessibilityElementRef waitForElementHolding(const QString &value);

    /// Nothing unless the answer is a success with a text.
    std::optional<QString> text(const AccessibilityElementRef &element, const char *attribute);
    std::optional<TextRange> range(const AccessibilityElementRef &element);

    void TearDown() override;

  private:
    std::unique_ptr<DesktopFrontmost> frontmost_;
    std::shared_ptr<const FocusRecord> record_ = std::make_shared<FocusRecord>();
    std::unique_ptr<AtspiAccessibility> accessibility_;
};

} // namespace quillmender
