#include "platform/linux/wayland/keys/WaylandChords.h"

#include "platform/SignalWait.h"
#include "platform/linux/PasteText.h"
#include "platform/linux/wayland/ChordMoment.h"
#include "platform/linux/wayland/keys/CopyWatch.h"
#include "platform/linux/wayland/windows/SourceApplications.h"
#include "platform/linux/wayland/windows/WaylandFrontmostSource.h"
#include "unit/platform/wayland/FakeToplevels.h"
#include "unit/platform/wayland/WaitFor.h"

#include <gmock/gmock.h>

#include <csignal>
#include <unistd.h>

namespace quillmender::wayland {

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

/// Notes what happens in which order.
using Log = std::vector<std::string>;

class FakeTyping : public KeyTyping {
  public:
    FakeTyping(Log &log, ChordMoment &moment) : log_(log), moment_(moment) {}

    QCoro::Task<TypedOutcome> type(TypedKeys keys, std::function<bool()> isStillMeant,
                                   std::function<void()> beforeLast) override {
        if (whenAsked)
            whenAsked();
        if (outcome)
            co_return *outcome;
        if (wait > 0ms) {
            QTimer timer;
            timer.start(wait);
            co_await SignalWait(&timer, &QTimer::timeout);
        }
        if (!isStillMeant())
            co_return TypedOutcome{.reason = QStringLiteral("not meant")};
        const quint64 before = moment_.count();
        beforeLast();
        if (moment_.count() == before + 1)
            log_.emplace_back("noted");
        log_.emplace_back(keys == TypedKeys::controlC   ? "C"
                          : keys == TypedKeys::controlV ? "V"
                                                        : "Shift+Insert");
        co_return TypedOutcome{.isTyped = true};
    }

    std::function<void()> whenAsked;
    std::optional<TypedOutcome> outcome;
    std::chrono::milliseconds wait{0};

  private:
    Log &log_;
    ChordMoment &moment_;
};

class FakeRelay : public KeyRelay {
  public:
    FakeRelay(Log &log, bool isClear) : log_(log), isClear_(isClear) {}

    QCoro::Task<bool> waitUntilPassed(std::chrono::milliseconds) override {
        log_.emplace_back("relay");
        QTimer timer;
        timer.start(1);
        co_await SignalWait(&timer, &QTimer::timeout);
        if (whenPassed)
            whenPassed();
        co_return isClear_;
    }

    std::function<void()> whenPassed;

  private:
    Log &log_;
    bool isClear_;
};

class FakePulse : public ApplicationPulse {
  public:
    FakePulse(Log &log, bool isAlive) : log_(log), isAlive_(isAlive) {}

    QCoro::Task<bool> beats(std::chrono::milliseconds) override {
        log_.emplace_back("pulse");
        QTimer timer;
        timer.start(1);
        co_await SignalWait(&timer, &QTimer::timeout);
        co_return isAlive_;
    }

  private:
    Log &log_;
    bool isAlive_;
};

class FakeText : public LentText, public PasteText {
  public:
    explicit FakeText(Log &log) : log_(log) {}

    QCoro::Task<bool> wasRead(std::chrono::milliseconds) override { co_return true; }
    bool isOffered() const override { return isThere; }
    bool isLentToTerminal() const override { return isTerminals; }
    QCoro::Task<Obstacle> lendToTerminal(TakesLineEnds takesLineEnds) override {
        log_.emplace_back(takesLineEnds() ? "lent with lines" : "lent");
        isTerminals = !obstacle;
        co_return obstacle;
    }

    bool isThere = true;
    bool isTerminals = false;
    Obstacle obstacle;

  private:
    Log &log_;
};

class WaylandChordsTest : public testing::Test {
  protected:
    using Outcome = ChordResult::Outcome;

    WaylandChordsTest() {
        front_.id = "1";
        front_.appId = QStringLiteral("editor");
        toplevels_.front = front_;
    }

    RunningApplicationRef application() {
        const auto before = std::exchange(toplevels_.front, front_);
        const auto made = applications_.frontmost();
        toplevels_.front = before;
        return made;
    }

    ChordTarget target(bool withText) {
        return {application(), context_, withText ? text_ : nullptr};
    }

    ChordResult type(Chord chord) {
        return QCoro::waitFor(chords_->type(chord, target(chord == Chord::paste)));
    }

    void becomeTerminal() {
        front_.appId = QStringLiteral("foot");
        toplevels_.front = front_;
    }

    Log log_;
    FakeToplevels toplevels_;
    Toplevel front_;
    SourceApplications applications_{toplevels_};
    WaylandFrontmostSource frontmost_{applications_, {}};
    ChordMoment moment_;
    CopyWatch copies_;
    FakeTyping typing_{log_, moment_};
    std::shared_ptr<FakeText> text_ = std::make_shared<FakeText>(log_);
    std::shared_ptr<FocusContext> context_ = std::make_shared<FocusContext>();
    std::unique_ptr<WaylandChords> chords_ = std::make_unique<WaylandChords>(
        WaylandChordSurroundings{toplevels_, frontmost_, typing_, moment_, copies_,
                                 [this](std::chrono::milliseconds) { return waitForBridge(); }});
    bool isBridged_ = true;

  private:
    QCoro::Task<bool> waitForBridge() {
        log_.emplace_back("bridge");
        co_return isBridged_;
    }
};

TEST_F(WaylandChordsTest, TypesAndNotesTheMomentBefore) {
    EXPECT_EQ(type(Chord::copy).outcome, Outcome::typed);
    EXPECT_EQ(type(Chord::paste).outcome, Outcome::typed);
    EXPECT_THAT(log_, ElementsAre("noted", "C", "noted", "V"));
}

TEST_F(WaylandChordsTest, OneAfterAnotherInTheOrderOfAsking) {
    typing_.wait = 20ms;
    auto first = chords_->type(Chord::paste, target(true));
    typing_.wait = 0ms;
    auto second = chords_->type(Chord::copy, target(false));
    EXPECT_EQ(QCoro::waitFor(std::move(second)).outcome, Outcome::typed);
    EXPECT_EQ(QCoro::waitFor(std::move(first)).outcome, Outcome::typed);
    EXPECT_THAT(log_, ElementsAre("noted", "V", "noted", "C"));
}

TEST_F(WaylandChordsTest, WaitsUntilTheWindowIsInFront) {
    Toplevel other;
    other.id = "2";
    toplevels_.front = other;
    auto task = chords_->type(Chord::copy, target(false));
    QTimer::singleShot(20ms, &toplevels_, [this] { toplevels_.show(front_); });
    EXPECT_EQ(QCoro::waitFor(std::move(task)).outcome, Outcome::typed);
    EXPECT_TRUE(toplevels_.activated.isEmpty()) << "that is for somebody else to ask";
}

TEST_F(WaylandChordsTest, IsWithheldFromAWindowThatDoesNotCome) {
    toplevels_.isWithWindows = false;
    const ChordResult result = type(Chord::copy);
    EXPECT_EQ(result.outcome, Outcome::withheld);
    EXPECT_TRUE(result.reason.contains(QStringLiteral("did not come to the front")));
    EXPECT_TRUE(log_.empty());
}

TEST_F(WaylandChordsTest, IsWithheldFromAWindowThatLeavesBeforeTheKeys) {
    typing_.whenAsked = [this] { toplevels_.isWithWindows = false; };
    const ChordResult result = type(Chord::copy);
    EXPECT_EQ(result.outcome, Outcome::withheld);
    EXPECT_TRUE(result.reason.contains(QStringLiteral("not in front any more")));
    EXPECT_TRUE(log_.empty());
    EXPECT_EQ(moment_.count(), 0);
}

TEST_F(WaylandChordsTest, AnApplicationThatDoesNotAttendToItsEventsGetsNoKeys) {
    context_->pulse = std::make_shared<FakePulse>(log_, false);
    for (const Chord chord : {Chord::copy, Chord::paste}) {
        const ChordResult result = type(chord);
        EXPECT_EQ(result.outcome, Outcome::withheld);
        EXPECT_TRUE(result.reason.contains(QStringLiteral("does not attend")));
    }
    EXPECT_THAT(log_, ElementsAre("pulse", "pulse"));
    EXPECT_EQ(copies_.pending(), 0);
}

TEST_F(WaylandChordsTest, IsAskedForItsPulseBeforeTheKeys) {
    context_->pulse = std::make_shared<FakePulse>(log_, true);
    EXPECT_EQ(type(Chord::paste).outcome, Outcome::typed);
    EXPECT_THAT(log_, ElementsAre("pulse", "noted", "V"));
}

TEST_F(WaylandChordsTest, AWindowOfTheXServerPastesWhatTheServerHasHeardOf) {
    front_.isOfXServer = true;
    toplevels_.front = front_;
    EXPECT_EQ(type(Chord::copy).outcome, Outcome::typed);
    EXPECT_EQ(type(Chord::paste).outcome, Outcome::typed);
    EXPECT_THAT(log_, ElementsAre("noted", "C", "bridge", "noted", "V"));
    isBridged_ = false;
    const ChordResult result = type(Chord::paste);
    EXPECT_EQ(result.outcome, Outcome::withheld);
    EXPECT_TRUE(result.reason.contains(QStringLiteral("has not heard"))) << "another's text";
    EXPECT_THAT(log_, ElementsAre("noted", "C", "bridge", "noted", "V", "bridge"));
}

TEST_F(WaylandChordsTest, ATerminalOfTheXServerHasItsTextBeforeTheServerIsAsked) {
    becomeTerminal();
    front_.isOfXServer = true;
    toplevels_.front = front_;
    EXPECT_EQ(type(Chord::paste).outcome, Outcome::typed);
    EXPECT_THAT(log_, ElementsAre("lent", "bridge", "noted", "Shift+Insert"));
}

TEST_F(WaylandChordsTest, WhatFollowsACopyIsAskedAfterTheKeys) {
    front_.processId = ::getpid();
    toplevels_.front = front_;
    context_->pulse = std::make_shared<FakePulse>(log_, true);
    EXPECT_EQ(type(Chord::copy).outcome, Outcome::typed);
    EXPECT_TRUE(waitFor([this] { return log_.size() == 5; }));
    EXPECT_THAT(log_, ElementsAre("pulse", "noted", "C", "pulse", "pulse"));
}

TEST_F(WaylandChordsTest, ACopyIsFollowedFromItsKeysOn) {
    front_.processId = ::getpid();
    toplevels_.front = front_;
    EXPECT_EQ(type(Chord::paste).outcome, Outcome::typed);
    EXPECT_EQ(copies_.pending(), 0);
    EXPECT_EQ(type(Chord::copy).outcome, Outcome::typed);
    EXPECT_EQ(copies_.pending(), ::getpid());
}

TEST_F(WaylandChordsTest, NeverCopiesInATerminalOrAPasswordField) {
    context_->role = FocusContext::Role::password;
    EXPECT_EQ(type(Chord::copy).outcome, Outcome::withheld);
    context_->role = FocusContext::Role::terminal;
    EXPECT_EQ(type(Chord::copy).outcome, Outcome::withheld);
    context_->role = FocusContext::Role::unknown;
    becomeTerminal();
    EXPECT_EQ(type(Chord::copy).outcome, Outcome::withheld);
    EXPECT_TRUE(log_.empty());
}

TEST_F(WaylandChordsTest, LeavesEditorsWithOtherKeysAlone) {
    front_.appId = QStringLiteral("emacs");
    toplevels_.front = front_;
    EXPECT_EQ(type(Chord::paste).outcome, Outcome::withheld);
    EXPECT_TRUE(log_.empty());
}

TEST_F(WaylandChordsTest, PastesIntoATerminalWhatIsMadeForIt) {
    becomeTerminal();
    EXPECT_EQ(type(Chord::paste).outcome, Outcome::typed);
    EXPECT_THAT(log_, ElementsAre("lent", "noted", "Shift+Insert"));
}

TEST_F(WaylandChordsTest, ATerminalThatTakesNothingGetsNothing) {
    becomeTerminal();
    text_->obstacle = QStringLiteral("several lines");
    EXPECT_EQ(type(Chord::paste).reason, QStringLiteral("several lines"));
    text_->obstacle.reset();
    typing_.whenAsked = [this] { text_->isTerminals = false; };
    EXPECT_EQ(type(Chord::paste).outcome, Outcome::withheld);
    EXPECT_EQ(moment_.count(), 0);
}

TEST_F(WaylandChordsTest, AReplacedPasteboardIsNotPasted) {
    typing_.whenAsked = [this] { text_->isThere = false; };
    EXPECT_EQ(type(Chord::paste).outcome, Outcome::withheld);
    text_ = nullptr;
    EXPECT_EQ(type(Chord::paste).outcome, Outcome::withheld);
    EXPECT_EQ(moment_.count(), 0);
}

TEST_F(WaylandChordsTest, WaitsForWhoIsShownTheKeys) {
    context_->relay = std::make_shared<FakeRelay>(log_, true);
    EXPECT_EQ(type(Chord::copy).outcome, Outcome::typed);
    EXPECT_THAT(log_, ElementsAre("relay", "noted", "C"));
    context_->relay = std::make_shared<FakeRelay>(log_, false);
    EXPECT_EQ(type(Chord::copy).outcome, Outcome::withheld);
    EXPECT_EQ(moment_.count(), 1);
}

TEST_F(WaylandChordsTest, AStoppedApplicationGetsNothing) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        raise(SIGSTOP);
        _exit(0);
    }
    front_.processId = child;
    toplevels_.front = front_;
    ChordResult result;
    EXPECT_TRUE(waitFor([&] {
        result = type(Chord::copy);
        return result.outcome == Outcome::withheld;
    }));
    EXPECT_TRUE(result.reason.contains(QStringLiteral("is stopped")));
    kill(child, SIGKILL);
}

TEST_F(WaylandChordsTest, TellsWhatCannotBeTypedFromWhatMustNot) {
    typing_.outcome = TypedOutcome{.isUnavailable = true, .reason = QStringLiteral("no keyboard")};
    EXPECT_EQ(type(Chord::copy).outcome, Outcome::unavailable);
    typing_.outcome = TypedOutcome{.reason = QStringLiteral("modifiers")};
    const ChordResult result = type(Chord::copy);
    EXPECT_EQ(result.outcome, Outcome::withheld);
    EXPECT_EQ(result.reason, QStringLiteral("modifiers"));
}

TEST_F(WaylandChordsTest, NothingIsTypedAfterTheEnd) {
    const auto relay = std::make_shared<FakeRelay>(log_, true);
    relay->whenPassed = [this] { chords_.reset(); };
    context_->relay = relay;
    auto task = chords_->type(Chord::copy, target(false));
    EXPECT_NE(QCoro::waitFor(std::move(task)).outcome, Outcome::typed);
    EXPECT_THAT(log_, ElementsAre("relay"));
}

TEST_F(WaylandChordsTest, AnApplicationWithoutAWindowGetsNothing) {
    EXPECT_EQ(QCoro::waitFor(chords_->type(Chord::copy, {})).outcome, Outcome::withheld);
}

} // namespace

} // namespace quillmender::wayland
