#pragma once

#include "app/AppCoordinator.h"
#include "fakes/FakeAccessibilityAccess.h"
#include "fakes/FakeAppearance.h"
#include "fakes/FakeChords.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeFocusedText.h"
#include "fakes/FakeHotKeys.h"
#include "fakes/FakeLoginItem.h"
#include "fakes/FakeOwnWindows.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakeSecrets.h"
#include "fakes/FakeStatusItem.h"
#include "fakes/FakeSymbols.h"
#include "fakes/FakeTransport.h"
#include "fakes/FakeWorkspace.h"
#include "model/AppFailure.h"
#include "platform/none/NoneInstance.h"
#include "platform/none/NoneUserDefaults.h"

#include <QTest>
#include <gtest/gtest.h>

namespace quillmender {

/// A panel that only says what was done with it.
class FakePanel : public PickerPanel {
  public:
    explicit FakePanel(fakes::CallLog log) : log_(std::move(log)) {}
    void centre(std::optional<DesktopRect>) override { log_->append(QStringLiteral("centre")); }
    void makeKeyAndOrderFront() override {
        log_->append(QStringLiteral("makeKeyAndOrderFront"));
        isVisible = true;
    }
    void orderOut() override {
        log_->append(QStringLiteral("orderOut"));
        isVisible = false;
    }
    std::shared_ptr<SteppedAside> stepAside() override {
        if (!needsSteppingAside)
            return nullptr;
        log_->append(QStringLiteral("stepAside"));
        return std::make_shared<Aside>(log_);
    }

    bool isVisible = false;
    /// As where the focus goes back to the source only when the panel is hidden.
    bool needsSteppingAside = false;

  private:
    class Aside : public SteppedAside {
      public:
        explicit Aside(fakes::CallLog log) : log_(std::move(log)) {}
        ~Aside() override {
            if (!staysAway_)
                log_->append(QStringLiteral("come back"));
        }
        void stayAway() override {
            log_->append(QStringLiteral("stayAway"));
            staysAway_ = true;
        }

      private:
        fakes::CallLog log_;
        bool staysAway_ = false;
    };

    fakes::CallLog log_;
};

/// What a coordinator publishes, in the order in which it changes; what is published anew but stays
/// the same is left out, and what changes without having been announced is told of.
class PublishedChanges {
  public:
    explicit PublishedChanges(AppCoordinator &coordinator)
        : coordinator_(coordinator),
          last_(state()),
          connection_(
              QObject::connect(&coordinator, &Observable::objectWillChange, &coordinator, [this] {
                  look();
                  isAnnounced_ = true;
              })) {}
    ~PublishedChanges() { QObject::disconnect(connection_); }
    PublishedChanges(const PublishedChanges &) = delete;
    PublishedChanges &operator=(const PublishedChanges &) = delete;

    /// The changes since the last time, each as "name: value".
    QStringList take() {
        look();
        return std::exchange(changes_, {});
    }

  private:
    QStringList state() const {
        return {
            QStringLiteral("session: ") + (coordinator_.currentSession()
                                               ? coordinator_.currentSession()->selectedText
                                               : QStringLiteral("none")),
            QStringLiteral("preview: ") + coordinator_.selectedTextPreview(),
            QStringLiteral("title: ") + coordinator_.captureTitle(),
            QStringLiteral("description: ") + coordinator_.captureDescription().left(5),
            QStringLiteral("error: ") +
                coordinator_.errorMessage().value_or(QStringLiteral("none")).left(20),
            QStringLiteral("working: ") +
                (coordinator_.isWorking() ? QStringLiteral("yes") : QStringLiteral("no")),
            QStringLiteral("action: ") + coordinator_.currentActionTitle(),
            QStringLiteral("instruction: ") + coordinator_.customInstruction(),
            QStringLiteral("update: ") + (coordinator_.availableUpdate()
                                              ? coordinator_.availableUpdate()->version
                                              : QStringLiteral("none")),
        };
    }

    void look() {
        const QStringList now = state();
        for (qsizetype i = 0; i < now.size(); ++i) {
            if (now[i] == last_[i])
                continue;
            changes_.append(now[i]);
            // The session itself is shown nowhere.
            if (!isAnnounced_ && !now[i].startsWith(u"session"))
                changes_.append(QStringLiteral("not announced"));
        }
        last_ = now;
        isAnnounced_ = false;
    }

    AppCoordinator &coordinator_;
    QStringList last_;
    QStringList changes_;
    bool isAnnounced_ = false;
    QMetaObject::Connection connection_;
};

/// A coordinator on recording fakes, with a key in the keychain.
class CoordinatorFixture : public testing::Test {
  protected:
    CoordinatorFixture() {
        platform.clock = make(clock);
        platform.instance = std::make_unique<NoneInstance>();
        platform.userDefaults = std::make_unique<NoneUserDefaults>();
        platform.secrets = make(secrets);
        platform.loginItem = std::make_unique<fakes::FakeLoginItem>(log);
        platform.workspace = make(workspace);
        platform.accessibilityAccess = make(access);
        platform.focusedText = make(focus);
        platform.pasteboard = make(pasteboard);
        platform.chords = make(chords);
        platform.hotKeys = make(hotKeys);
        platform.ownWindows = std::make_unique<fakes::FakeOwnWindows>(log);
        platform.symbols = std::make_unique<fakes::FakeSymbols>();
        platform.appearance = std::make_unique<fakes::FakeAppearance>();
        platform.statusItem = make(statusItem);
        secrets->items[{QStringLiteral("com.quillmender.openAI"), QStringLiteral("api-key")}] =
            "key";

        WindowFactory windows;
        windows.pickerPanel = [this](ActionPickerModel &) {
            log->append(QStringLiteral("make panel"));
            auto made = std::make_unique<FakePanel>(log);
            panel = made.get();
            return made;
        };
        windows.showSettings = [this] { log->append(QStringLiteral("show settings")); };
        windows.showAbout = [this] { log->append(QStringLiteral("show about")); };
        windows.terminate = [this] { log->append(QStringLiteral("terminate")); };
        windows.showAlert = [this](const Alert &shown, std::function<void(int)> answered) {
            log->append(QStringLiteral("show alert"));
            alert = shown;
            answerAlert = std::move(answered);
        };
        coordinator = std::make_unique<AppCoordinator>(
            platform, LLMClient(transport), UpdateChecker(transport),
            ReleaseSource{QStringLiteral("1.0.0"),
                          QUrl(QStringLiteral("https://releases.test/latest.json"))},
            std::move(windows));
        log->clear();
    }

    /// What is under way ends, and leaves nothing behind.
    void TearDown() override {
        transport.fail(QStringLiteral("the end"));
        QCoreApplication::sendPostedEvents();
    }

    template <typename Fake> std::unique_ptr<Fake> make(Fake *&fake) {
        auto made = std::make_unique<Fake>(log);
        fake = made.get();
        return made;
    }

    void select(const QString &text) {
        focus->reading.selectedText = text;
        focus->reading.selectedRange = TextRange{0, text.size()};
    }

    /// A session with this text captured and the panel open.
    void capture(const QString &text) {
        select(text);
        coordinator->beginWorkflow();
        log->clear();
    }

    /// Lets the request under way end with this answer, and the work that waits for it.
    void answerText(const QByteArray &text) {
        transport.answerText(text);
        awaitEnd();
    }
    void awaitEnd() const {
        EXPECT_TRUE(QTest::qWaitFor([this] { return !coordinator->isWorking(); }));
    }

    /// What was written over the captured text last; null when nothing was.
    QString written() const {
        const QStringList orders = log->filter(QStringLiteral("focus.replace "));
        return orders.isEmpty() ? QString() : orders.constLast().section(u' ', 2);
    }

    void expectReset() const {
        EXPECT_EQ(coordinator->currentSession(), nullptr);
        EXPECT_EQ(coordinator->currentActionTitle(), QString());
        EXPECT_EQ(coordinator->errorMessage(), std::nullopt);
        EXPECT_EQ(coordinator->selectedTextPreview(), QString());
        EXPECT_EQ(coordinator->captureTitle(), QStringLiteral("Selected Text"));
        EXPECT_EQ(coordinator->captureDescription(), QString());
        EXPECT_EQ(coordinator->customInstruction(), QString());
    }

    fakes::CallLog log = fakes::makeCallLog();
    fakes::FakeTransport transport{log};
    Platform platform;
    fakes::FakeClock *clock = nullptr;
    fakes::FakeAccessibilityAccess *access = nullptr;
    fakes::FakeFocusedText *focus = nullptr;
    fakes::FakePasteboard *pasteboard = nullptr;
    fakes::FakeChords *chords = nullptr;
    fakes::FakeWorkspace *workspace = nullptr;
    fakes::FakeHotKeys *hotKeys = nullptr;
    fakes::FakeSecrets *secrets = nullptr;
    fakes::FakeStatusItem *statusItem = nullptr;
    FakePanel *panel = nullptr;
    std::optional<Alert> alert;
    std::function<void(int)> answerAlert;
    std::unique_ptr<AppCoordinator> coordinator;
};

} // namespace quillmender
