#include "desktop/harness/TestApplication.h"

#include "desktop/harness/AnyDesktop.h"
#include "desktop/harness/HarnessError.h"

#include <QFile>

namespace quillmender::harness {

namespace {

QString writeFile(AnyDesktop &desktop, const QString &name, const QString &contents) {
    const QString path = desktop.folders().home() + QLatin1Char('/') + name;
    QFile file(path);
    // An editor that has it open asks its user what to do when it is written again.
    if (file.open(QIODevice::ReadOnly) && file.readAll() == contents.toUtf8())
        return path;
    file.close();
    if (!file.open(QIODevice::WriteOnly))
        throw HarnessError(QStringLiteral("cannot write %1").arg(path));
    file.write(contents.toUtf8());
    return path;
}

} // namespace

TestApplication::TestApplication(AnyDesktop &desktop, const QString &program,
                                 const QStringList &arguments)
    : desktop_(&desktop) {
    const QList<WindowId> before = desktop.windows().all();
    process_ = std::make_unique<ChildProcess>(desktop.command(program, arguments));
    const auto isUp = [&] {
        if (!process_->isRunning())
            throw HarnessError(
                QStringLiteral("%1 ended: %2").arg(program, QString::fromUtf8(process_->log())));
        window_ = desktop.windows().openedBy(pid(), before);
        return window_ != 0 && desktop.windows().active() == window_;
    };
    waitUntil(isUp, QStringLiteral("%1 has an active window").arg(program));
}

TestApplication TestApplication::mousepad(AnyDesktop &desktop, const QString &text) {
    return withFile(desktop, QStringLiteral("mousepad"), {QStringLiteral("--disable-server")},
                    text);
}

TestApplication TestApplication::gedit(AnyDesktop &desktop, const QString &text) {
    return withFile(desktop, QStringLiteral("gedit"), {QStringLiteral("--standalone")}, text);
}

TestApplication TestApplication::gnomeTextEditor(AnyDesktop &desktop, const QString &text) {
    return withFile(desktop, QStringLiteral("gnome-text-editor"), {QStringLiteral("--standalone")},
                    text);
}

TestApplication TestApplication::foot(AnyDesktop &desktop, const QString &text) {
    return terminal(desktop, QStringLiteral("foot"), text);
}

TestApplication TestApplication::xterm(AnyDesktop &desktop, const QString &text) {
    return terminal(desktop, QStringLiteral("xterm"), text);
}

TestApplication TestApplication::chromium(AnyDesktop &desktop, const QString &html) {
    const QString page = writeFile(
        desktop, QStringLiteral("page.html"),
        QStringLiteral("<!DOCTYPE html><meta charset=\"utf-8\"><title>Page</title><body>%1</body>")
            .arg(html));
    const bool isWayland = desktop.environment().contains(QStringLiteral("WAYLAND_DISPLAY"));
    return {desktop,
            QStringLiteral("chromium"),
            {QStringLiteral("--ozone-platform=") +
                 (isWayland ? QStringLiteral("wayland") : QStringLiteral("x11")),
             QStringLiteral("--no-sandbox"), QStringLiteral("--no-first-run"),
             QStringLiteral("--no-default-browser-check"), QStringLiteral("--disable-gpu"),
             QStringLiteral("--disable-dev-shm-usage"), QStringLiteral("--password-store=basic"),
             QStringLiteral("--disable-background-networking"),
             QStringLiteral("--disable-component-update"), QStringLiteral("--disable-sync"),
             QStringLiteral("--user-data-dir=%1/chromium").arg(desktop.folders().home()),
             QStringLiteral("file://%1").arg(page)}};
}

TestApplication TestApplication::sampleEditor(AnyDesktop &desktop, const QString &kind,
                                              const QString &text) {
    return {desktop, QStringLiteral(QUILLMENDER_SAMPLE_EDITOR), {kind, text}};
}

TestApplication TestApplication::sampleEditorOffTheBus(AnyDesktop &desktop, const QString &kind,
                                                       const QString &text) {
    return {desktop,
            QStringLiteral("env"),
            {QStringLiteral("AT_SPI_BUS_ADDRESS=unix:path=/nonexistent"),
             QStringLiteral(QUILLMENDER_SAMPLE_EDITOR), kind, text}};
}

TestApplication TestApplication::terminal(AnyDesktop &desktop, const QString &program,
                                          const QString &text) {
    const QString path = writeFile(desktop, QStringLiteral("terminal.txt"), text);
    return {desktop,
            program,
            {QStringLiteral("-e"), QStringLiteral("sh"), QStringLiteral("-c"),
             QStringLiteral("cat \"$0\"; exec cat"), path}};
}

TestApplication TestApplication::withFile(AnyDesktop &desktop, const QString &program,
                                          const QStringList &arguments, const QString &text) {
    const QString path = writeFile(desktop, QStringLiteral("letter.txt"), text);
    return {desktop, program, arguments + QStringList{path}};
}

QString TestApplication::title() const {
    return desktop_->windows().title(window_);
}

QRect TestApplication::geometry() const {
    return desktop_->windows().geometry(window_);
}

void TestApplication::activate() {
    desktop_->windows().activate(window_);
}

Accessible TestApplication::focusedText() const {
    return desktop_->accessible().waitForFocusedText(pid());
}

} // namespace quillmender::harness
