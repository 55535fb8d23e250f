#include "ui/LateAppearance.h"

#include <QPushButton>
#include <QTest>
#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace quillmender {

namespace {

using testing::_;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Ne;
using testing::NotNull;
using testing::Pair;

using Heard = std::vector<std::pair<QObject *, QAccessible::Event>>;

struct Listener {
    Heard heard;
    std::vector<QAccessible::State> states;
};

Listener *listening = nullptr;

void hear(QAccessibleEvent *event) {
    listening->heard.emplace_back(event->object(), event->type());
    if (event->type() == QAccessible::StateChanged)
        listening->states.push_back(
            static_cast<QAccessibleStateChangeEvent *>(event)->changedStates());
}

class LateAppearanceTest : public testing::Test {
  protected:
    void SetUp() override { listening = &listener; }
    void TearDown() override { listening = nullptr; }

    void tell(QAccessibleEvent &&event) {
        if (!appearance.holdsBack(event))
            hear(&event);
    }
    void tell(QWidget &widget, QAccessible::Event type) { tell(QAccessibleEvent(&widget, type)); }

    bool isHeard(QObject &object, QAccessible::Event type) const {
        return std::find(listener.heard.begin(), listener.heard.end(), std::pair(&object, type)) !=
               listener.heard.end();
    }

    QWidget window;
    QPushButton button{&window};
    // That a window does not come is waited for by the tests that are about it.
    LateAppearance appearance{window, hear, std::chrono::hours(1)};
    Listener listener;
};

} // namespace

TEST_F(LateAppearanceTest, TellsOfTheControlsWhenTheWindowIsThere) {
    appearance.begin();
    tell(button, QAccessible::ObjectShow);
    window.show();
    EXPECT_THAT(listener.heard, IsEmpty());
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_TRUE(QTest::qWaitFor([this] { return isHeard(button, QAccessible::ObjectShow); }));
}

TEST_F(LateAppearanceTest, TellsInTheOrderInWhichItCame) {
    appearance.begin();
    tell(button, QAccessible::ObjectShow);
    tell(window, QAccessible::DialogStart);
    QAccessible::State changed;
    changed.disabled = true;
    tell(QAccessibleStateChangeEvent(&button, changed));
    tell(button, QAccessible::NameChanged);
    tell(button, QAccessible::Focus);
    EXPECT_THAT(listener.heard, IsEmpty());
    window.show();
    ASSERT_TRUE(QTest::qWaitFor([this] { return isHeard(button, QAccessible::Focus); }));
    // Where the toolkit is accessible, what it tells of the shown window itself comes after these.
    ASSERT_GE(listener.heard.size(), 5U);
    listener.heard.resize(5);
    EXPECT_THAT(listener.heard, ElementsAre(Pair(&button, QAccessible::ObjectShow),
                                            Pair(&window, QAccessible::DialogStart),
                                            Pair(&button, QAccessible::StateChanged),
                                            Pair(&button, QAccessible::NameChanged),
                                            Pair(&button, QAccessible::Focus)));
    ASSERT_FALSE(listener.states.empty());
    EXPECT_TRUE(listener.states.front().disabled);
}

TEST_F(LateAppearanceTest, WhatCannotBeKeptComesAfterWhatCameBefore) {
    appearance.begin();
    tell(button, QAccessible::ObjectShow);
    tell(QAccessibleValueChangeEvent(&button, 3));
    EXPECT_THAT(listener.heard, ElementsAre(Pair(&button, QAccessible::ObjectShow),
                                            Pair(&button, QAccessible::ValueChanged)));
}

TEST_F(LateAppearanceTest, AWindowThatNeverComesIsToldOfAllTheSame) {
    LateAppearance impatient(window, hear, std::chrono::milliseconds(1));
    impatient.begin();
    EXPECT_TRUE(impatient.holdsBack(QAccessibleEvent(&button, QAccessible::NameChanged)));
    EXPECT_TRUE(QTest::qWaitFor([this] { return isHeard(button, QAccessible::NameChanged); }));
}

TEST_F(LateAppearanceTest, WhatIsGoneIsNotToldOf) {
    auto other = std::make_unique<QPushButton>(&window);
    QObject *const gone = other.get();
    appearance.begin();
    tell(*other, QAccessible::ObjectShow);
    tell(button, QAccessible::ObjectShow);
    other.reset();
    window.show();
    ASSERT_TRUE(QTest::qWaitFor([this] { return isHeard(button, QAccessible::ObjectShow); }));
    EXPECT_THAT(listener.heard, Each(Pair(AllOf(NotNull(), Ne(gone)), _)));
}

TEST_F(LateAppearanceTest, OtherWindowsAndLaterChangesAreToldAtOnce) {
    QPushButton elsewhere;
    appearance.begin();
    tell(elsewhere, QAccessible::NameChanged);
    EXPECT_THAT(listener.heard, ElementsAre(Pair(&elsewhere, QAccessible::NameChanged)));
    tell(button, QAccessible::NameChanged);
    window.show();
    ASSERT_TRUE(QTest::qWaitFor([this] { return isHeard(button, QAccessible::NameChanged); }));
    listener.heard.clear();
    tell(button, QAccessible::NameChanged);
    EXPECT_THAT(listener.heard, ElementsAre(Pair(&button, QAccessible::NameChanged)));
}

} // namespace quillmender
