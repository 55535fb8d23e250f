#include "desktop/harness/TestApplication.h"

#include "desktop/harness/Desktop.h"
#include "desktop/harness/HarnessError.h"

#include <QFile>

namespace quillmender::harness {

namespace {

QString writeFile(Desktop &desktop, const QString &name, const QString &contents) {
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

TestApplication::TestApplication(Desktop &desktop, const QString &program,
                                 const QStringList &arguments)
    : desktop_(&desktop),
      process_(std::make_unique<ChildProcess>(desktop.command(program, arguments))) {
    const auto isUp = [&] {
        if (!process_->isRunning())
            throw HarnessError(
                QStringLiteral("%1 ended: %2").arg(program, QString::fromUtf8(process_->log())));
        window_ = desktop.windows().ofProcess(pid());
        return window_ != XCB_WINDOW_NONE && desktop.windows().active() == window_;
    };
    waitUntil(isUp, QStringLiteral("%1 has an active window").arg(program));
}

TestApplication TestApplication::mousepad(Desktop &desktop, const QString &text) {
    return withFile(desktop, QStringLiteral("mousepad"), {QStringLiteral("--disable-server")},
                    text);
}

TestApplication TestApplication::gedit(Desktop &desktop, const QString &text) {
    return withFile(desktop, QStringLiteral("gedit"), {QStringLiteral("--standalone")}, text);
}

TestApplication TestApplication::gnomeTextEditor(Desktop &desktop, const QString &text) {
    return withFile(desktop, QStringLiteral("gnome-text-editor"), {QStringLiteral("--standalone")},
                    text);
}

TestApplication TestApplication::xterm(Desktop &desktop, const QString &text) {
    const QString path = writeFile(desktop, QStringLiteral("terminal.txt"), text);
    return {desktop,
            QStringLiteral("xterm"),
            {QStringLiteral("-e"), QStringLiteral("sh"), QStringLiteral("-c"),
             QStringLiteral("cat \"$0\"; exec cat"), path}};
}

TestApplication TestApplication::chromium(Desktop &desktop, const QString &html) {
    const QString page = writeFile(
        desktop, QStringLiteral("page.html"),
        QStringLiteral("<!DOCTYPE html><meta charset=\"utf-8\"><title>Page</title><body>%1</body>")
            .arg(html));
    return {desktop,
            QStringLiteral("chromium"),
            {QStringLiteral("--no-sandbox"), QStringLiteral("--no-first-run"),
             QStringLiteral("--no-default-browser-check"), QStringLiteral("--disable-gpu"),
             QStringLiteral("--disable-dev-shm-usage"), QStringLiteral("--password-store=basic"),
             QStringLiteral("--disable-background-networking"),
             QStringLiteral("--disable-component-update"), QStringLiteral("--disable-sync"),
             QStringLiteral("--user-data-dir=%1/chromium").arg(desktop.folders().home()),
             QStringLiteral("file://%1").arg(page)}};
}

TestApplication TestApplication::sampleEditor(Desktop &desktop, const QString &kind,
                                              const QString &text) {
    return {desktop, QStringLiteral(QUILLMENDER_SAMPLE_EDITOR), {kind, text}};
}

TestApplication TestApplication::sampleEditorOffTheBus(Desktop &desktop, const QString &kind,
                                                       const QString &text) {
    return {desktop,
            QStringLiteral("env"),
            {QStringLiteral("AT_SPI_BUS_ADDRESS=unix:path=/nonexistent"),
             QStringLiteral(QUILLMENDER_SAMPLE_EDITOR), kind, text}};
}

TestApplication TestApplication::withFile(Desktop &desktop, const QString &program,
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
