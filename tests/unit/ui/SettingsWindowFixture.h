#pragma once

#include "PanelFixture.h"
#include "fakes/FakeAccessibilityAccess.h"
#include "fakes/FakeLoginItem.h"
#include "fakes/FakeSecrets.h"
#include "fakes/FakeWorkspace.h"
#include "platform/none/NoneUserDefaults.h"
#include "ui/ActionEditorSheet.h"
#include "ui/HostedWindow.h"
#include "ui/PushButton.h"
#include "ui/SecureField.h"
#include "ui/SettingsView.h"
#include "ui/SettingsWindowController.h"
#include "ui/TextField.h"
#include "ui/settings/ActionRow.h"

namespace quillmender {

/// The settings window over a real store on fakes of the system.
class SettingsWindowFixture : public testing::Test {
  protected:
    /// Shows the window and waits until it has the keyboard focus.
    void show() {
        controller().makeKeyAndOrderFront();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window()));
        settle();
    }

    static void settle() { QCoreApplication::sendPostedEvents(); }

    /// Made when first asked for, so that a test can prepare the system.
    SettingsStore &store() {
        if (!store_)
            store_ = std::make_unique<SettingsStore>(defaults, secrets, loginItem);
        return *store_;
    }
    SettingsWindowController &controller() {
        if (!controller_)
            controller_ = std::make_unique<SettingsWindowController>(store(), permissions, theme,
                                                                     ownWindows, missing);
        return *controller_;
    }
    HostedWindow *window() { return controller().window(); }

    template <typename Widget> QList<Widget *> shown(QWidget *in) {
        QList<Widget *> found;
        for (Widget *widget : in->findChildren<Widget *>())
            if (widget->isVisibleTo(in) && widget->window() == in->window())
                found.append(widget);
        return found;
    }

    PushButton *button(const char *caption) { return button(window(), caption); }
    PushButton *button(QWidget *in, const char *caption) {
        for (PushButton *candidate : shown<PushButton>(in))
            if (candidate->caption() == QLatin1String(caption))
                return candidate;
        return nullptr;
    }

    /// The field with that label.
    TextField *field(const char *label) {
        for (TextField *candidate : window()->findChildren<TextField *>())
            if (candidate->accessibleName() == QLatin1String(label))
                return candidate;
        return nullptr;
    }

    static void replaceText(QLineEdit *edit, const QString &text) {
        edit->selectAll();
        if (text.isEmpty())
            QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, text);
        settle();
    }

    /// The texts that can be read, from top to bottom.
    QStringList texts(QWidget *in) {
        QList<TextLabel *> labels = shown<TextLabel>(in);
        const auto place = [in](const TextLabel *label) { return label->mapTo(in, QPoint()).y(); };
        std::ranges::sort(labels, {}, place);
        QStringList result;
        for (const TextLabel *label : labels)
            result.append(label->text());
        return result;
    }
    bool shows(const char *text) { return texts(window()).contains(QString::fromUtf8(text)); }

    QList<ActionRow *> rows() { return shown<ActionRow>(window()); }
    QStringList titles() {
        QStringList result;
        for (const ActionRow *row : rows())
            result.append(actionTitle(row->item().record()));
        return result;
    }

    ActionEditorSheet *sheet() {
        for (auto *candidate : window()->findChildren<ActionEditorSheet *>())
            if (candidate->isVisible())
                return candidate;
        return nullptr;
    }

    fakes::CallLog log = fakes::makeCallLog();
    NoneUserDefaults defaults;
    fakes::FakeSecrets secrets{log};
    fakes::FakeLoginItem loginItem{log};
    fakes::FakeAccessibilityAccess access{log};
    fakes::FakeWorkspace workspace{log};
    PermissionManager permissions{access, workspace};
    fakes::FakeAppearance appearance;
    fakes::FakeSymbols symbols;
    fakes::FakeOwnWindows ownWindows;
    Theme theme{appearance, symbols};
    MissingCapabilities missing;

  private:
    std::unique_ptr<SettingsStore> store_;
    std::unique_ptr<SettingsWindowController> controller_;
};

} // namespace quillmender
