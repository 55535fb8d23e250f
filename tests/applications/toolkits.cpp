#include "applications/Catalog.h"

namespace quillmender::applications {

namespace {

const QString sampleTitle = QStringLiteral("Sample field");

enum class FieldKind { entry, text, password };

const char *nameOf(FieldKind kind) {
    switch (kind) {
    case FieldKind::entry:
        return "entry";
    case FieldKind::text:
        return "text";
    case FieldKind::password:
        break;
    }
    return "password";
}

/// A sample program that is told the kind of field by its last argument.
Application sample(const QString &id, const QString &name, const QString &package,
                   const QStringList &command, FieldKind kind) {
    QStringList arguments = command.mid(1);
    for (QString &argument : arguments)
        argument.replace(QStringLiteral("@"), QStringLiteral(QUILLMENDER_APPLICATION_SAMPLES "/"));
    arguments += QLatin1String(nameOf(kind));
    return {.id = id + u'-' + QLatin1String(nameOf(kind)),
            .name = name,
            .field = QLatin1String(nameOf(kind)),
            .package = package,
            .command =
                [=](harness::AnyDesktop &desktop) {
                    return desktop.command(command.first(), arguments);
                },
            .kind = kind == FieldKind::password ? Application::Kind::password
                                                : Application::Kind::editor,
            .hasOneLine = kind == FieldKind::entry};
}

QList<Application> samples(const QString &id, const QString &name, const QString &package,
                           const QStringList &command) {
    QList<Application> all;
    for (const FieldKind kind : {FieldKind::entry, FieldKind::text, FieldKind::password}) {
        Application each = sample(id, name, package, command, kind);
        each.title = sampleTitle;
        all += each;
    }
    return all;
}

Application qt6(const char *kind, bool hasOneLine, Application::Kind use) {
    return {.id = QStringLiteral("qt6-") + QLatin1String(kind),
            .name = QStringLiteral("Qt 6"),
            .field = QLatin1String(kind),
            .package = QStringLiteral("libqt6widgets6"),
            .command =
                [=](harness::AnyDesktop &desktop) {
                    return desktop.command(QStringLiteral(QUILLMENDER_SAMPLE_EDITOR),
                                           {QLatin1String(kind)});
                },
            .kind = use,
            .hasOneLine = hasOneLine};
}

} // namespace

QList<Application> toolkitFields() {
    const QString python = QStringLiteral("/usr/bin/python3");
    QList<Application> all =
        samples(QStringLiteral("gtk3"), QStringLiteral("GTK 3"),
                QStringLiteral("libgtk-3-0|libgtk-3-0t64"),
                {python, QStringLiteral("@gtk_field.py"), QStringLiteral("3")}) +
        samples(QStringLiteral("gtk4"), QStringLiteral("GTK 4"), QStringLiteral("libgtk-4-1"),
                {python, QStringLiteral("@gtk_field.py"), QStringLiteral("4")}) +
        samples(QStringLiteral("qt5"), QStringLiteral("Qt 5"),
                QStringLiteral("libqt5widgets5|libqt5widgets5t64"),
                {python, QStringLiteral("@qt5_field.py")});
    all += qt6("line", true, Application::Kind::editor);
    all += qt6("plain", false, Application::Kind::editor);
    all += qt6("password", true, Application::Kind::password);
    QList<Application> tk =
        samples(QStringLiteral("tk"), QStringLiteral("Tk"), QStringLiteral("libtk8.6"),
                {python, QStringLiteral("@tk_field.py")});
    for (Application &each : tk)
        each.keys.selectAll = {{XK_Control_L, XK_slash}};
    all += tk;
    all += samples(QStringLiteral("swing"), QStringLiteral("Java Swing"),
                   QStringLiteral("openjdk-17-jre|openjdk-21-jre"),
                   {QStringLiteral("java"), QStringLiteral("@SwingField.java")});
    return all;
}

} // namespace quillmender::applications
