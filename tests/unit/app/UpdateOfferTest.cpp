#include "CoordinatorFixture.h"
#include "support/RunTask.h"

namespace quillmender {
namespace {

constexpr int updateItem = 2;

class UpdateOfferTest : public CoordinatorFixture {
  protected:
    void startWith(const QByteArray &version) {
        coordinator->start();
        log->clear();
        transport.answer(200, R"({"version":")" + version +
                                  R"(","download_url":"https://releases.test/get"})");
    }
    bool awaitAlert() const {
        return QTest::qWaitFor([this] { return alert.has_value(); });
    }
    const StatusMenuItem &item() const { return statusItem->contents.menu.at(updateItem); }

    const QByteArray newer = R"({"version":"2","download_url":"https://releases.test/get"})";
    const QString opened = QStringLiteral("openUrl https://releases.test/get");
};

TEST_F(UpdateOfferTest, AsksForTheManifestAtLaunch) {
    coordinator->start();
    ASSERT_EQ(transport.requests.size(), 1);
    EXPECT_EQ(transport.requests.constFirst().url,
              QUrl(QStringLiteral("https://releases.test/latest.json")));
    EXPECT_TRUE(item().hidden);
}

TEST_F(UpdateOfferTest, OffersTheNewerReleaseInMenuAndAlert) {
    startWith("1.0.1");
    ASSERT_TRUE(awaitAlert());
    EXPECT_EQ(item().title, QStringLiteral("Download Quillmender 1.0.1"));
    EXPECT_FALSE(item().hidden);
    ASSERT_TRUE(coordinator->availableUpdate());
    EXPECT_EQ(coordinator->availableUpdate()->version, QStringLiteral("1.0.1"));
    EXPECT_EQ(alert->messageText, QStringLiteral("Quillmender 1.0.1 is available"));
    EXPECT_EQ(alert->informativeText,
              QStringLiteral("A newer version of Quillmender has been published. Do you want to "
                             "download it now?"));
    EXPECT_EQ(alert->buttons, QStringList({QStringLiteral("Download"), QStringLiteral("Later")}));
}

TEST_F(UpdateOfferTest, DownloadOpensItAndTheItemStays) {
    startWith("2");
    ASSERT_TRUE(awaitAlert());
    log->clear();
    answerAlert(0);
    EXPECT_EQ(*log, QStringList{opened});
    EXPECT_FALSE(item().hidden);
}

TEST_F(UpdateOfferTest, LaterOpensNothingAndTheItemStays) {
    startWith("2");
    ASSERT_TRUE(awaitAlert());
    log->clear();
    answerAlert(1);
    EXPECT_EQ(*log, QStringList());
    EXPECT_FALSE(item().hidden);
    EXPECT_EQ(item().title, QStringLiteral("Download Quillmender 2"));
    item().handler();
    EXPECT_EQ(*log, QStringList{opened});
}

TEST_F(UpdateOfferTest, TheAlertComesOnce) {
    startWith("2");
    ASSERT_TRUE(awaitAlert());
    alert.reset();
    coordinator->presentUpdateAlertIfNeeded(*coordinator->availableUpdate());
    coordinator->presentUpdateAlertIfNeeded(
        {QStringLiteral("3"), QUrl(QStringLiteral("https://releases.test/3"))});
    EXPECT_FALSE(alert);
}

TEST_F(UpdateOfferTest, NothingNewerChangesNothing) {
    startWith("1.0.0");
    QCoreApplication::processEvents();
    EXPECT_FALSE(alert);
    EXPECT_TRUE(item().hidden);
    EXPECT_EQ(item().title, QStringLiteral("Download Latest Version"));
    EXPECT_FALSE(coordinator->availableUpdate());
    item().handler();
    EXPECT_EQ(*log, QStringList());
}

TEST_F(UpdateOfferTest, AFailureChangesNothing) {
    coordinator->start();
    transport.fail(QStringLiteral("no network"));
    QCoreApplication::processEvents();
    EXPECT_FALSE(alert);
    EXPECT_TRUE(item().hidden);
    EXPECT_EQ(coordinator->errorMessage(), std::nullopt);
}

TEST_F(UpdateOfferTest, TheAlertWaitsForTheEndOfAWriteBack) {
    capture(QStringLiteral("text"));
    focus->replacement.outcome = Replacement::Outcome::refused;
    coordinator->run(coordinator->actions().constFirst());
    clock->hold();
    transport.answerText("answer");
    ASSERT_TRUE(QTest::qWaitFor([this] { return clock->sleeps > 0; })) << "a paste is under way";

    coordinator->start();
    transport.answer(200, newer);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !item().hidden; })) << "the menu takes no keyboard";
    QCoreApplication::processEvents();
    EXPECT_FALSE(alert);
    EXPECT_TRUE(coordinator->isWorking());

    clock->release();
    awaitEnd();
    ASSERT_TRUE(awaitAlert());
    EXPECT_GT(log->indexOf(QStringLiteral("show alert")),
              log->indexOf(QStringLiteral("type paste")));
    EXPECT_EQ(log->last(), QStringLiteral("show alert"));
}

TEST_F(UpdateOfferTest, TheAlertWaitsForARunThatWaitsItself) {
    capture(QStringLiteral("text"));
    secrets->hold();
    coordinator->run(coordinator->actions().constFirst());
    coordinator->start();
    transport.answer(200, newer);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !item().hidden; }));
    QCoreApplication::processEvents();
    EXPECT_FALSE(alert);
    secrets->release();
    ASSERT_TRUE(QTest::qWaitFor([this] { return transport.requests.size() == 2; }));
    QCoreApplication::processEvents();
    EXPECT_FALSE(alert);
    transport.answerText("answer");
    ASSERT_TRUE(awaitAlert());
    EXPECT_FALSE(coordinator->isWorking());
    EXPECT_EQ(written(), QStringLiteral("answer"));
}

TEST_F(UpdateOfferTest, TheAlertWaitsForTheEndOfACapture) {
    focus->reading = {};
    clock->hold();
    coordinator->beginWorkflow();
    coordinator->start();
    transport.answer(200, newer);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !item().hidden; }));
    QCoreApplication::processEvents();
    EXPECT_FALSE(alert);
    clock->release();
    ASSERT_TRUE(awaitAlert());
    EXPECT_GT(log->indexOf(QStringLiteral("show alert")),
              log->indexOf(QStringLiteral("makeKeyAndOrderFront")));
}

TEST_F(UpdateOfferTest, TheReleaseIsPublishedBeforeItIsShown) {
    coordinator->start();
    PublishedChanges changes(*coordinator);
    transport.answer(200, newer);
    ASSERT_TRUE(awaitAlert());
    EXPECT_EQ(changes.take(), QStringList(QStringLiteral("update: 2")));
}

TEST_F(UpdateOfferTest, NothingIsOfferedToAProgramThatEnds) {
    coordinator->start();
    test::runTask(coordinator->endOperations(std::chrono::seconds(20)));
    transport.answer(200, R"({"version":"2","download_url":"https://releases.test/get"})");
    QCoreApplication::processEvents();
    EXPECT_FALSE(alert);
    EXPECT_TRUE(item().hidden);
}

} // namespace
} // namespace quillmender
