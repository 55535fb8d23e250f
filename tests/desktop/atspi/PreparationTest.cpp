#include "desktop/atspi/AccessibleProgram.h"
#include "desktop/atspi/AtspiTest.h"
#include "desktop/harness/AccessibilityBus.h"

#include <QCoroTask>
#include <QDBusConnectionInterface>

#include <csignal>

namespace quillmender::atspi {
namespace {

using harness::TestApplication;
using harness::waitUntil;

const QString words = QStringLiteral("one two three");

/// The program starts while an application is in front, and gets ready for its first reading.
class PreparationTest : public AtspiTest {
  protected:
    void start(const AccessibleProgram::Options &options) {
        harness::Desktop::Options plain;
        plain.windowManager = false;
        plain.keyring = false;
        startDesktop(plain);
        program_.emplace(desktop(), words, options);
        adopt();
        frontmost().pretend(program_->pid());
        waitUntil([&] { return access().isGranted(); }, QStringLiteral("the bus is there"));
    }

    void prepare() { QCoro::waitFor(focusedText().prepare()); }

    qint64 registryProcess() {
        const QDBusConnection &bus = desktop().accessibilityBus()->connection();
        return bus.interface()->servicePid(QLatin1String(protocol::registry));
    }

    std::optional<AccessibleProgram> program_;
};

TEST_F(PreparationTest, TheFirstReadingNeedsNoSearch) {
    start({});
    prepare();
    const auto registry = pid_t(registryProcess());
    ASSERT_GT(registry, 0);
    ::kill(registry, SIGSTOP);
    EXPECT_EQ(read().value, words);
    ::kill(registry, SIGCONT);
}

TEST_F(PreparationTest, NoTextIsRead) {
    AccessibleProgram::Options options;
    options.selectionEnd = 1;
    for (int end = 2; end < words.size(); ++end)
        options.laterSelections.append({0, end});
    start(options);
    const std::optional<QString> unprepared = read().selectedText;

    program_.emplace(desktop(), words, options);
    frontmost().pretend(program_->pid());
    prepare();
    EXPECT_EQ(read().selectedText, unprepared) << "each reading of the text selects more of it";
}

TEST_F(PreparationTest, AnApplicationThatHangsIsNotWaitedForLong) {
    start({});
    program_->process().suspend();
    prepare();
    EXPECT_EQ(read().value, std::nullopt);
    program_->process().resume();
    EXPECT_EQ(waitForValue(words).value, words);
}

TEST_F(PreparationTest, WithoutABusNothingIsLearned) {
    harness::Desktop::Options options;
    options.accessibilityBus = false;
    startDesktop(options);
    adopt();
    prepare();
    EXPECT_EQ(read().element, nullptr);
}

TEST_F(PreparationTest, AnApplicationThatComesLaterIsKnownByItsFocus) {
    startDesktop({});
    AtspiBus bus(desktop().sessionBus().connection());
    BusApplications applications(bus);
    FocusMemory memory(bus, applications);
    const FocusFinder finder(bus, applications, memory);
    waitUntil([&] { return bus.isConnected(); }, QStringLiteral("the memory is on the bus"));
    const TestApplication editor =
        TestApplication::sampleEditor(desktop(), QStringLiteral("plain"), words);
    waitUntil([&] { return finder.likely(editor.pid()).has_value(); },
              QStringLiteral("its focus is known, and whose it is"));
}

} // namespace
} // namespace quillmender::atspi
