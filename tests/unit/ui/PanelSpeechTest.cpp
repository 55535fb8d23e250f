#include "Announcements.h"
#include "PanelFixture.h"
#include "ui/Spinner.h"

#include <QAccessible>

namespace quillmender {

namespace {

const QString failure = QStringLiteral("The provider is out of order.");

class PanelSpeechTest : public PanelFixture {
  protected:
    QString described() const {
        return QAccessible::queryAccessibleInterface(controller.panel())
            ->text(QAccessible::Description);
    }

    Announcements announcements{*controller.panel()};
};

} // namespace

TEST_F(PanelSpeechTest, ThePanelIsDescribedByWhatWasCaptured) {
    show();
    EXPECT_EQ(described().toStdString(),
              "Selected Text: some text\nUsing only the highlighted text.");
    EXPECT_EQ(announcements.take(), QStringList()) << "the description is enough";
    controller.orderOut();
    change([](auto &state) {
        state.preview.clear();
        state.description.clear();
        state.error = failure;
    });
    EXPECT_TRUE(described().contains(QStringLiteral("some text"))) << "not before it is shown";
    show();
    EXPECT_EQ(described().toStdString(), "No text captured yet.\nThe provider is out of order.");
    EXPECT_EQ(announcements.take(), QStringList());
}

TEST_F(PanelSpeechTest, TheStartOfARequestIsAnnouncedOnce) {
    show();
    change([](auto &state) {
        state.working = true;
        state.running = QStringLiteral("Simplify");
    });
    EXPECT_EQ(announcements.take(), QStringList(QStringLiteral("Processing\u2026 Simplify")));
    change([](auto &state) { state.instruction = QStringLiteral("more"); });
    EXPECT_EQ(announcements.take(), QStringList());
    change([](auto &state) { state.working = false; });
    EXPECT_EQ(announcements.take(), QStringList()) << "the focus tells the end";
    change([](auto &state) {
        state.working = true;
        state.running.clear();
    });
    EXPECT_EQ(announcements.take(), QStringList(QStringLiteral("Processing\u2026")));
}

TEST_F(PanelSpeechTest, EveryFailureIsAnnounced) {
    show();
    for (int i = 0; i < 2; ++i) {
        change([](auto &state) { state.working = true; });
        announcements.take();
        change([](auto &state) {
            state.working = false;
            state.error = failure;
        });
        EXPECT_EQ(announcements.take(), QStringList(failure)) << i;
        EXPECT_FALSE(described().contains(failure)) << "not twice";
    }
    change([](auto &state) { state.error = QStringLiteral("Another one."); });
    EXPECT_EQ(announcements.take(), QStringList(QStringLiteral("Another one.")));
    change([](auto &state) { state.error.reset(); });
    EXPECT_EQ(announcements.take(), QStringList());
}

TEST_F(PanelSpeechTest, ProgressAndErrorAreTextsLikeOthers) {
    model.change([](auto &state) {
        state.working = true;
        state.running = QStringLiteral("Simplify it");
        state.error = failure;
    });
    show();
    // Plain labels would be read in place of the description.
    for (auto *label : controller.panel()->findChildren<TextLabel *>()) {
        const auto role = QAccessible::queryAccessibleInterface(label)->role();
        EXPECT_TRUE(role == QAccessible::Paragraph || role == QAccessible::Heading)
            << label->text().toStdString();
    }
    QAccessibleInterface *spinner =
        QAccessible::queryAccessibleInterface(controller.panel()->findChild<Spinner *>());
    EXPECT_EQ(spinner->role(), QAccessible::ProgressBar);
    EXPECT_EQ(spinner->text(QAccessible::Name).toStdString(), "Processing\u2026");
    EXPECT_TRUE(spinner->state().busy);
}

} // namespace quillmender
