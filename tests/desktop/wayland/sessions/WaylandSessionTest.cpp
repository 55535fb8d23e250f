#include "desktop/harness/TestApplication.h"
#include "desktop/harness/wayland/WaylandClipboardOwner.h"
#include "desktop/sessions/SessionStories.h"
#include "desktop/wayland/sessions/WaylandSessionFixture.h"

#include <string>
#include <tuple>

namespace quillmender {
namespace {

using harness::CompositorKind;
using harness::TestApplication;
using harness::waitUntil;

/// The sessions that go the same way on every desktop.
class WaylandSessionTest
    : public WaylandSessionFixture,
      public testing::WithParamInterface<std::tuple<CompositorKind, SessionStory>> {
  protected:
    CompositorKind kind() const override { return std::get<CompositorKind>(GetParam()); }
};

TEST_P(WaylandSessionTest, Plays) {
    std::get<SessionStory>(GetParam()).play(*this);
}

INSTANTIATE_TEST_SUITE_P(On, WaylandSessionTest,
                         testing::Combine(harness::everyCompositor(),
                                          testing::ValuesIn(sessionStories())),
                         [](const auto &instance) {
                             return std::string(
                                        harness::nameOf(std::get<CompositorKind>(instance.param))) +
                                    "_" + std::get<SessionStory>(instance.param).name;
                         });

struct Keyboard {
    const char *name;
    const char *layouts;
    quint32 layoutInUse;
    bool hasLatinLetters;
};

void PrintTo(const Keyboard &keyboard, std::ostream *stream) {
    *stream << keyboard.name;
}

/// Sessions through the copy and the paste chord on other people's keyboards.
class WaylandKeyboardTest
    : public WaylandSessionFixture,
      public testing::WithParamInterface<std::tuple<CompositorKind, Keyboard>> {
  protected:
    CompositorKind kind() const override { return std::get<CompositorKind>(GetParam()); }
};

TEST_P(WaylandKeyboardTest, CopiesAndPastes) {
    const Keyboard &keyboard = std::get<Keyboard>(GetParam());
    // The user's own keyboard is what the chord comes from there.
    if (kind() == CompositorKind::kwin && !keyboard.hasLatinLetters)
        GTEST_SKIP() << "on a keyboard without Latin letters this field knows no chord";
    harness::WaylandDesktop::Options options;
    options.compositor.layouts = QString::fromLatin1(keyboard.layouts);
    startDesktop(options);
    startProgram();
    if (keyboard.layoutInUse != 0)
        desktop().compositor().useLayout(keyboard.layoutInUse);
    const QString wrong = QStringLiteral("recieve");
    const TestApplication field =
        TestApplication::sampleEditor(desktop(), QStringLiteral("commands"), wrong);
    answerWith(QStringLiteral("receive"));
    pressHotKey();
    waitForPanel(wrong);
    click(QStringLiteral("Fix My Grammar"));
    EXPECT_TRUE(promptOf(waitForRequest()).endsWith(wrong));
    waitUntilPanelIsGone();
    waitUntilWritten();
    waitUntil([&] { return field.title() == QStringLiteral("receive"); },
              QStringLiteral("the answer is in the field"));
    expectClipboardUntouched();
}

INSTANTIATE_TEST_SUITE_P(
    On, WaylandKeyboardTest,
    testing::Combine(harness::everyCompositor(),
                     testing::Values(Keyboard{"German", "de", 0, true},
                                     Keyboard{"Russian", "ru", 0, false},
                                     Keyboard{"Greek", "gr", 0, false},
                                     Keyboard{"RussianBesidesUs", "us,ru", 1, true})),
    [](const auto &instance) {
        return std::string(harness::nameOf(std::get<CompositorKind>(instance.param))) + "_" +
               std::get<Keyboard>(instance.param).name;
    });

/// Owners of the clipboard that are not as they should be.
class WaylandClipboardSessionTest : public WaylandSessionFixture,
                                    public testing::WithParamInterface<CompositorKind> {
  protected:
    CompositorKind kind() const override { return GetParam(); }
};

TEST_P(WaylandClipboardSessionTest, SlowOwnerGetsEverythingBack) {
    start();
    auto &owner = static_cast<harness::WaylandClipboardOwner &>(clipboardOwner());
    owner.send("image/png", harness::SendManner::slowly);
    const TestApplication field = TestApplication::sampleEditor(
        desktop(), QStringLiteral("commands"), QStringLiteral("recieve"));
    answerWith(QStringLiteral("receive"));
    pressHotKey();
    waitForPanel(QStringLiteral("recieve"));
    click(QStringLiteral("Fix My Grammar"));
    waitForRequest();
    waitUntilPanelIsGone();
    waitUntilWritten();
    waitUntil([&] { return field.title() == QStringLiteral("receive"); },
              QStringLiteral("the answer is in the field"));
    expectClipboardUntouched();
}

INSTANTIATE_TEST_SUITE_P(On, WaylandClipboardSessionTest, harness::everyCompositor(),
                         harness::compositorName);

} // namespace
} // namespace quillmender
