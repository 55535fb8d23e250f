#include "applications/Catalog.h"

namespace quillmender::applications {

namespace {

// Without an account that could send, an assistant stands before the composer. This one is on the
// machine itself, where nobody listens, and is never asked for mail.
constexpr auto settings = R"(
user_pref('mail.accountmanager.accounts', 'account1,account2');
user_pref('mail.accountmanager.defaultaccount', 'account1');
user_pref('mail.accountmanager.localfoldersserver', 'server2');
user_pref('mail.account.account1.server', 'server1');
user_pref('mail.account.account1.identities', 'id1');
user_pref('mail.account.account2.server', 'server2');
user_pref('mail.server.server1.type', 'pop3');
user_pref('mail.server.server1.hostname', '127.0.0.1');
user_pref('mail.server.server1.name', 'Ada');
user_pref('mail.server.server1.userName', 'ada');
user_pref('mail.server.server1.check_new_mail', false);
user_pref('mail.server.server1.login_at_startup', false);
user_pref('mail.server.server2.type', 'none');
user_pref('mail.server.server2.hostname', 'Local Folders');
user_pref('mail.server.server2.name', 'Local Folders');
user_pref('mail.server.server2.userName', 'nobody');
user_pref('mail.identity.id1.useremail', 'ada@example.invalid');
user_pref('mail.identity.id1.fullName', 'Ada');
user_pref('mail.identity.id1.smtpServer', 'smtp1');
user_pref('mail.identity.id1.valid', true);
user_pref('mail.smtpservers', 'smtp1');
user_pref('mail.smtp.defaultserver', 'smtp1');
user_pref('mail.smtpserver.smtp1.hostname', '127.0.0.1');
user_pref('mail.smtpserver.smtp1.username', 'ada');
user_pref('mail.compose.autosave', false);
user_pref('mail.spellcheck.inline', false);
user_pref('mail.provider.suppress_dialog_on_startup', true);
user_pref('mail.rights.version', 1);
user_pref('mail.shell.checkDefaultClient', false);
user_pref('mailnews.start_page.enabled', false);
user_pref('datareporting.policy.dataSubmissionEnabled', false);
user_pref('app.donation.eoy.version.viewed', 999);
user_pref('network.proxy.type', 0);
)";

// As Thunderbird's command line numbers them.
constexpr int htmlFormat = 1;
constexpr int plainFormat = 2;

Application thunderbird(const char *id, const char *field, int format) {
    return {.id = QStringLiteral("thunderbird-") + QLatin1String(id),
            .name = QStringLiteral("Thunderbird"),
            .field = QLatin1String(field),
            .package = QStringLiteral("thunderbird"),
            .command =
                [=](harness::AnyDesktop &desktop) {
                    writeHomeFile(desktop, QStringLiteral("profile/user.js"), settings);
                    return desktop.command(
                        QStringLiteral("thunderbird"),
                        {QStringLiteral("--no-remote"), QStringLiteral("--profile"),
                         desktop.folders().home() + QStringLiteral("/profile"),
                         QStringLiteral("-compose"),
                         QStringLiteral("to='bob@example.invalid',subject='Sample letter',"
                                        "format=%1")
                             .arg(format)});
                },
            .keepsTabs = format != htmlFormat,
            .title = QStringLiteral("Sample letter")};
}

} // namespace

QList<Application> mailComposers() {
    const Application formatted = thunderbird("html", "composer, HTML", htmlFormat);
    return {formatted, thunderbird("plain", "composer, plain text", plainFormat),
            offTheBus(formatted)};
}

} // namespace quillmender::applications
