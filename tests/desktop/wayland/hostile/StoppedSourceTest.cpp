#include "desktop/sessions/Letter.h"
#include "desktop/wayland/sessions/WaylandSessionFixture.h"

#include <tuple>

namespace quillmender {
namespace {

using harness::CompositorKind;
using harness::waitUntil;

const QString nothingSelected =
    QStringLiteral("Select some text, or place the cursor inside a normal text field so "
                   "Quillmender can capture the whole field when possible.");
const QString notReplaced =
    QStringLiteral("Quillmender could not replace the selected text back in the source app.");

/// The application with the text hangs, and comes round when everything is over.
class WaylandStoppedSourceTest
    : public WaylandSessionFixture,
      public testing::WithParamInterface<std::tuple<CompositorKind, Letter::Route>> {
  protected:
    CompositorKind kind() const override { return std::get<CompositorKind>(GetParam()); }

    void openLetter() {
        start();
        letter_.emplace(*this, std::get<Letter::Route>(GetParam()));
        // What is not told its process by the compositor finds it out when it is used first.
        pressHotKey();
        waitForPanel(Letter::wrong);
        close();
        letter_->editor().activate();
    }

    void close() {
        click(QStringLiteral("Close"));
        waitUntilPanelIsGone();
    }

    void stop() { letter_->editor().process().suspend(); }
    void letGoOn() {
        letter_->editor().process().resume();
        letter_->editor().activate();
        letter_->waitUntilEditorActs();
    }

    void TearDown() override {
        WaylandSessionFixture::TearDown();
        letter_.reset();
    }

    std::optional<Letter> letter_;
};

TEST_P(WaylandStoppedSourceTest, BeforeTheCapture) {
    openLetter();
    stop();
    pressHotKey();
    waitForPanel(nothingSelected);
    close();
    EXPECT_TRUE(provider().requests().empty());
    letGoOn();
    expectClipboardUntouched();

    letter_->selectWrong();
    letter_->mend();
    expectClipboardUntouched();
    letter_->expectText(Letter::mended);
}

TEST_P(WaylandStoppedSourceTest, WhileTheProviderThinks) {
    openLetter();
    letter_->askForAnswer();
    stop();
    provider().release();
    waitUntil([&] { return panelShows(notReplaced); }, QStringLiteral("the failure is shown"));
    expectClipboardUntouched();
    letGoOn();
    expectClipboardUntouched();
    letter_->expectText(Letter::text);
}

INSTANTIATE_TEST_SUITE_P(
    On, WaylandStoppedSourceTest,
    testing::Combine(testing::Values(CompositorKind::sway, CompositorKind::kwin),
                     testing::Values(Letter::Route::accessibility, Letter::Route::clipboard)),
    [](const auto &instance) {
        const bool isByBus =
            std::get<Letter::Route>(instance.param) == Letter::Route::accessibility;
        return std::string(harness::nameOf(std::get<CompositorKind>(instance.param))) +
               (isByBus ? "_Accessibility" : "_Clipboard");
    });

} // namespace
} // namespace quillmender
