#include "desktop/x11/KeyTyper.h"
#include "desktop/x11/TestWindow.h"
#include "desktop/x11/X11Test.h"
#include "platform/linux/x11/X11Property.h"
#include "platform/linux/x11/windows/WindowProcess.h"

#include <QFile>
#include <QTemporaryDir>

namespace quillmender::x11 {

namespace {

using testing::IsSupersetOf;

class WorkspaceTest : public X11Test {
  protected:
    ~WorkspaceTest() override {
        for (auto &program : programs_) {
            program->kill();
            program->waitForFinished(5000);
        }
    }

    QProcess &startXterm(const QString &title) {
        programs_.push_back(
            server_.start(QStringLiteral("xterm"), {QStringLiteral("-T"), title,
                                                    QStringLiteral("-e"), QStringLiteral("cat")}));
        return *programs_.back();
    }

    /// The application in front once it is that process.
    std::shared_ptr<const X11RunningApplication> frontmostOf(const QProcess &process) {
        std::shared_ptr<const X11RunningApplication> found;
        waitFor([&] {
            found = std::dynamic_pointer_cast<const X11RunningApplication>(
                services_->workspace->frontmostApplication());
            return found && found->processId() == process.processId();
        });
        return found;
    }

    QList<QByteArray> stateOf(xcb_window_t window) {
        const auto state = readProperty(*peer_, window, peer_->atom("_NET_WM_STATE"));
        return state ? peer_->atomNames(state->cardinals()) : QList<QByteArray>();
    }

    xcb_window_t parentOf(xcb_window_t window) {
        const auto tree =
            replyTo(peer_->xcb(), xcb_query_tree_reply, xcb_query_tree(peer_->xcb(), window));
        return tree ? tree->parent : xcb_window_t{XCB_WINDOW_NONE};
    }

    std::vector<std::unique_ptr<QProcess>> programs_;
};

TEST_F(WorkspaceTest, KnowsOfACompositorAsLongAsThereIsOne) {
    WindowStanding &standing = *services_->windowStanding;
    EXPECT_FALSE(standing.hasCompositor());
    xcb_set_selection_owner(peer_->xcb(), peer_->window(), peer_->atom("_NET_WM_CM_S0"),
                            peer_->serverTime());
    EXPECT_EQ(ownerOf("_NET_WM_CM_S0"), peer_->window());
    EXPECT_TRUE(standing.hasCompositor());
    peer_.reset();
    EXPECT_TRUE(waitFor([&] { return !standing.hasCompositor(); }));
}

TEST_F(WorkspaceTest, KnowsAndActivatesTheApplicationInFront) {
    programs_.push_back(startWindowManager());
    EXPECT_EQ(services_->workspace->frontmostApplication(), nullptr);
    EXPECT_EQ(processInFront(), 0);
    QProcess &first = startXterm(QStringLiteral("first"));
    const auto firstApplication = frontmostOf(first);
    ASSERT_NE(firstApplication, nullptr);
    EXPECT_EQ(processInFront(), first.processId());
    const QProcess &second = startXterm(QStringLiteral("second"));
    const auto secondApplication = frontmostOf(second);
    ASSERT_NE(secondApplication, nullptr);
    EXPECT_NE(secondApplication->window(), firstApplication->window());

    EXPECT_TRUE(services_->workspace->activate(firstApplication));
    EXPECT_TRUE(
        waitFor([&] { return services_->activeWindow->isInFront(firstApplication->window()); }));

    first.kill();
    EXPECT_TRUE(waitFor([&] { return !services_->workspace->activate(firstApplication); }));
    EXPECT_EQ(services_->workspace->windowFrame(firstApplication), std::nullopt);
}

TEST_F(WorkspaceTest, AsksTheWindowManagerAsAPagerAtThePresentTime) {
    const TestWindow manager(*peer_);
    for (const xcb_window_t window : {peer_->root(), manager.id()})
        writeCardinals(*peer_, window, peer_->atom("_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW,
                       {manager.id()});
    const quint32 events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(peer_->xcb(), peer_->root(), XCB_CW_EVENT_MASK, &events);
    std::vector<xcb_client_message_event_t> messages;
    QObject::connect(peer_.get(), &X11Connection::eventReceived, peer_.get(),
                     [&](const xcb_generic_event_t *event) {
                         if (eventType(event) == XCB_CLIENT_MESSAGE)
                             messages.push_back(eventCast<xcb_client_message_event_t>(event));
                     });
    // The last key that the user is known to have pressed is no measure: they may have clicked.
    KeyTyper typer(*peer_);
    const HotKeyOutcome outcome =
        wait(services_->hotKeys->hold(QKeyCombination(Qt::Key_Space), [] {}));
    ASSERT_TRUE(outcome.hotKey);
    typer.tap(XKB_KEY_space);
    const xcb_timestamp_t pressed = peer_->serverTime();
    xcb_timestamp_t now = pressed;
    ASSERT_TRUE(waitFor([&] { return (now = peer_->serverTime()) > pressed; }));

    const TestWindow window(*peer_);
    services_->workspace->activate(std::make_shared<X11RunningApplication>(window.id(), 0));
    ASSERT_TRUE(waitFor([&] { return !messages.empty(); }));
    EXPECT_EQ(messages[0].window, window.id());
    EXPECT_EQ(messages[0].type, peer_->atom("_NET_ACTIVE_WINDOW"));
    EXPECT_EQ(messages[0].data.data32[0], 2U) << "the source is a pager";
    EXPECT_GE(messages[0].data.data32[1], now);
}

TEST_F(WorkspaceTest, OurOwnWindowIsNeverTheApplicationInFront) {
    programs_.push_back(startWindowManager());
    const QProcess &xterm = startXterm(QStringLiteral("document"));
    const auto application = frontmostOf(xterm);
    ASSERT_NE(application, nullptr);
    TestWindow panel(*peer_);
    services_->windowStanding->applyPanelAttributes(panel.id());
    services_->windowStanding->activate(panel.id());
    panel.map();
    ASSERT_TRUE(waitFor([&] { return services_->activeWindow->current() == panel.id(); }));
    EXPECT_EQ(services_->workspace->frontmostApplication(), application);
    EXPECT_EQ(processInFront(), xterm.processId());
}

TEST_F(WorkspaceTest, PutsThePanelAboveOnEveryDesktopEachTimeItIsShown) {
    programs_.push_back(startWindowManager());
    const QProcess &xterm = startXterm(QStringLiteral("document"));
    ASSERT_NE(frontmostOf(xterm), nullptr);
    TestWindow panel(*peer_);
    const auto isAsAskedFor = [&] {
        const auto desktop = readCardinal(*peer_, panel.id(), peer_->atom("_NET_WM_DESKTOP"));
        return desktop == 0xffffffff &&
               testing::Matches(IsSupersetOf(
                   {QByteArray("_NET_WM_STATE_ABOVE"), QByteArray("_NET_WM_STATE_SKIP_TASKBAR"),
                    QByteArray("_NET_WM_STATE_SKIP_PAGER")}))(stateOf(panel.id()));
    };
    services_->windowStanding->applyPanelAttributes(panel.id());
    for (int i = 0; i < 2; ++i) {
        panel.map();
        services_->windowStanding->activate(panel.id());
        EXPECT_TRUE(waitFor([&] {
            return isAsAskedFor() && services_->activeWindow->isInFront(panel.id());
        })) << i
            << " in front: " << services_->activeWindow->isInFront(panel.id());
        xcb_unmap_window(peer_->xcb(), panel.id());
        peer_->serverTime();
        // The window manager has let go of it, which a client awaits before it maps it again.
        EXPECT_TRUE(waitFor([&] {
            return !readProperty(*peer_, panel.id(), peer_->atom("_NET_WM_STATE")) &&
                   parentOf(panel.id()) == peer_->root();
        }));
    }
}

TEST_F(WorkspaceTest, FallsBackToTheFocusWithoutWindowManager) {
    const QProcess &xterm = startXterm(QStringLiteral("alone"));
    xcb_window_t window = XCB_WINDOW_NONE;
    const auto isMapped = [&] {
        const auto tree = replyTo(peer_->xcb(), xcb_query_tree_reply,
                                  xcb_query_tree(peer_->xcb(), peer_->root()));
        const xcb_window_t *const children = xcb_query_tree_children(tree.get());
        for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
            if (services_->activeWindow->isViewable(children[i]))
                window = children[i];
        }
        return window != XCB_WINDOW_NONE;
    };
    ASSERT_TRUE(waitFor(isMapped));
    const auto application = std::make_shared<X11RunningApplication>(window, 0);
    EXPECT_TRUE(services_->workspace->activate(application));
    EXPECT_TRUE(waitFor([&] { return services_->activeWindow->isInFront(window); }));
    EXPECT_NE(frontmostOf(xterm), nullptr);
    EXPECT_TRUE(services_->workspace->windowFrame(application).has_value());
}

TEST_F(WorkspaceTest, KnowsWhereAWindowIs) {
    TestWindow window(*peer_);
    window.map();
    ASSERT_TRUE(waitFor([&] { return window.isViewable(); }));
    const auto frame =
        services_->workspace->windowFrame(std::make_shared<X11RunningApplication>(window.id(), 0));
    ASSERT_TRUE(frame.has_value());
    EXPECT_EQ(frame->x, 10);
    EXPECT_EQ(frame->y, 20);
    EXPECT_EQ(frame->width, 200);
    EXPECT_EQ(frame->height, 100);
}

TEST_F(WorkspaceTest, AsksTheServerForTheProcessThatAWindowDoesNotName) {
    const TestWindow window(*peer_);
    EXPECT_EQ(processOfWindow(*services_->connection, window.id()),
              QCoreApplication::applicationPid());
}

TEST_F(WorkspaceTest, ReportsTheLossOfTheServer) {
    bool isLost = false;
    QObject::connect(services_->connection.get(), &X11Connection::lost, services_->connection.get(),
                     [&] { isLost = true; });
    xcb_kill_client(peer_->xcb(), services_->connection->window());
    peer_->serverTime();
    EXPECT_TRUE(waitFor([&] { return isLost; }));
    EXPECT_TRUE(wait(pasteboard().items()).isEmpty());
    EXPECT_EQ(services_->workspace->frontmostApplication(), nullptr);
}

TEST(TerminalCatalogTest, FindsInstalledTerminalsByTheirDesktopFiles) {
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("applications")));
    const auto write = [&](const char *name, const QByteArray &text) {
        QFile file(folder.filePath(QStringLiteral("applications/") + QLatin1String(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    };
    write("org.example.Shelly.desktop",
          "[Desktop Entry]\nExec=/opt/bin/shelly-bin %U\nStartupWMClass=ShellyWindow\n"
          "Categories=System;TerminalEmulator;\n[Desktop Action x]\nExec=other\n");
    write("editor.desktop", "[Desktop Entry]\nExec=editor\nCategories=Utility;\n"
                            "Keywords=TerminalEmulator;\n");
    const TerminalCatalog catalog({folder.path()});
    const auto isTerminal = [&](const char *name) {
        return catalog.isTerminal(QString::fromLatin1(name), QStringLiteral("Unknown"));
    };
    for (const char *name : {"shelly", "shelly-bin", "ShellyWindow", "org.example.shelly"})
        EXPECT_TRUE(isTerminal(name)) << name;
    for (const char *name : {"editor", "other", "", "Gedit"})
        EXPECT_FALSE(isTerminal(name)) << name;
    EXPECT_TRUE(catalog.isTerminal(QStringLiteral("xterm"), QStringLiteral("XTerm")));
    EXPECT_TRUE(TerminalCatalog({QStringLiteral("/nowhere")})
                    .isTerminal(QStringLiteral("x"), QStringLiteral("Gnome-terminal")));
}

} // namespace

} // namespace quillmender::x11

int main(int argc, char **argv) {
    return quillmender::x11::runX11Tests(argc, argv);
}
