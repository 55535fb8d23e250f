#include "applications/Catalog.h"

namespace quillmender::applications {

namespace {

Application editor(const QString &program, const QStringList &arguments = {}) {
    return {.id = program,
            .name = program,
            .field = QStringLiteral("document"),
            .package = program,
            .command =
                [=](harness::Desktop &desktop) {
                    const QString file =
                        writeHomeFile(desktop, QStringLiteral("letter.txt"), QByteArray());
                    return desktop.command(program, arguments + QStringList{file});
                },
            .takesLargeTexts = true};
}

} // namespace

QList<Application> editors() {
    const Application kwrite = editor(QStringLiteral("kwrite"));
    return {editor(QStringLiteral("mousepad"), {QStringLiteral("--disable-server")}),
            editor(QStringLiteral("gedit"), {QStringLiteral("--standalone")}),
            editor(QStringLiteral("gnome-text-editor"), {QStringLiteral("--standalone")}),
            editor(QStringLiteral("featherpad"), {QStringLiteral("--standalone")}),
            editor(QStringLiteral("geany"), {QStringLiteral("--new-instance")}),
            kwrite,
            offTheBus(kwrite),
            editor(QStringLiteral("kate"), {QStringLiteral("--new")})};
}

} // namespace quillmender::applications
