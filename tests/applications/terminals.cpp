#include "applications/Catalog.h"

namespace quillmender::applications {

namespace {

/// What runs in the terminal.
struct Inside {
    const char *id;
    const char *field;
    QStringList command;
    PromptKeys keys;
};

using harness::UserInput;

// Full of the same word, so that a double click selects it nearly everywhere. Some lines end in the
// middle of the screen: a terminal counts its columns, and a text does not have them all.
constexpr int lines = 200;
constexpr int manyWords = 40;
constexpr int fewWords = 3;

QByteArray wall() {
    QByteArray all;
    for (int line = 0; line < lines; ++line)
        all += QByteArray("recieve ").repeated(line % 3 == 0 ? fewWords : manyWords) + '\n';
    return all;
}

// Control + G writes down what stands at the prompt.
QByteArray shellStart() {
    return "PS1='$ '\nHISTFILE=\ncat wall.txt\n"
           "bind -x '\"\\C-g\": printf %s \"$READLINE_LINE\" > tmp; mv tmp prompt.txt'\n";
}

Application inTerminal(const QString &terminal, const QString &package,
                       const QStringList &arguments, const Inside &inside) {
    return {
        .id = terminal + u'-' + QLatin1String(inside.id),
        .name = terminal,
        .field = QLatin1String(inside.field),
        .package = package,
        .command =
            [=](harness::AnyDesktop &desktop) {
                writeHomeFile(desktop, QStringLiteral("wall.txt"), wall());
                writeHomeFile(desktop, QStringLiteral("prompt.txt"), wall());
                writeHomeFile(desktop, QStringLiteral("start.sh"), shellStart());
                harness::Command command = desktop.command(terminal, arguments + inside.command);
                command.environment.insert(QStringLiteral("SHELL"), QStringLiteral("/bin/bash"));
                return command;
            },
        .kind = Application::Kind::prompt,
        .prompt = inside.keys};
}

} // namespace

QList<Application> terminals() {
    const auto text = [](const char *words) { return QString::fromLatin1(words); };
    const Inside shell{"shell",
                       "shell",
                       {text("bash"), text("--rcfile"), text("start.sh"), text("-i")},
                       {[](UserInput &input) {
                            input.chord({XK_Control_L, XK_e});
                            input.chord({XK_Control_L, XK_u});
                        },
                        [](UserInput &input) { input.chord({XK_Control_L, XK_g}); }}};
    const PromptKeys vimKeys{[=](UserInput &input) {
                                 input.chord({XK_Escape});
                                 input.type(text(":e! wall.txt\nGo"));
                             },
                             [=](UserInput &input) {
                                 input.chord({XK_Escape});
                                 input.type(text(":w! prompt.txt\nA"));
                             }};
    const Inside vim{"vim",
                     "vim, inserting",
                     {text("vim"), text("-u"), text("NONE"), text("-N"), text("-n"), text("--cmd"),
                      text("set autoindent"), text("wall.txt")},
                     vimKeys};
    // From 0.8 on it keeps the mouse to itself, and the terminal selects nothing.
    const Inside neovim{"neovim",
                        "Neovim, inserting",
                        {text("nvim"), text("-u"), text("NONE"), text("-n"), text("--cmd"),
                         text("set mouse="), text("wall.txt")},
                        vimKeys};
    const auto alt = [=](UserInput &input, const char *key) {
        input.chord({XK_Escape});
        input.type(text(key));
    };
    // What is behind the words goes, and the place of it comes from the middle of the screen to
    // its lower end.
    const auto clearNano = [=](UserInput &input) {
        alt(input, "g");
        input.type(QString::number(lines + 1) + text(",1\n"));
        for (const char *command : {"t", "\\", "/"})
            alt(input, command);
    };
    const Inside nano{"nano",
                      "nano",
                      {text("nano"), text("--ignorercfiles"), text("--autoindent"),
                       text("--nonewlines"), text("prompt.txt")},
                      {clearNano, [](UserInput &input) { input.chord({XK_Control_L, XK_s}); }}};
    const QStringList execute{text("-e")};
    // It has no window of its own: a server that is found on the session bus makes it.
    Application gnome = inTerminal(text("gnome-terminal"), text("gnome-terminal"), {}, shell);
    const auto writeFiles = gnome.command;
    gnome.command = [=](harness::AnyDesktop &desktop) {
        harness::Command command = writeFiles(desktop);
        command.program = text("sh");
        command.arguments = {
            text("-c"),
            text("/usr/libexec/gnome-terminal-server --app-id sample.Terminal & "
                 "gdbus wait --session --timeout 60 sample.Terminal && "
                 "gnome-terminal --app-id sample.Terminal --wait -- bash --rcfile start.sh -i")};
        return command;
    };
    return {
        inTerminal(text("xterm"), text("xterm"), execute, shell),
        inTerminal(text("xterm"), text("vim"), execute, vim),
        inTerminal(text("xterm"), text("neovim"), execute, neovim),
        inTerminal(text("xterm"), text("nano"), execute, nano),
        inTerminal(text("konsole"), text("konsole"), execute, shell),
        inTerminal(text("foot"), text("foot"), execute, shell),
        inTerminal(text("foot"), text("foot"), execute, vim),
        gnome,
        inTerminal(
            text("qterminal"), text("qterminal"), {},
            {shell.id, shell.field, {text("-e"), text("bash --rcfile start.sh -i")}, shell.keys})};
}

} // namespace quillmender::applications
