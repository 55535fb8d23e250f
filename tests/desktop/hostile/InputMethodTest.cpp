#include "desktop/hostile/HostileFixture.h"

#include <QFile>
#include <QStandardPaths>

namespace quillmender {
namespace {

using harness::Accessible;
using harness::ChildProcess;
using harness::TestApplication;
using harness::waitUntil;

/// An editor in which an input method composes Korean syllables.
class InputMethodTest : public HostileFixture {
  protected:
    void startInputMethod() {
        run(QStringLiteral("gsettings"),
            {QStringLiteral("set"), QStringLiteral("org.freedesktop.ibus.engine.hangul"),
             QStringLiteral("initial-input-mode"), QStringLiteral("hangul")});
        daemon_.emplace(desktop().command(
            QStringLiteral("ibus-daemon"),
            {QStringLiteral("--panel=disable"), QStringLiteral("--emoji-extension=disable")}));
        waitUntil([&] { return run(QStringLiteral("ibus"), {QStringLiteral("address")}); },
                  QStringLiteral("the input method's bus is there"));
    }

    TestApplication composingEditor() {
        QFile file(desktop().folders().home() + QStringLiteral("/letter.txt"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.close();
        TestApplication editor(desktop(), QStringLiteral("env"),
                               {QStringLiteral("GTK_IM_MODULE=ibus"), QStringLiteral("mousepad"),
                                QStringLiteral("--disable-server"), file.fileName()});
        waitUntil(
            [&] {
                return run(QStringLiteral("ibus"),
                           {QStringLiteral("engine"), QStringLiteral("hangul")});
            },
            QStringLiteral("the engine composes"));
        return editor;
    }

    void TearDown() override {
        HostileFixture::TearDown();
        daemon_.reset();
    }

  private:
    bool run(const QString &program, const QStringList &arguments) {
        ChildProcess process(desktop().command(program, arguments));
        waitUntil([&] { return !process.isRunning(); },
                  QStringLiteral("%1 has ended").arg(program));
        return process.exitCode() == 0;
    }

    std::optional<ChildProcess> daemon_;
};

TEST_F(InputMethodTest, WhatIsBeingComposedIsNotLost) {
    if (QStandardPaths::findExecutable(QStringLiteral("ibus-daemon")).isEmpty())
        GTEST_SKIP() << "ibus is not installed";
    start();
    startInputMethod();
    const TestApplication editor = composingEditor();
    const Accessible text = editor.focusedText();
    // The fourth letter ends the first syllable and begins another.
    input().type(QStringLiteral("gksr"));
    waitUntil([&] { return text.text() == QStringLiteral("\ud55c"); },
              QStringLiteral("a syllable is complete"));

    answerWith(QStringLiteral("answer"));
    // The input method ends the second one with the first key of the chord. It takes a moment,
    // which a hand leaves it.
    const QString all = QStringLiteral("\ud55c\u3131");
    for (const xcb_keysym_t key : {XK_Control_L, XK_Alt_L})
        input().press(key);
    waitUntil([&] { return text.text() == all; }, QStringLiteral("nothing is composed any more"));
    input().chord({XK_space});
    for (const xcb_keysym_t key : {XK_Alt_L, XK_Control_L})
        input().release(key);
    waitForPanel(all);
    click(QStringLiteral("Fix My Grammar"));
    const QString prompt = promptOf(waitForRequest());
    EXPECT_TRUE(prompt.endsWith(QLatin1Char('\n') + all)) << prompt.toStdString();
    waitUntilPanelIsGone();
    EXPECT_EQ(text.text(), QStringLiteral("answer"));
    expectClipboardNeverTaken();
}

} // namespace
} // namespace quillmender
