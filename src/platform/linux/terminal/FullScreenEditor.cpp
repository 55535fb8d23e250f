#include "platform/linux/terminal/FullScreenEditor.h"

#include <algorithm>
#include <array>

namespace quillmender {

namespace {

struct Editor {
    /// Of the program's file.
    const char *program;
    /// Whether its file can have more behind a `.` or `-`: emacs-gtk, emacs-28.2.
    bool hasVariants;
    /// Which terminals it asks for the marks around a paste, by the beginnings of TERM; all of them
    /// when there are none.
    std::array<const char *, 2> terminals;
    /// Letters of options and whole options under which it reads lines instead.
    const char *letters;
    std::array<const char *, 5> options;
};

// Missing on purpose: what takes a pasted line end for the key Enter. Vim does when its settings
// say so (t_BE, term), which nobody outside can know; joe and mcedit do when they ask for a
// command, nano-tiny when it asks for a file, Kakoune and the vi of BusyBox and BSD always.
constexpr std::array editors{
    Editor{"nvim", false, {}, "eEl", {"--headless"}},
    Editor{"nano", false, {}, "", {}},
    Editor{"emacs",
           true,
           {"xterm", "rxvt-unicode"},
           "",
           {"-batch", "--batch", "-script", "--script", "-x"}},
    Editor{"micro", false, {}, "", {}},
    Editor{"hx", false, {}, "", {}},
    Editor{"helix", false, {}, "", {}},
};

bool isProgram(const QByteArray &program, const Editor &editor) {
    const QByteArray whole(editor.program);
    if (program == whole)
        return true;
    // The client of an Emacs elsewhere has a name that begins alike.
    return editor.hasVariants &&
           (program.startsWith(whole + '.') || program.startsWith(whole + '-'));
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
    // Under this name an editor is one for lines.
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
        editors, [&](const Editor &known) { return isProgram(program, known); });
    if (editor == editors.end())
        return false;
    const QByteArrayList arguments = argumentsOf(process.id);
    return !arguments.isEmpty() && !readsLines(arguments, *editor) &&
           asksForMarks(environmentOf(process.id, "TERM"), *editor) &&
           readsKeysOf(process.id, device);
}

} // namespace quillmender
