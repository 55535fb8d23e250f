#pragma once

#include "FakePickerModel.h"
#include "platform/none/NonePresence.h"
#include "ui/ActionPanel.h"
#include "ui/ActionPanelController.h"
#include "ui/ActionPickerView.h"
#include "ui/Button.h"
#include "ui/InstructionEditor.h"
#include "ui/TextLabel.h"

#include <QApplication>
#include <QTest>
#include <gmock/gmock.h>

#include <cstring>

namespace quillmender {

/// Records what the panel asks of the desktop; its colours can be changed.
class PanelPresence : public NonePresence {
  public:
    void applyPanelAttributes(quintptr id) override {
        calls.append(QStringLiteral("applyPanelAttributes %1").arg(id));
    }
    void applyWindowAttributes(quintptr id) override {
        calls.append(QStringLiteral("applyWindowAttributes %1").arg(id));
    }
    void activateWindow(quintptr id) override {
        calls.append(QStringLiteral("activateWindow %1").arg(id));
    }
    /// A square of the wanted colour, where symbols are drawn at all.
    QByteArray symbolImage(const QString &name, int pixelSize, quint32 color) override {
        if (!drawsSymbols)
            return {};
        symbols.append(QStringLiteral("%1 %2").arg(name).arg(pixelSize));
        QByteArray pixels(qsizetype(pixelSize) * pixelSize * 4, '\0');
        for (qsizetype at = 0; at < pixels.size(); at += 4)
            std::memcpy(pixels.data() + at, &color, sizeof color);
        return pixels;
    }
    Appearance appearance() override { return current; }
    void onAppearanceChange(std::function<void()> listener) override {
        listener_ = std::move(listener);
    }

    void become(const Appearance &appearance) {
        current = appearance;
        listener_();
    }

    QStringList calls;
    QStringList symbols;
    bool drawsSymbols = false;
    Appearance current{ColorScheme::light, std::nullopt};

  private:
    std::function<void()> listener_;
};

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
    PanelPresence presence;
    Theme theme{presence};
    ActionPanelController controller{model, theme, presence};
};

} // namespace quillmender
