#include "desktop/sessions/SessionSteps.h"
#include "desktop/sessions/TextKeys.h"
#include "desktop/soak/SoakPartner.h"

namespace quillmender {

using harness::Accessible;
using harness::TestApplication;
using harness::waitUntil;

namespace {

const QString letter = QStringLiteral("Hello, you recieve it.");
const QString word = QStringLiteral("recieve");

class SoakField : public SoakPartner {
  public:
    SoakField(SessionSteps &session, TestApplication application, bool isByKeyboard)
        : session_(session),
          application_(std::move(application)),
          text_(application_.focusedText()),
          isByKeyboard_(isByKeyboard) {
        // An editor that still loads its file would drop a selection.
        waitUntil([this] { return text_.text() == letter; }, QStringLiteral("the letter is open"));
    }

    void prepare(bool isWordOnly) override {
        application_.activate();
        isWordOnly_ = isWordOnly;
        // An editor may have made another object of it meanwhile.
        if (text_.text().isEmpty())
            text_ = application_.focusedText();
        text_.setText(letter);
        waitUntil([this] { return text_.text() == letter; }, QStringLiteral("the letter is there"));
        if (isByKeyboard_)
            selectByKeys();
        else if (isWordOnly)
            text_.select(start(), start() + static_cast<int>(word.size()));
        else
            text_.setCaretOffset(0);
        const QString selected = isWordOnly ? word : QString();
        waitUntil([&] { return text_.selectedText() == selected; },
                  QStringLiteral("\"%1\" is selected").arg(selected));
    }

    QString captured() const override { return isWordOnly_ ? word : letter; }

    void expectAnswer(const QString &answer) override {
        QString expected = letter;
        if (isWordOnly_)
            expected.replace(start(), static_cast<int>(word.size()), answer);
        else
            expected = answer;
        waitFor(expected);
    }
    void expectNothing() override { waitFor(letter); }

  private:
    static int start() { return static_cast<int>(letter.indexOf(word)); }

    void selectByKeys() {
        harness::UserInput &input = session_.sessionDesktop().input();
        if (isWordOnly_)
            selectByKeyboard(input, letter, word);
        else
            input.chord({XK_Control_L, XK_Home});
    }

    void waitFor(const QString &expected) {
        waitUntil([&] { return text_.text() == expected; },
                  QStringLiteral("the text is \"%1\"").arg(expected));
    }

    SessionSteps &session_;
    TestApplication application_;
    Accessible text_;
    bool isByKeyboard_;
    bool isWordOnly_ = false;
};

} // namespace

QString soakLetter() {
    return letter;
}

std::unique_ptr<SoakPartner> makeField(SessionSteps &session, TestApplication application,
                                       bool isByKeyboard) {
    return std::make_unique<SoakField>(session, std::move(application), isByKeyboard);
}

} // namespace quillmender
