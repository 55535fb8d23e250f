#pragma once

#include "FakePickerModel.h"
#include "fakes/FakeAppearance.h"
#include "fakes/FakeOwnWindows.h"
#include "fakes/FakeSymbols.h"
#include "ui/ActionPanel.h"
#include "ui/ActionPanelController.h"
#include "ui/ActionPickerView.h"
#include "ui/Button.h"
#include "ui/InstructionEditor.h"
#include "ui/TextLabel.h"

#include <QApplication>
#include <QTest>
#include <gmock/gmock.h>

namespace quillmender {

using Call = fakes::FakeOwnWindows::Call;

/// A panel on a fake model.
class PanelFixture : public testing::Test {
  protected:
    /// Shows the panel and waits until it has the keyboard focus.
    void show() {
        controller.makeKeyAndOrderFront();
        ASSERT_TRUE(QTest::qWaitForWindowActive(controller.panel()));
    }

    template <typename Change> void change(Change apply) {
        model.change(apply);
        settle();
    }

    /// Lets everything happen that is queued now.
    static void settle() { QCoreApplication::sendPostedEvents(); }

    QList<Button *> buttons() const {
        QList<Button *> shown;
        for (Button *button : controller.panel()->findChildren<Button *>())
            if (button->isVisibleTo(controller.panel()))
                shown.append(button);
        return shown;
    }

    /// The button with that caption; null when it is not shown.
    Button *button(const QString &caption) const {
        for (Button *candidate : buttons())
            if (candidate->caption() == caption)
                return candidate;
        return nullptr;
    }

    bool isEnabled(const char *caption) const {
        const Button *found = button(QString::fromLatin1(caption));
        EXPECT_TRUE(found) << caption;
        return found && found->isEnabled();
    }

    /// The texts that can be read, from top to bottom.
    QStringList texts() const {
        QStringList shown;
        for (const TextLabel *label : controller.panel()->findChildren<TextLabel *>())
            if (label->isVisibleTo(controller.panel()))
                shown.append(label->text());
        return shown;
    }

    bool shows(const char *text) const { return texts().contains(QString::fromUtf8(text)); }

    InstructionEditor *editor() const {
        return controller.panel()->findChild<InstructionEditor *>();
    }

    FakePickerModel model;
    fakes::FakeAppearance appearance;
    fakes::FakeSymbols symbols;
    fakes::FakeOwnWindows ownWindows;
    Theme theme{appearance, symbols};
    ActionPanelController controller{model, theme, ownWindows};
};

} // namespace quillmender
