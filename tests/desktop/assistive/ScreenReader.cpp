#include "desktop/assistive/ScreenReader.h"

#include "desktop/harness/Desktop.h"
#include "desktop/harness/HarnessError.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

namespace quillmender {

namespace {

// No voice to wait for, and nothing that only the person at the keyboard could turn off.
const QByteArray preferences = "import orca.debug\n"
                               "import orca.settings\n"
                               "orca.debug.debugFile.reconfigure(line_buffering=True)\n"
                               "orca.settings.speechFactoryModules = []\n"
                               "orca.settings.speechServerFactory = None\n"
                               "orca.settings.enableBraille = False\n"
                               "orca.settings.enableSound = False\n"
                               "orca.settings.enableEchoByWord = False\n"
                               "orca.settings.enableKeyEcho = False\n";

QString folderWithPreferences(const QString &folder) {
    QDir().mkpath(folder);
    QFile file(folder + QStringLiteral("/orca-customizations.py"));
    if (!file.open(QIODevice::WriteOnly) || file.write(preferences) != preferences.size())
        throw harness::HarnessError(QStringLiteral("cannot write %1").arg(file.fileName()));
    return folder;
}

harness::Command orca(harness::Desktop &desktop, const QString &logFile) {
    const QString folder = folderWithPreferences(
        QStringLiteral("%1/orca").arg(desktop.environment().value(QStringLiteral("HOME"))));
    return desktop.command(
        QStringLiteral("/usr/bin/orca"),
        {QStringLiteral("--user-prefs"), folder, QStringLiteral("--debug-file"), logFile});
}

} // namespace

ScreenReader::ScreenReader(harness::Desktop &desktop)
    : logFile_(desktop.folders().log(QStringLiteral("orca-debug"))),
      process_(orca(desktop, logFile_)) {
    waitUntilSaid(QStringLiteral("Screen reader on."));
}

QStringList ScreenReader::everything() const {
    // An utterance may have several lines; its voice comes after it.
    static const QRegularExpression line(QStringLiteral("SPEECH OUTPUT: '(.*?)'[^'\\n]*\\{'"),
                                         QRegularExpression::DotMatchesEverythingOption);
    QFile file(logFile_);
    QStringList result;
    if (!file.open(QIODevice::ReadOnly))
        return result;
    auto found = line.globalMatch(QString::fromUtf8(file.readAll()));
    while (found.hasNext())
        result.append(found.next().captured(1).simplified());
    return result;
}

QStringList ScreenReader::said() const {
    return everything().mid(forgotten_);
}

void ScreenReader::forget() {
    forgotten_ = everything().size();
}

void ScreenReader::waitUntilSaid(const QString &words) const {
    harness::waitUntil([&] { return !said().filter(words).isEmpty(); },
                       QStringLiteral("Orca says \"%1\"").arg(words));
}

} // namespace quillmender
