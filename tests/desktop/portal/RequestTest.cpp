#include "desktop/portal/PortalTest.h"

#include <QTimer>

namespace quillmender {
namespace {

using namespace std::chrono_literals;
using portal::Portal;
using portal::PortalAnswer;
using portal::PortalQuestion;
using test::runTask;
using testing::ElementsAre;

const QString method = QStringLiteral("Camera.AccessCamera");

class RequestTest : public PortalTest {
  protected:
    PortalAnswer ask(std::chrono::milliseconds limit = Portal::noLimit) {
        const PortalQuestion question{
            QStringLiteral("Camera"), QStringLiteral("AccessCamera"), {}, {}};
        return runTask(portal_.ask(question, limit));
    }

    void answerWith(Manner manner) {
        fake_->set(method, {0, {{QStringLiteral("a"), QStringLiteral("b")}}, manner});
    }
};

TEST_F(RequestTest, WhoAsksIsToldFirstAndOnce) {
    EXPECT_TRUE(ask().isGranted());
    EXPECT_TRUE(ask().isGranted());
    EXPECT_THAT(fake_->asked(), ElementsAre(QStringLiteral("Registry.Register"), method, method));
}

TEST_F(RequestTest, APortalWithoutARegistryIsAskedAllTheSame) {
    fake_->set(QStringLiteral("Registry.Register"), {0, {}, Manner::refused});
    EXPECT_TRUE(ask().isGranted());
}

TEST_F(RequestTest, AResponseCountsOnceWheneverAndWhereverItComes) {
    for (const Manner manner : {Manner::usual, Manner::early, Manner::elsewhere, Manner::twice}) {
        answerWith(manner);
        const PortalAnswer answer = ask(20s);
        EXPECT_TRUE(answer.isGranted()) << int(manner);
        EXPECT_EQ(answer.results.value(QStringLiteral("a")), QStringLiteral("b")) << int(manner);
    }
    EXPECT_FALSE(fake_->asked().contains(QStringLiteral("Request.Close")));
}

TEST_F(RequestTest, TheUserMayRefuseAndThePortalMayFail) {
    fake_->set(method, {1, {}});
    EXPECT_EQ(ask().outcome, Outcome::cancelled);
    fake_->set(method, {2, {{QStringLiteral("a"), 1}}});
    const PortalAnswer failed = ask();
    EXPECT_EQ(failed.outcome, Outcome::failed);
    EXPECT_EQ(failed.results.value(QStringLiteral("a")), 1) << "it may have done it all the same";
    answerWith(Manner::refused);
    EXPECT_EQ(ask().reason, QStringLiteral("not now"));
    answerWith(Manner::garbled);
    EXPECT_EQ(ask().reason, QStringLiteral("the portal answers nonsense"));
}

TEST_F(RequestTest, WhatIsNotAnsweredInTimeIsClosed) {
    answerWith(Manner::silent);
    const PortalAnswer answer = ask(100ms);
    EXPECT_EQ(answer.outcome, Outcome::unanswered);
    EXPECT_FALSE(answer.reason.isEmpty());
    EXPECT_TRUE(harness::becomesTrue(
        [&] { return fake_->asked().endsWith(QStringLiteral("Request.Close")); }));
    answerWith(Manner::mute);
    fake_->forget();
    EXPECT_EQ(ask(100ms).outcome, Outcome::unanswered);
    EXPECT_TRUE(harness::becomesTrue(
        [&] { return fake_->asked().endsWith(QStringLiteral("Request.Close")); }));
}

TEST_F(RequestTest, APortalThatEndsWhileTheUserIsAskedHasFailed) {
    answerWith(Manner::silent);
    QTimer wait;
    QObject::connect(&wait, &QTimer::timeout, [&] {
        if (!fake_->asked().contains(method))
            return;
        wait.stop();
        fake_.reset();
    });
    wait.start(5);
    EXPECT_EQ(ask().reason, QStringLiteral("the portal has ended"));
    fake_.emplace();
    EXPECT_TRUE(ask().isGranted());
    EXPECT_THAT(fake_->asked(), ElementsAre(QStringLiteral("Registry.Register"), method));
}

TEST_F(RequestTest, WithoutAPortalTheAnswerIsNo) {
    fake_.reset();
    EXPECT_EQ(ask().outcome, Outcome::failed);
    EXPECT_EQ(runTask(portal_.version(QStringLiteral("Camera"))), 0u);
    fake_.emplace();
    EXPECT_EQ(runTask(portal_.version(QStringLiteral("Camera"))), 1u);
}

} // namespace
} // namespace quillmender
