#include "platform/linux/terminal/TerminalForeground.h"

#include "platform/linux/terminal/FullScreenEditor.h"

#include <algorithm>

namespace quillmender {

namespace {

bool isGone(const ProcessEntry &process) {
    return process.state == 'Z' || process.state == 'X';
}

/// The processes in the foreground of a device; none when it is not known which they are.
QList<ProcessEntry> foregroundOf(const ProcessTable &table, dev_t device) {
    QList<ProcessEntry> foreground;
    QSet<qint64> sessions;
    for (const ProcessEntry &process : table.entries()) {
        if (process.terminal != device || isGone(process))
            continue;
        sessions.insert(process.session);
        if (process.group == process.foregroundGroup)
            foreground.append(process);
    }
    // Containers count their devices on their own: the same number is another device there.
    return sessions.size() == 1 ? foreground : QList<ProcessEntry>();
}

/// The editor in the foreground of the device; absent when there is none, or somebody else too.
std::optional<qint64> editorAt(const ProcessTable &table, dev_t device) {
    const QList<ProcessEntry> foreground = foregroundOf(table, device);
    const auto editor = std::ranges::find_if(foreground, [&](const ProcessEntry &process) {
        return isFullScreenEditor(process, device);
    });
    if (editor == foreground.end())
        return std::nullopt;
    const bool isAlone = std::ranges::all_of(foreground, [&](const ProcessEntry &other) {
        // As a version control system waits for the editor that it has started for a message.
        return other.id == editor->id ||
               (table.isAncestor(other.id, editor->id) && isWaitingForChild(other.id));
    });
    return isAlone ? std::optional(editor->id) : std::nullopt;
}

} // namespace

bool hasEditorsOnly(qint64 terminalEmulator) {
    const auto shown = terminalsHeldBy(terminalEmulator);
    if (!shown || shown->isEmpty())
        return false;
    const ProcessTable table = ProcessTable::read();
    QList<dev_t> devices(shown->begin(), shown->end());
    for (qsizetype i = 0; i < devices.size(); ++i) {
        const std::optional<qint64> editor = editorAt(table, devices[i]);
        if (!editor)
            return false;
        // An editor can have a shell in a window of its own.
        for (const qint64 process : table.familyOf(*editor)) {
            const auto inside = terminalsHeldBy(process);
            if (!inside)
                return false;
            for (const dev_t device : *inside) {
                if (!devices.contains(device))
                    devices.append(device);
            }
        }
    }
    return true;
}

} // namespace quillmender
