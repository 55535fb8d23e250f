#include "applications/EditorField.h"

#include "applications/ClipboardText.h"
#include "desktop/harness/CharacterCount.h"
#include "desktop/harness/ClipboardOwner.h"
#include "desktop/harness/HarnessError.h"

#include <algorithm>

namespace quillmender::applications {

using namespace std::chrono_literals;
using harness::becomesTrue;
using harness::ClipboardOwner;

namespace {

// How long an application may take over one key before the next attempt.
constexpr std::chrono::milliseconds oneStep = 3s;
// And over one form of what it copied.
constexpr std::chrono::milliseconds oneAnswer = 1s;
// How long it must not have asked for the clipboard until it has what it wants.
constexpr auto quiet = 100ms;
constexpr int mostUndoSteps = 5;

} // namespace

QList<Scenario> EditorField::scenarios() const {
    QList<Scenario> possible;
    for (const Scenario &scenario : editingScenarios()) {
        const bool fits = (!scenario.hasSeveralLines() || !application_.hasOneLine) &&
                          (!scenario.hasTabs() || application_.keepsTabs);
        if (fits && (!scenario.isLarge() || application_.takesLargeTexts))
            possible.append(scenario);
    }
    return possible;
}

void EditorField::prepare(const Scenario &scenario) {
    const auto isReady = [&] { return place(scenario.text) && select(scenario); };
    if (!becomesTrue(isReady, 60s))
        throw harness::HarnessError(QStringLiteral("the text cannot be put into the field"));
}

bool EditorField::place(const QString &text) {
    const auto offer = desktop_.ownClipboard(ClipboardOwner::plainText(text));
    selectAll();
    input().chord({XK_Delete});
    input().chord(application_.keys.paste);
    const auto isTextRead = [&] {
        const QList<QByteArray> requests = offer->requests();
        return std::any_of(requests.begin(), requests.end(), [](const QByteArray &target) {
            return target == "UTF8_STRING" || target.startsWith("text/plain");
        });
    };
    if (!becomesTrue(isTextRead, oneStep))
        return false;
    // Chromium reads more than once for one paste, and pastes what it read last.
    qsizetype requests = 0;
    do
        requests = offer->requests().size();
    while (becomesTrue([&] { return offer->requests().size() > requests; }, quiet));
    placed_ = read(text).value_or(QString());
    return normalised(placed_) == normalised(text);
}

bool EditorField::select(const Scenario &scenario) {
    const bool isAtStart = scenario.text.startsWith(scenario.picked);
    const bool isAtEnd = scenario.text.endsWith(scenario.picked);
    const QString before = scenario.text.left(scenario.text.indexOf(scenario.picked));
    const qsizetype length = harness::countCharacters(scenario.picked);
    switch (scenario.pick) {
    case Pick::nothing:
        // An arrow key would leave a table's cell.
        input().chord({XK_End});
        return true;
    case Pick::everything:
        selectAll();
        break;
    case Pick::wordForwards:
        input().chord({XK_End});
        input().chord(
            {isAtEnd ? harness::UserInput::Keysym{XK_End} : harness::UserInput::Keysym{XK_Home}});
        // How many strokes an emoji takes differs from one toolkit to the next.
        if (isAtEnd)
            press({XK_Left}, length);
        else
            press({XK_Right}, before.size());
        press({XK_Shift_L, XK_Right}, length);
        break;
    case Pick::wordBackwards:
        input().chord({XK_End});
        input().chord(
            {isAtStart ? harness::UserInput::Keysym{XK_Home} : harness::UserInput::Keysym{XK_End}});
        press({XK_Right}, isAtStart ? length : 0);
        press({XK_Shift_L, XK_Left}, length);
        break;
    case Pick::wordOfLine:
        goToLine(before);
        input().chord({XK_Home});
        press({XK_Right}, before.size() - before.lastIndexOf(u'\n') - 1);
        press({XK_Shift_L, XK_Right}, length);
        break;
    case Pick::lineForwards:
    case Pick::lineBackwards: {
        const bool forwards = scenario.pick == Pick::lineForwards;
        goToLine(before);
        input().chord(
            {forwards ? harness::UserInput::Keysym{XK_Home} : harness::UserInput::Keysym{XK_End}});
        input().chord({XK_Shift_L, forwards ? harness::UserInput::Keysym{XK_End}
                                            : harness::UserInput::Keysym{XK_Home}});
        break;
    }
    }
    return becomesTrue(
        [&] {
            const auto found = selected();
            // Tk counts the end of the last line to everything.
            return found && (scenario.pick == Pick::everything ? normalised(*found) : *found) ==
                                scenario.picked;
        },
        oneStep);
}

void EditorField::goToLine(const QString &before) {
    input().chord({XK_Control_L, XK_Home});
    press({XK_Down}, before.count(u'\n'));
}

void EditorField::press(const QList<harness::UserInput::Keysym> &chord, qsizetype times) {
    for (; times > 0; --times)
        input().chord(chord);
}

void EditorField::selectAll() {
    for (const Keys::Chord &chord : application_.keys.selectAll)
        input().chord(chord);
}

std::optional<QString> EditorField::read(const QString &wanted) {
    std::optional<QString> found;
    becomesTrue(
        [&] {
            selectAll();
            found = selected();
            return normalised(found.value_or(QString())) == normalised(wanted);
        },
        oneStep);
    return found;
}

std::optional<QString> EditorField::selected() {
    const auto marker = desktop_.ownClipboard(ClipboardOwner::plainText({}));
    input().chord(application_.keys.copy);
    if (!becomesTrue([&] { return !marker->ownsSelection(); }, oneStep))
        return std::nullopt;
    try {
        return meantText(desktop_.readClipboardText(oneAnswer).value_or(QByteArray()));
    } catch (const harness::HarnessError &) {
        // Writer leaves a question without answer now and then, and answers the next.
        return std::nullopt;
    }
}

std::optional<int> EditorField::undo(const QString &wanted) {
    if (application_.keys.undo.isEmpty())
        return std::nullopt;
    for (int steps = 1; steps <= mostUndoSteps; ++steps) {
        input().chord(application_.keys.undo);
        if (normalised(read(wanted).value_or(QString())) == normalised(wanted))
            return steps;
    }
    return std::nullopt;
}

} // namespace quillmender::applications
