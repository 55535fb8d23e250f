#include "platform/linux/terminal/FullScreenEditor.h"

#include <algorithm>
#include <array>

namespace quillmender {

namespace {

struct Editor {
    /// Of the program's file, as a whole or up to one of `.` and `-`: vim.basic, emacs-gtk.
    const char *program;
    /// Which terminals it asks for the marks around a paste, by the beginnings of TERM; all of them
    /// when there are none.
    std::array<const char *, 2> terminals;
    /// Letters of options and whole options under which it reads lines instead.
    const char *letters;
    std::array<const char *, 5> options;
};

// Missing on purpose: what takes a pasted line end for the key Enter. Joe and mcedit do when they
// ask for a command, Kakoune and the vi of BusyBox and BSD always: there it begins a command.
constexpr std::array editors{
    Editor{"vim", {"xterm", "rxvt-unicode"}, "eET", {"--ttytype"}},
    // Distributions that have vim under the name of its forebear.
    Editor{"vi", {"xterm", "rxvt-unicode"}, "eET", {"--ttytype"}},
    Editor{"nvim", {}, "eEl", {"--headless"}},
    Editor{"nano", {}, "", {}},
    Editor{
        "emacs", {"xterm", "rxvt-unicode"}, "", {"-batch", "--batch", "-script", "--script", "-x"}},
    Editor{"micro", {}, "", {}},
    Editor{"hx", {}, "", {}},
    Editor{"helix", {}, "", {}},
};

bool isProgram(const QByteArray &program, const char *name) {
    const QByteArray whole(name);
    if (!program.startsWith(whole))
        return false;
    // The client of an Emacs elsewhere has a name that begins alike.
    return program.size() == whole.size() || program[whole.size()] == '.' ||
           program[whole.size()] == '-';
}

bool isOption(const QByteArray &argument, const Editor &editor) {
    if (std::ranges::any_of(editor.options, [&](const char *option) {
            return option != nullptr && argument.startsWith(option);
        }))
        return true;
    const QByteArray letters(editor.letters);
    return argument.size() > 1 && argument[0] == '-' && argument[1] != '-' &&
           std::ranges::any_of(argument, [&](char letter) { return letters.contains(letter); });
}

bool readsLines(const QByteArrayList &arguments, const Editor &editor) {
    const QByteArray invoked = arguments.constFirst();
    // Under this name vim is the editor for lines.
    if (invoked.mid(invoked.lastIndexOf('/') + 1).startsWith("ex"))
        return true;
    return std::any_of(arguments.begin() + 1, arguments.end(),
                       [&](const QByteArray &argument) { return isOption(argument, editor); });
}

bool asksForMarks(const QByteArray &terminal, const Editor &editor) {
    return editor.terminals.front() == nullptr ||
           std::ranges::any_of(editor.terminals,
                               [&](const char *name) { return terminal.startsWith(name); });
}

} // namespace

bool isFullScreenEditor(const ProcessEntry &process, dev_t device) {
    // One that is stopped may end before it reads, and leave the text to the shell.
    if (QByteArrayView("TtZX").contains(process.state))
        return false;
    const QByteArray program = programOf(process.id);
    const auto *const editor = std::ranges::find_if(
        editors, [&](const Editor &known) { return isProgram(program, known.program); });
    if (editor == editors.end())
        return false;
    const QByteArrayList arguments = argumentsOf(process.id);
    return !arguments.isEmpty() && !readsLines(arguments, *editor) &&
           asksForMarks(environmentOf(process.id, "TERM"), *editor) &&
           readsKeysOf(process.id, device);
}

} // namespace quillmender
