#include "applications/Catalog.h"

namespace quillmender::applications {

namespace {

struct Element {
    const char *name;
    const char *html;
    Application::Kind kind;
    bool hasOneLine;
};

constexpr Element elements[] = {
    {"textarea", "<textarea rows=12 cols=70></textarea>", Application::Kind::editor, false},
    {"input", "<input size=70>", Application::Kind::editor, true},
    {"contenteditable", "<div contenteditable style='min-height:200px;white-space:pre-wrap'></div>",
     Application::Kind::editor, false},
    {"password", "<input type=password size=70>", Application::Kind::password, true}};

// The title tells when the element has the keyboard.
constexpr auto script = "<script>const field = document.body.firstElementChild;"
                        "field.onfocus = () => document.title = 'Sample page';"
                        "field.focus();</script>";

/// The page's address.
QString writePage(const harness::AnyDesktop &desktop, const char *body) {
    return QStringLiteral("file://") +
           writeHomeFile(desktop, QStringLiteral("page.html"),
                         QByteArray("<!DOCTYPE html><meta charset=utf-8><title>Opening</title>") +
                             body + script);
}

harness::Command firefox(harness::AnyDesktop &desktop, const char *body) {
    writeHomeFile(desktop, QStringLiteral("profile/user.js"),
                  "user_pref('browser.aboutwelcome.enabled', false);\n"
                  "user_pref('datareporting.policy.dataSubmissionEnabled', false);\n"
                  "user_pref('browser.shell.checkDefaultBrowser', false);\n"
                  "user_pref('browser.startup.homepage_override.mstone', 'ignore');\n"
                  "user_pref('toolkit.telemetry.enabled', false);\n"
                  "user_pref('termsofuse.bypassNotification', true);\n"
                  "user_pref('browser.tabs.remote.autostart', true);\n"
                  "user_pref('network.proxy.type', 0);\n");
    return desktop.command(QStringLiteral("firefox-esr"),
                           {QStringLiteral("--no-remote"), QStringLiteral("--profile"),
                            desktop.folders().home() + QStringLiteral("/profile"),
                            writePage(desktop, body)});
}

harness::Command chromium(harness::AnyDesktop &desktop, const char *body) {
    const bool isWayland = desktop.environment().contains(QStringLiteral("WAYLAND_DISPLAY"));
    return desktop.command(
        QStringLiteral("chromium"),
        {QStringLiteral("--ozone-platform=") +
             (isWayland ? QStringLiteral("wayland") : QStringLiteral("x11")),
         QStringLiteral("--no-sandbox"), QStringLiteral("--no-first-run"),
         QStringLiteral("--no-default-browser-check"), QStringLiteral("--disable-gpu"),
         QStringLiteral("--disable-dev-shm-usage"), QStringLiteral("--password-store=basic"),
         QStringLiteral("--disable-background-networking"),
         QStringLiteral("--disable-component-update"), QStringLiteral("--disable-sync"),
         QStringLiteral("--user-data-dir=%1/chromium").arg(desktop.folders().home()),
         writePage(desktop, body)});
}

harness::Command falkon(harness::AnyDesktop &desktop, const char *body) {
    harness::Command command = desktop.command(
        QStringLiteral("falkon"), {QStringLiteral("--portable"), writePage(desktop, body)});
    command.environment.insert(QStringLiteral("QTWEBENGINE_DISABLE_SANDBOX"), QStringLiteral("1"));
    command.environment.insert(QStringLiteral("QTWEBENGINE_CHROMIUM_FLAGS"),
                               QStringLiteral("--disable-gpu"));
    return command;
}

using Browser = harness::Command (*)(harness::AnyDesktop &, const char *);

Application page(const QString &id, const QString &name, const QString &package, Browser browser,
                 const Element &element) {
    const char *html = element.html;
    return {.id = id + u'-' + QLatin1String(element.name),
            .name = name,
            .field = QLatin1String(element.name),
            .package = package,
            .command = [=](harness::AnyDesktop &desktop) { return browser(desktop, html); },
            .kind = element.kind,
            .hasOneLine = element.hasOneLine,
            .title = QStringLiteral("Sample page")};
}

} // namespace

QList<Application> browsers() {
    QList<Application> all;
    for (const bool isOff : {false, true}) {
        for (const Element &element : elements) {
            for (const Application &each :
                 {page(QStringLiteral("firefox"), QStringLiteral("Firefox"),
                       QStringLiteral("firefox-esr"), firefox, element),
                  page(QStringLiteral("chromium"), QStringLiteral("Chromium"),
                       QStringLiteral("chromium"), chromium, element)})
                all += isOff ? offTheBus(each) : each;
        }
    }
    all += page(QStringLiteral("falkon"), QStringLiteral("Falkon (QtWebEngine)"),
                QStringLiteral("falkon"), falkon, elements[0]);
    return all;
}

} // namespace quillmender::applications
