#include "unit/platform/wayland/FakeSway.h"

#include <gmock/gmock.h>

namespace quillmender::sway {

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class SwayIpcTest : public testing::Test {
  protected:
    void SetUp() override {
        ipc_ = std::make_unique<SwayIpc>(sway_.path());
        QObject::connect(ipc_.get(), &SwayIpc::lost, ipc_.get(), [this] { ++losses_; });
        QObject::connect(ipc_.get(), &SwayIpc::connected, ipc_.get(), [this] { ++returns_; });
        QObject::connect(ipc_.get(), &SwayIpc::eventReceived, ipc_.get(),
                         [this](Event event, const QJsonObject &content) {
                             events_.append({event, content[u"change"].toString()});
                         });
        ASSERT_TRUE(waitFor([this] { return sway_.connections() == 1; }));
    }

    std::optional<QJsonDocument> ask(Request request, std::chrono::milliseconds limit = 20s) {
        return QCoro::waitFor(ipc_->ask(request, {}, limit));
    }

    bool comesBack() {
        return waitFor([this] { return losses_ == 1 && returns_ == 1 && ipc_->isConnected(); });
    }

    FakeSway sway_;
    std::unique_ptr<SwayIpc> ipc_;
    int losses_ = 0;
    int returns_ = 0;
    QList<std::pair<Event, QString>> events_;
};

TEST_F(SwayIpcTest, AsksAndIsAnswered) {
    const auto answer = ask(Request::getBindingState);
    ASSERT_TRUE(answer.has_value());
    EXPECT_EQ(answer->object()[u"name"].toString(), QStringLiteral("default"));
}

TEST_F(SwayIpcTest, TellsAnswersFromEvents) {
    sway_.silentTo = {Request::getBindingState};
    auto task = ipc_->ask(Request::getBindingState, {}, 20s);
    ASSERT_TRUE(waitFor([&] { return sway_.asked(Request::getBindingState) == 1; }));
    sway_.sendEvent(Event::workspace, R"({"change":"reload"})");
    sway_.answer(Request::getBindingState, R"({"name":"asked"})");
    sway_.sendEvent(Event::window, R"({"change":"focus"})");
    const auto answer = QCoro::waitFor(std::move(task));
    ASSERT_TRUE(answer.has_value());
    EXPECT_EQ(answer->object()[u"name"].toString(), QStringLiteral("asked"));
    EXPECT_TRUE(waitFor([&] { return events_.size() == 2; }));
    EXPECT_EQ(events_.value(0).second, QStringLiteral("reload"));
    EXPECT_EQ(events_.value(1).second, QStringLiteral("focus"));
}

TEST_F(SwayIpcTest, AnAnswerInPiecesIsOne) {
    sway_.silentTo = {Request::getBindingState};
    auto task = ipc_->ask(Request::getBindingState, {}, 20s);
    ASSERT_TRUE(waitFor([&] { return sway_.asked(Request::getBindingState) == 1; }));
    const QByteArray whole =
        encode({static_cast<quint32>(Request::getBindingState), R"({"name":"pieces"})"});
    for (const char byte : whole) {
        sway_.sendRaw(QByteArray(1, byte));
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(QCoro::waitFor(std::move(task)).has_value());
}

TEST_F(SwayIpcTest, ALateAnswerIsForNobody) {
    sway_.silentTo = {Request::getBindingState};
    EXPECT_EQ(ask(Request::getBindingState, 20ms), std::nullopt);
    auto task = ipc_->ask(Request::getBindingState, {}, 20s);
    ASSERT_TRUE(waitFor([&] { return sway_.asked(Request::getBindingState) == 2; }));
    sway_.answer(Request::getBindingState, R"({"name":"late"})");
    sway_.answer(Request::getBindingState, R"({"name":"in time"})");
    const auto answer = QCoro::waitFor(std::move(task));
    ASSERT_TRUE(answer.has_value());
    EXPECT_EQ(answer->object()[u"name"].toString(), QStringLiteral("in time"));
    EXPECT_EQ(losses_, 0);
}

TEST_F(SwayIpcTest, GarbageEndsTheConnectionWhichComesBack) {
    sway_.sendRaw("HTTP/1.1 400 Bad Request\r\n\r\n");
    EXPECT_TRUE(comesBack());
    EXPECT_TRUE(ask(Request::getBindingState).has_value());
}

TEST_F(SwayIpcTest, WhatIsNoJsonEndsTheConnection) {
    sway_.sendEvent(Event::window, "{\"change\":");
    EXPECT_TRUE(comesBack());
    EXPECT_TRUE(events_.isEmpty());
}

TEST_F(SwayIpcTest, ASecondAnswerEndsTheConnection) {
    EXPECT_TRUE(ask(Request::getBindingState).has_value());
    sway_.answer(Request::getBindingState, R"({"name":"again"})");
    EXPECT_TRUE(comesBack());
}

TEST_F(SwayIpcTest, AnAnswerToAnotherQuestionEndsTheConnection) {
    sway_.silentTo = {Request::getBindingState};
    auto task = ipc_->ask(Request::getBindingState, {}, 20s);
    ASSERT_TRUE(waitFor([&] { return sway_.asked(Request::getBindingState) == 1; }));
    sway_.answer(Request::getTree, "{}");
    EXPECT_EQ(QCoro::waitFor(std::move(task)), std::nullopt);
    EXPECT_TRUE(comesBack());
}

TEST_F(SwayIpcTest, AnAnswerWithoutEndEndsTheConnection) {
    QByteArray endless = encode({static_cast<quint32>(Event::window), {}});
    endless[9] = '\x7f';
    sway_.sendRaw(endless);
    EXPECT_TRUE(comesBack());
}

TEST_F(SwayIpcTest, SubscribesAgainOnALaterConnection) {
    ipc_->subscribe({QStringLiteral("window")});
    ipc_->subscribe({QStringLiteral("window"), QStringLiteral("binding")});
    ASSERT_TRUE(waitFor([&] { return sway_.subscriptions().size() == 2; }));
    sway_.goAway();
    ASSERT_TRUE(waitFor([&] { return losses_ == 1; }));
    EXPECT_FALSE(ipc_->isConnected());
    EXPECT_EQ(ask(Request::getBindingState), std::nullopt);
    sway_.listen();
    ASSERT_TRUE(comesBack());
    ASSERT_TRUE(waitFor([&] { return sway_.subscriptions().size() == 3; }));
    EXPECT_THAT(sway_.subscriptions(),
                ElementsAre(QStringLiteral(R"(["window"])"), QStringLiteral(R"(["binding"])"),
                            QStringLiteral(R"(["window","binding"])")));
}

TEST_F(SwayIpcTest, WhoWaitsGoesOnWhenTheConnectionEnds) {
    sway_.silentTo = {Request::getTree};
    auto task = ipc_->ask(Request::getTree, {}, 20s);
    ASSERT_TRUE(waitFor([&] { return sway_.asked(Request::getTree) == 1; }));
    sway_.goAway();
    EXPECT_EQ(QCoro::waitFor(std::move(task)), std::nullopt);
}

TEST_F(SwayIpcTest, WhoWaitsGoesOnWhenTheProgramLetsGoOfIt) {
    sway_.silentTo = {Request::getTree};
    auto task = ipc_->ask(Request::getTree, {}, 20s);
    ipc_.reset();
    EXPECT_EQ(QCoro::waitFor(std::move(task)), std::nullopt);
}

TEST_F(SwayIpcTest, ASilentCompositorIsNotAskedWithoutEnd) {
    sway_.silentTo = {Request::getTree};
    for (int i = 0; i < 1000; ++i)
        ipc_->post(Request::getTree, {});
    EXPECT_EQ(ask(Request::getBindingState, 20s), std::nullopt);
    EXPECT_EQ(losses_, 0);
}

} // namespace

} // namespace quillmender::sway
