#pragma once

#include "FrameworksTest.h"
#include "app/AppCoordinator.h"
#include "doubles/accessibility/AccessibilityServer.h"
#include "doubles/accessibility/Element.h"
#include "doubles/accessibility/PackedValue.h"
#include "doubles/appkit/GeneralPasteboard.h"
#include "doubles/appkit/RunningApplications.h"
#include "doubles/carbon/EventDispatcher.h"
#include "doubles/cf/Preferences.h"
#include "doubles/cf/String.h"
#include "doubles/events/EventServer.h"
#include "doubles/security/Keychain.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeTransport.h"

#include <QTest>

namespace quillmender {

/// A panel that only says what was done with it.
class RecordedPanel : public PickerPanel {
  public:
    explicit RecordedPanel(fakes::CallLog log) : log_(std::move(log)) {}
    void centre(std::optional<DesktopRect>) override {
        log_->append(QStringLiteral("panel centre"));
    }
    void makeKeyAndOrderFront() override {
        log_->append(QStringLiteral("panel makeKeyAndOrderFront"));
    }
    void orderOut() override { log_->append(QStringLiteral("panel orderOut")); }

  private:
    fakes::CallLog log_;
};

/// The real coordinator on the platform that the program itself makes, all of it on the doubles:
/// an editor (process 7) in front, the user's own contents on the pasteboard. Only the clock, the
/// provider and the windows are fakes. `log` has every call in its order.
class WholeSessionTest : public FrameworksTest {
  protected:
    WholeSessionTest();
    ~WholeSessionTest() override;

    static constexpr int editorProcess = 7;

    /// The editor's text with that range selected; all of it is known to accessibility.
    void select(const std::u16string &text, CFIndex location, CFIndex length);
    std::string value() const { return doubles::describe(editor->value("AXValue")); }

    /// The editor answers Command-C with this text, and notes what Command-V gives it.
    void copyYields(std::optional<std::string> text);

    void pressHotKey();
    /// Until the panel stands there with what came of the capture. What that took.
    QStringList capture();
    /// Runs the first action; the provider answers this. What that took.
    QStringList run(const QByteArray &answer);
    QStringList taken();

    doubles::GeneralPasteboard &pasteboard = doubles::GeneralPasteboard::shared();
    doubles::RunningApplications &applications = doubles::RunningApplications::shared();
    const std::vector<doubles::GeneralPasteboard::Item> usersOwn = {
        {{"public.utf8-plain-text", "the user's own"}, {"public.rtf", "rtf"}},
        {{"public.png", "png"}}};
    std::vector<std::string> pasted;

    fakes::CallLog log = fakes::makeCallLog();
    doubles::AccessibilityServer accessibility;
    doubles::EventDispatcher dispatcher;
    doubles::EventServer events;
    doubles::Keychain keychain;
    doubles::Preferences preferences;
    doubles::Element *editor = new doubles::Element("editor");
    fakes::FakeTransport transport{log};
    fakes::FakeTransport releases{fakes::makeCallLog()}; ///< of the release manifest
    std::function<void(int)> answerAlert;
    std::unique_ptr<Platform> platform;
    fakes::FakeClock *clock = nullptr; ///< owned by the platform
    std::unique_ptr<AppCoordinator> coordinator;
};

} // namespace quillmender
