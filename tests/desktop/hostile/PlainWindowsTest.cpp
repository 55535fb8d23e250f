#include "desktop/hostile/HostileFixture.h"

#include <QFile>

namespace quillmender {
namespace {

using harness::ChildProcess;
using harness::waitUntil;
using harness::XcbPointer;

/// No window manager, or one from before the freedesktop.org hints: nobody tells which window is
/// active or brings one to the front.
class PlainWindowsTest
    : public HostileFixture,
      public testing::WithParamInterface<std::tuple<const char *, const char *>> {
  protected:
    void start() override {
        harness::Desktop::Options options;
        options.windowManager = false;
        startDesktop(options);
        if (managerName() == QStringLiteral("twm"))
            startTwm();
        startProgram();
        watchResponsiveness();
    }

    static QString managerName() { return QString::fromLatin1(std::get<0>(GetParam())); }
    static bool isOnTheBus() { return std::get<1>(GetParam()) == std::string("Accessibility"); }

    void openEditor() {
        QFile file(desktop().folders().home() + QStringLiteral("/letter.txt"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(letter.toUtf8());
        file.close();
        harness::Command command = desktop().command(
            QStringLiteral("mousepad"), {QStringLiteral("--disable-server"), file.fileName()});
        if (!isOnTheBus())
            command.environment.insert(QStringLiteral("NO_AT_BRIDGE"), QStringLiteral("1"));
        editor_.emplace(command);
        xcb_window_t window = XCB_WINDOW_NONE;
        waitUntil([&] { return (window = windowOf(editor_->pid())) != XCB_WINDOW_NONE; },
                  QStringLiteral("the editor has a window"));
        // Keys go where the pointer is.
        inTheText_ = desktop().windows().geometry(window).center();
        waitUntil(
            [&] {
                input().click(inTheText_);
                selectByKeyboard(input(), letter, wrong);
                harness::ClipboardProbe primary(desktop().display(), "PRIMARY");
                return harness::becomesTrue(
                    [&] { return primary.owner() != XCB_WINDOW_NONE && primary.text() == wrong; },
                    std::chrono::seconds(2));
            },
            QStringLiteral("the word is selected"));
    }

    bool isManaged() { return !manager_ || manager_->isRunning(); }

    void waitForPanelText(const QString &text) {
        waitUntil([&] { return panelShows(text); },
                  QStringLiteral("the panel shows \"%1\"").arg(text));
    }

    bool isPanelVisible() { return windowOf(program().pid()) != XCB_WINDOW_NONE; }

    void TearDown() override {
        HostileFixture::TearDown();
        editor_.reset();
        manager_.reset();
    }

    qint64 editorId() const { return editor_->pid(); }
    QPoint inTheText() const { return inTheText_; }

  private:
    void startTwm() {
        QFile settings(desktop().folders().home() + QStringLiteral("/.twmrc"));
        ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
        // Else it asks the user for the place of every window.
        settings.write("RandomPlacement\nUsePPosition \"on\"\n");
        // Without the fonts of its default it ends.
        for (const char *font :
             {"TitleFont", "ResizeFont", "MenuFont", "IconFont", "IconManagerFont"})
            settings.write(QByteArray(font) + " \"fixed\"\n");
        settings.close();
        manager_.emplace(desktop().command(QStringLiteral("twm")));
        waitUntil([&] { return isRedirecting(); }, QStringLiteral("twm manages windows"));
    }

    bool isRedirecting() {
        xcb_connection_t *const connection = desktop().connection().get();
        const auto cookie = xcb_get_window_attributes(connection, desktop().connection().root());
        const XcbPointer<xcb_get_window_attributes_reply_t> reply(
            xcb_get_window_attributes_reply(connection, cookie, nullptr));
        return reply && (reply->all_event_masks & XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT) != 0;
    }

    xcb_window_t windowOf(qint64 process) {
        return windowBelow(desktop().connection().root(), process, 3);
    }

    // NOLINTNEXTLINE(misc-no-recursion): as deep as frames are
    xcb_window_t windowBelow(xcb_window_t parent, qint64 process, int depth) {
        xcb_connection_t *const connection = desktop().connection().get();
        const XcbPointer<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection, xcb_query_tree(connection, parent), nullptr));
        if (!tree || depth == 0)
            return XCB_WINDOW_NONE;
        const xcb_window_t *const children = xcb_query_tree_children(tree.get());
        for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
            if (desktop().windows().isViewable(children[i]) &&
                desktop().windows().processId(children[i]) == process)
                return children[i];
            const xcb_window_t below = windowBelow(children[i], process, depth - 1);
            if (below != XCB_WINDOW_NONE)
                return below;
        }
        return XCB_WINDOW_NONE;
    }

    std::optional<ChildProcess> manager_;
    std::optional<ChildProcess> editor_;
    QPoint inTheText_;
};

TEST_P(PlainWindowsTest, SelectionIsReplaced) {
    start();
    openEditor();
    ASSERT_TRUE(isManaged());
    answerWith(right);
    pressHotKey();
    waitForPanelText(wrong);
    click(QStringLiteral("Fix My Grammar"));
    EXPECT_TRUE(promptOf(waitForRequest()).endsWith(wrong));
    waitUntil([&] { return !isPanelVisible(); }, QStringLiteral("the panel is gone"));
    expectClipboardUntouched();
    input().movePointer(inTheText());
    if (!isOnTheBus())
        return expectTextByCopying(mended);
    const auto text = desktop().accessible().waitFor(editorId(), QStringLiteral("text"));
    EXPECT_EQ(text.text(), mended);
    pressHotKey();
    waitForPanelText(right);
}

INSTANTIATE_TEST_SUITE_P(Managers, PlainWindowsTest,
                         testing::Combine(testing::Values("none", "twm"),
                                          testing::Values("Accessibility", "Clipboard")),
                         [](const auto &chosen) {
                             return std::string(std::get<0>(chosen.param)) +
                                    std::get<1>(chosen.param);
                         });

} // namespace
} // namespace quillmender
