#pragma once

#include "desktop/wayland/clipboard/ForeignClient.h"
#include "desktop/wayland/clipboard/SwayServer.h"
#include "desktop/x11/WaitFor.h"
#include "platform/linux/wayland/clipboard/PrimarySelection.h"
#include "platform/linux/wayland/clipboard/ServingProcess.h"
#include "platform/linux/wayland/clipboard/WaylandLentText.h"
#include "platform/linux/wayland/clipboard/WaylandPasteboard.h"
#include "platform/linux/wayland/keys/CopyWatch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace quillmender::wayland {

using x11::finishTurn;
using x11::waitFor;

/// A test with a compositor, the program's clipboard on it, and another application.
class ClipboardTest : public testing::Test {
  protected:
    static void TearDownTestSuite() { sharedServer().reset(); }

    void SetUp() override {
        if (!SwayServer::isInstalled())
            GTEST_SKIP() << "sway is not installed";
        if (!sharedServer() || !sharedServer()->isRunning())
            sharedServer() = std::make_unique<SwayServer>();
        connection_ = openPatiently(server().display());
        ASSERT_NE(connection_, nullptr);
        control_ = DataControl::create(*connection_);
        ASSERT_NE(control_, nullptr);
        pasteboard_ = std::make_unique<WaylandPasteboard>(*control_, chords_, copies_);
        other_ = std::make_unique<ForeignClient>(server().display());
        other_->clear();
        settle();
    }

    static SwayServer &server() { return *sharedServer(); }
    WaylandPasteboard &pasteboard() { return *pasteboard_; }

    template <typename Value> Value wait(QCoro::Task<Value> task) {
        return QCoro::waitFor(std::move(task));
    }

    std::shared_ptr<WaylandLentText> lend(const QString &text) {
        return std::dynamic_pointer_cast<WaylandLentText>(pasteboard().lend(text, nullptr));
    }

    /// Until the program has heard of everything, and what it had to say to that is heard of.
    void settleOwn() {
        for (int i = 0; i < 2; ++i) {
            EXPECT_TRUE(QCoro::waitFor(connection_->roundTrip(std::chrono::seconds(10))));
            finishTurn();
        }
    }

    /// The same of both sides.
    void settle() {
        settleOwn();
        other_->settle();
        settleOwn();
    }

    static QStringList typesOf(const QList<PasteboardItem> &items) {
        QStringList names;
        for (const PasteboardItem &item : items) {
            for (const PasteboardRepresentation &each : item.representations())
                names.append(each.type);
        }
        return names;
    }

    static QList<PasteboardItem> itemOf(const QString &type, const QByteArray &data) {
        PasteboardItem item;
        item.setData(type, data);
        return {item};
    }

  private:
    static std::unique_ptr<SwayServer> &sharedServer() {
        static std::unique_ptr<SwayServer> server;
        return server;
    }

  protected:
    ChordMoment chords_;
    CopyWatch copies_;
    std::unique_ptr<WaylandConnection> connection_;
    std::unique_ptr<DataControl> control_;
    std::unique_ptr<WaylandPasteboard> pasteboard_;
    std::unique_ptr<ForeignClient> other_;
};

/// The process that serves the clipboard is this one's program too.
inline int runClipboardTests(int argc, char **argv) {
    if (isAskedToServe(argc, argv))
        return serveClipboard(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}

} // namespace quillmender::wayland
