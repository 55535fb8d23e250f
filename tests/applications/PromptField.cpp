#include "applications/PromptField.h"

#include "applications/RunningApplication.h"
#include "desktop/harness/AnyDesktop.h"
#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

#include <QFile>

namespace quillmender::applications {

using namespace std::chrono_literals;
using harness::becomesTrue;

QList<Scenario> PromptField::scenarios() const {
    const QString typed = QStringLiteral("echo ");
    const QString word = QStringLiteral("recieve");
    return {{QStringLiteral("a word on the screen, answered with a word"), typed,
             Pick::wordForwards, word, QStringLiteral("receive")},
            {QStringLiteral("a word on the screen, answered beyond ASCII"), typed,
             Pick::wordForwards, word, QStringLiteral("Gr\u00fc\u00dfe \u5f00\u59cb")},
            {QStringLiteral("a word on the screen, answered with two lines"), typed,
             Pick::wordForwards, word, QStringLiteral("one\ntwo")},
            // Where an editor indents by itself, it must not do so with what is pasted.
            {QStringLiteral("a word on the screen, answered with two lines behind an indent"),
             QStringLiteral("  ") + typed, Pick::wordForwards, word, QStringLiteral("one\ntwo")}};
}

QString PromptField::expected(const Scenario &scenario) const {
    return scenario.text + scenario.answer;
}

void PromptField::prepare(const Scenario &scenario) {
    int attempt = 0;
    const auto isSelected = [&] {
        const QPoint middle = running_.geometry().center();
        // The middle may lie between two words, or behind the last of a line.
        constexpr int step = 13;
        ++attempt;
        // What was selected before must not pass for what is selected now.
        const auto marker = desktop_.ownSelectedText({});
        desktop_.input().doubleClick(middle + QPoint(step * (attempt % 5), step * (attempt % 3)));
        return becomesTrue(
            [&] { return !marker->ownsSelection() && desktop_.selectedText() == scenario.picked; },
            500ms);
    };
    const auto isTyped = [&] {
        application_.prompt.clear(desktop_.input());
        desktop_.input().type(scenario.text);
        return prompt() == scenario.text;
    };
    if (!becomesTrue(isTyped, 60s) || !becomesTrue(isSelected, 60s))
        throw harness::HarnessError(QStringLiteral("the terminal does not come to its prompt"));
}

std::optional<QString> PromptField::read(const QString &wanted) {
    std::optional<QString> found;
    becomesTrue([&] { return (found = prompt()) == wanted; }, 1500ms);
    return found;
}

std::optional<QString> PromptField::prompt() {
    QFile file(desktop_.folders().home() + QStringLiteral("/prompt.txt"));
    file.remove();
    application_.prompt.save(desktop_.input());
    QString saved;
    const auto isSaved = [&] {
        if (!file.isOpen() && !file.open(QIODevice::ReadOnly))
            return false;
        saved += QString::fromUtf8(file.readAll());
        return true;
    };
    if (!becomesTrue(isSaved, 1500ms))
        return std::nullopt;
    // An editor saves the screenful of words too.
    const qsizetype wallEnd = saved.lastIndexOf(QStringLiteral("recieve \n"));
    if (wallEnd >= 0)
        saved.remove(0, wallEnd + 9);
    return normalised(saved);
}

} // namespace quillmender::applications
