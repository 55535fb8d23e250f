#include "desktop/sessions/Letter.h"

#include "desktop/sessions/TextKeys.h"

#include <QFile>
#include <gtest/gtest.h>

namespace quillmender {

using harness::TestApplication;
using harness::waitUntil;

const QString Letter::text = QStringLiteral("Hello, you recieve it.");
const QString Letter::mended = QStringLiteral("Hello, you receive it.");
const QString Letter::wrong = QStringLiteral("recieve");
const QString Letter::right = QStringLiteral("receive");

Letter::Letter(SessionSteps &session, Route route)
    : session_(session),
      editor_(open(session, route)) {
    if (route == Route::accessibility) {
        text_ = editor_.focusedText();
        waitUntil([this] { return text_->text() == text; }, QStringLiteral("the letter is open"));
    }
    selectWrong();
}

TestApplication Letter::open(SessionSteps &session, Route route) {
    harness::AnyDesktop &desktop = session.sessionDesktop();
    if (route == Route::accessibility)
        return TestApplication::mousepad(desktop, text);
    QFile file(desktop.folders().home() + QStringLiteral("/letter.txt"));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text.toUtf8());
    file.close();
    return {desktop,
            QStringLiteral("env"),
            {QStringLiteral("NO_AT_BRIDGE=1"), QStringLiteral("mousepad"),
             QStringLiteral("--disable-server"), file.fileName()}};
}

void Letter::selectWrong() {
    selectByKeyboard(session_.sessionDesktop().input(), text, wrong);
    session_.waitUntilSelected(wrong);
    if (text_)
        waitUntil([this] { return text_->selectedText() == wrong; },
                  QStringLiteral("it is selected"));
}

void Letter::expectText(const QString &expected) {
    if (!text_)
        return session_.expectTextByCopying(expected);
    harness::becomesTrue([&] { return text_->text() == expected; });
    EXPECT_EQ(text_->text(), expected);
}

void Letter::waitUntilEditorActs() {
    // The selection that it had is another one when it has come to these keys.
    session_.sessionDesktop().input().chord({XK_Control_L, XK_Home});
    session_.sessionDesktop().input().chord({XK_Shift_L, XK_Right});
    session_.waitUntilSelected(text.left(1));
}

void Letter::askForAnswer() {
    session_.answerLater(right);
    session_.pressHotKey();
    session_.waitForPanel(wrong);
    session_.click(QStringLiteral("Fix My Grammar"));
    session_.waitForRequest();
}

void Letter::mend() {
    const auto requests = session_.provider().requests().size();
    session_.answerWith(right);
    session_.pressHotKey();
    session_.waitForPanel(wrong);
    session_.click(QStringLiteral("Fix My Grammar"));
    session_.waitForRequest(requests + 1);
    session_.waitUntilPanelIsGone();
    session_.waitUntilWritten();
}

} // namespace quillmender
