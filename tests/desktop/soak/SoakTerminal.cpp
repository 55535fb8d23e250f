#include "desktop/sessions/SessionSteps.h"
#include "desktop/soak/SoakPartner.h"

#include <QFile>

namespace quillmender {

using harness::TestApplication;
using harness::waitUntil;

namespace {

const QString word = QStringLiteral("recieve");
// It shows the word at the top, notes each line and shows the word anew.
const QString reader = QStringLiteral("printf '\\033[H\\033[2Jrecieve\\n'; while read -r line; do "
                                      "printf '%s\\n' \"$line\" >> typed; "
                                      "printf '\\033[H\\033[2Jrecieve\\n'; done");

class SoakTerminal : public SoakPartner {
  public:
    explicit SoakTerminal(SessionSteps &session)
        : session_(session),
          terminal_(session.sessionDesktop(), QStringLiteral("foot"),
                    {QStringLiteral("--override=font=monospace:size=12"),
                     QStringLiteral("--override=pad=0x0"), QStringLiteral("sh"),
                     QStringLiteral("-c"), reader}) {}

    // A terminal has no field that could be captured whole.
    void prepare(bool /*isWordOnly*/) override {
        harness::AnyDesktop &desktop = session_.sessionDesktop();
        terminal_.activate();
        typed_ = contents();
        constexpr QPoint inTheWord(18, 9);
        waitUntil(
            [&] {
                desktop.input().doubleClick(terminal_.geometry().topLeft() + inTheWord);
                return harness::becomesTrue([&] { return desktop.selectedText() == word; },
                                            std::chrono::seconds(2));
            },
            QStringLiteral("the word is selected"));
    }

    QString captured() const override { return word; }

    void expectAnswer(const QString &answer) override { expectLine(answer); }
    void expectNothing() override { expectLine(QString()); }

  private:
    QByteArray contents() {
        QFile file(session_.sessionDesktop().folders().home() + QStringLiteral("/typed"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Enter brings it to the program: it is not there before.
    void expectLine(const QString &line) {
        terminal_.activate();
        session_.sessionDesktop().input().chord({XK_Return});
        const QByteArray expected = typed_ + line.toUtf8() + '\n';
        waitUntil([&] { return contents() == expected; },
                  QStringLiteral("the line is \"%1\"").arg(line));
    }

    SessionSteps &session_;
    TestApplication terminal_;
    QByteArray typed_;
};

} // namespace

std::unique_ptr<SoakPartner> makeTerminal(SessionSteps &session) {
    return std::make_unique<SoakTerminal>(session);
}

} // namespace quillmender
