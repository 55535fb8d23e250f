#include "applications/CommandField.h"

#include "applications/Catalog.h"
#include "desktop/harness/AnyDesktop.h"
#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

#include <QFile>

namespace quillmender::applications {

using namespace std::chrono_literals;
using harness::becomesTrue;

namespace {

constexpr int mostUndoSteps = 5;

} // namespace

QList<Scenario> CommandField::scenarios() const {
    QList<Scenario> possible;
    for (const Scenario &scenario : editingScenarios()) {
        if (!scenario.isLarge() && !scenario.hasWindowsLineEnds())
            possible.append(scenario);
    }
    Scenario lines = possible.constFirst();
    lines.name = QStringLiteral("several lines, from word to word, backwards");
    lines.text = QStringLiteral("first line\nsecond lien\nthird line");
    lines.pick = Pick::wordBackwards;
    lines.picked = QStringLiteral("line\nsecond lien\nthird");
    lines.answer = QStringLiteral("line\n  second line\nlast");
    possible.append(lines);
    return possible;
}

void CommandField::prepare(const Scenario &scenario) {
    writeHomeFile(desktop_, QStringLiteral("letter.txt"), scenario.text.toUtf8() + '\n');
    const auto isLoaded = [&] {
        application_.commands.load(desktop_.input());
        return save() == normalised(scenario.text);
    };
    if (!becomesTrue(isLoaded, 60s))
        throw harness::HarnessError(QStringLiteral("the text cannot be put into the editor"));
    if (scenario.pick == Pick::nothing)
        return;
    const bool isBackwards =
        scenario.pick == Pick::wordBackwards || scenario.pick == Pick::lineBackwards;
    const QString before = scenario.text.left(scenario.text.lastIndexOf(scenario.picked));
    const auto marker = desktop_.ownSelectedText({});
    application_.commands.select(desktop_.input(), before, scenario.picked, !isBackwards);
    const auto isSelected = [&] {
        return !marker->ownsSelection() && desktop_.selectedText() == scenario.picked;
    };
    if (!becomesTrue(isSelected, 20s))
        throw harness::HarnessError(QStringLiteral("the text cannot be selected"));
}

std::optional<QString> CommandField::read(const QString &wanted) {
    std::optional<QString> found;
    becomesTrue([&] { return (found = save()) == normalised(wanted); }, 5s);
    return found;
}

std::optional<int> CommandField::undo(const QString &wanted) {
    for (int step = 1; step <= mostUndoSteps; ++step) {
        application_.commands.undo(desktop_.input());
        if (save() == normalised(wanted))
            return step;
    }
    return std::nullopt;
}

QString CommandField::home(const char *file) const {
    return desktop_.folders().home() + u'/' + QLatin1String(file);
}

std::optional<QString> CommandField::save() {
    QFile file(home("written.txt"));
    file.remove();
    application_.commands.save(desktop_.input());
    if (!becomesTrue([&] { return file.exists(home("done.txt")); }, 3s))
        return std::nullopt;
    QFile::remove(home("done.txt"));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return normalised(QString::fromUtf8(file.readAll()));
}

} // namespace quillmender::applications
