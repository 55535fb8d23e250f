#include "applications/ApplicationRun.h"
#include "applications/Catalog.h"
#include "applications/FormattedField.h"
#include "applications/RunningApplication.h"

#include <QImage>

namespace quillmender::applications {

namespace {

/// A flat document around its body.
QByteArray textDocument(const QByteArray &body) {
    QByteArray document = FormattedField::document();
    const qsizetype start = document.indexOf("<text:p>");
    const qsizetype end = document.indexOf("</office:text>");
    return document.replace(start, end - start, body);
}

Application writer(const char *id, const char *field, const QByteArray &document) {
    return {
        .id = QStringLiteral("writer-") + QLatin1String(id),
        .name = QStringLiteral("LibreOffice Writer"),
        .field = QLatin1String(field),
        .package = QStringLiteral("libreoffice-writer"),
        .command =
            [=](harness::AnyDesktop &desktop) {
                const QString profile = QStringLiteral("office");
                writeHomeFile(desktop, profile + QStringLiteral("/user/registrymodifications.xcu"),
                              R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry">
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="ShowTipOfTheDay" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Save/Document"><prop oor:name="WarnAlienFormat" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Writer/AutoFunction/Format/Option"><prop oor:name="UseReplacementTable" oor:op="fuse"><value>false</value></prop></item>
</oor:items>
)");
                const QString file = writeHomeFile(desktop, FormattedField::fileName(), document);
                harness::Command command =
                    desktop.command(QStringLiteral("soffice"),
                                    {QStringLiteral("-env:UserInstallation=file://%1/%2")
                                         .arg(desktop.folders().home(), profile),
                                     QStringLiteral("--norestore"), QStringLiteral("--nologo"),
                                     QStringLiteral("--writer"), file});
                command.environment.insert(QStringLiteral("SAL_USE_VCLPLUGIN"),
                                           QStringLiteral("gtk3"));
                return command;
            },
        .title = QStringLiteral("LibreOffice Writer")};
}

// One page with one line of text.
QByteArray readOnlyDocument() {
    const QByteArray drawing = "BT /F1 24 Tf 72 720 Td (You recieve it tomorrow.) Tj ET";
    return "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
           "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
           "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]/Contents 4 0 R/Resources"
           "<</Font<</F1 5 0 R>>>>>>endobj\n4 0 obj<</Length " +
           QByteArray::number(drawing.size()) + ">>stream\n" + drawing +
           "\nendstream endobj\n"
           "5 0 obj<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>endobj\n"
           "trailer<</Root 1 0 R>>\n%%EOF\n";
}

Application evince() {
    return {.id = QStringLiteral("evince"),
            .name = QStringLiteral("Evince"),
            .field = QStringLiteral("document, read only"),
            .package = QStringLiteral("evince"),
            .command =
                [](harness::AnyDesktop &desktop) {
                    return desktop.command(
                        QStringLiteral("evince"),
                        {writeHomeFile(desktop, QStringLiteral("letter.pdf"), readOnlyDocument())});
                },
            .kind = Application::Kind::reader};
}

Application gimp() {
    return {.id = QStringLiteral("gimp"),
            .name = QStringLiteral("GIMP"),
            .field = QStringLiteral("text tool"),
            .package = QStringLiteral("gimp"),
            .command =
                [](harness::AnyDesktop &desktop) {
                    const QString file = desktop.folders().home() + QStringLiteral("/picture.png");
                    QImage picture(800, 500, QImage::Format_RGB32);
                    picture.fill(Qt::white);
                    picture.save(file);
                    // A version that has not run before covers the picture with its welcome.
                    const QString version =
                        installedVersion(QStringLiteral("gimp")).section(u'-', 0, 0);
                    writeHomeFile(desktop, QStringLiteral("gimprc"),
                                  QByteArray("(config-version \"") + version.toLatin1() +
                                      "\")\n(show-welcome-dialog no)\n");
                    harness::Command command = desktop.command(
                        QStringLiteral("gimp"), {QStringLiteral("--no-splash"), file});
                    command.environment.insert(QStringLiteral("GIMP3_DIRECTORY"),
                                               desktop.folders().home());
                    return command;
                },
            .title = QStringLiteral("picture"),
            .prepare =
                [](harness::AnyDesktop &desktop, RunningApplication &running) {
                    desktop.input().chord({XK_t});
                    desktop.input().click(running.geometry().center());
                },
            .keys = {.undo = {}}};
}

} // namespace

QList<Application> office() {
    const Application document = writer("document", "document", textDocument("<text:p/>"));
    Application cell = writer(
        "cell", "table cell",
        textDocument("<table:table xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\">"
                     "<table:table-column/><table:table-column/><table:table-row><table:table-cell>"
                     "<text:p/></table:table-cell><table:table-cell><text:p>beside</text:p>"
                     "</table:table-cell></table:table-row></table:table><text:p/>"));
    cell.hasOneLine = true;
    cell.keys.selectAll = {{XK_Home}, {XK_Shift_L, XK_End}};
    Application formatted = writer("formatted", "formatted paragraph", FormattedField::document());
    formatted.kind = Application::Kind::formatted;
    return {document, formatted, cell, evince(), gimp()};
}

} // namespace quillmender::applications
