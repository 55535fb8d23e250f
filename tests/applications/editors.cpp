#include "applications/Catalog.h"

namespace quillmender::applications {

namespace {

Application editor(const QString &program, const QStringList &arguments = {}) {
    return {.id = program,
            .name = program,
            .field = QStringLiteral("document"),
            .package = program,
            .command =
                [=](harness::AnyDesktop &desktop) {
                    const QString file =
                        writeHomeFile(desktop, QStringLiteral("letter.txt"), QByteArray());
                    return desktop.command(program, arguments + QStringList{file});
                },
            .takesLargeTexts = true};
}

using harness::UserInput;

Application commandEditor(const QString &program, const QString &package,
                          const QStringList &arguments, CommandKeys keys) {
    Application application = editor(program, arguments);
    application.package = package;
    application.kind = Application::Kind::commands;
    application.title = QStringLiteral("letter.txt");
    application.commands = std::move(keys);
    return application;
}

Application gvim() {
    const auto command = [](UserInput &input, const QString &text) {
        input.chord({XK_Escape});
        input.type(u':' + text + u'\n');
    };
    return commandEditor(
        QStringLiteral("gvim"), QStringLiteral("vim-gtk3"), {QStringLiteral("-f")},
        {[=](UserInput &input) { command(input, QStringLiteral("e! letter.txt")); },
         [=](UserInput &input, const QString &before, const QString &part, bool isForwards) {
             // Counted in bytes from 1; the character under the cursor is selected with the others.
             const auto end = part.size() - (part.back().isLowSurrogate() ? 2 : 1);
             const qsizetype first = before.toUtf8().size() + 1;
             const qsizetype last = first + part.left(end).toUtf8().size();
             input.chord({XK_Escape});
             input.type(QStringLiteral("%1gov%2go")
                            .arg(isForwards ? first : last)
                            .arg(isForwards ? last : first));
         },
         [=](UserInput &input) {
             command(input, QStringLiteral("w! written.txt"));
             command(input, QStringLiteral("call writefile([],'done.txt')"));
         },
         [](UserInput &input) {
             input.chord({XK_Escape});
             input.type(QStringLiteral("u"));
         }});
}

Application emacs() {
    const auto evaluate = [](UserInput &input, const QString &text) {
        input.chord({XK_Alt_L, XK_Shift_L, XK_semicolon});
        input.type(text + u'\n');
    };
    return commandEditor(
        QStringLiteral("emacs"), QStringLiteral("emacs-gtk"), {},
        {[=](UserInput &input) { evaluate(input, QStringLiteral("(revert-buffer t t)")); },
         [=](UserInput &input, const QString &before, const QString &part, bool isForwards) {
             const auto count = part.toUcs4().size();
             const auto start = before.toUcs4().size() + (isForwards ? 0 : count);
             evaluate(input, QStringLiteral("(goto-char %1)").arg(start + 1));
             input.chord({XK_Control_L, XK_space});
             input.chord({XK_Control_L, XK_u});
             input.type(QString::number(count));
             input.chord({XK_Control_L, isForwards ? harness::UserInput::Keysym{XK_f}
                                                   : harness::UserInput::Keysym{XK_b}});
         },
         [=](UserInput &input) {
             evaluate(input, QStringLiteral("(write-region nil nil \"written.txt\")"));
             evaluate(input, QStringLiteral("(write-region 1 1 \"done.txt\")"));
         },
         [](UserInput &input) { input.chord({XK_Control_L, XK_slash}); }});
}

} // namespace

QList<Application> editors() {
    const Application kwrite = editor(QStringLiteral("kwrite"));
    return {editor(QStringLiteral("mousepad"), {QStringLiteral("--disable-server")}),
            editor(QStringLiteral("gedit"), {QStringLiteral("--standalone")}),
            editor(QStringLiteral("gnome-text-editor"), {QStringLiteral("--standalone")}),
            editor(QStringLiteral("featherpad"), {QStringLiteral("--standalone")}),
            editor(QStringLiteral("geany"), {QStringLiteral("--new-instance")}), kwrite,
            offTheBus(kwrite),
            // Without the second it goes on in a process of its own, and this one ends.
            editor(QStringLiteral("kate"), {QStringLiteral("--new"), QStringLiteral("--block")}),
            gvim(), emacs()};
}

} // namespace quillmender::applications
