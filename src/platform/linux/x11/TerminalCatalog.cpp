#include "platform/linux/x11/TerminalCatalog.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <array>

namespace quillmender {

namespace {

constexpr std::array wellKnown{"xterm",
                               "uxterm",
                               "urxvt",
                               "rxvt",
                               "rxvt-unicode",
                               "st",
                               "st-256color",
                               "kitty",
                               "alacritty",
                               "gnome-terminal",
                               "konsole",
                               "gnome-terminal-server",
                               "terminator",
                               "tilix",
                               "xfce4-terminal",
                               "lxterminal",
                               "qterminal",
                               "mate-terminal",
                               "foot",
                               "org.wezfurlong.wezterm",
                               "yakuake",
                               "terminology",
                               "kgx",
                               "org.gnome.console",
                               "ghostty",
                               "com.mitchellh.ghostty"};

/// The value of `key` in the group [Desktop Entry].
QString entry(const QByteArray &file, const QByteArray &key) {
    bool isInEntry = false;
    for (const QByteArray &line : file.split('\n')) {
        if (line.startsWith('['))
            isInEntry = line.trimmed() == "[Desktop Entry]";
        else if (isInEntry && line.startsWith(key) &&
                 line.mid(key.size()).trimmed().startsWith('='))
            return QString::fromUtf8(line.mid(line.indexOf('=') + 1)).trimmed();
    }
    return {};
}

} // namespace

TerminalCatalog::TerminalCatalog(QStringList dataFolders) : dataFolders_(std::move(dataFolders)) {
    if (dataFolders_.isEmpty())
        dataFolders_ = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    for (const char *name : wellKnown)
        names_.insert(QString::fromLatin1(name));
}

bool TerminalCatalog::isTerminal(const QString &instance, const QString &className) const {
    const auto isNamed = [&] {
        return names_.contains(instance.toLower()) || names_.contains(className.toLower());
    };
    if (isNamed())
        return true;
    load();
    return isNamed();
}

void TerminalCatalog::load() const {
    if (isLoaded_)
        return;
    isLoaded_ = true;
    for (const QString &folder : dataFolders_) {
        QDirIterator files(folder + QStringLiteral("/applications"), {QStringLiteral("*.desktop")},
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext())
            loadFile(files.next());
    }
}

void TerminalCatalog::loadFile(const QString &path) const {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QByteArray text = file.readAll();
    // Nearly no file has it: the rest is not worth parsing.
    if (!text.contains("TerminalEmulator"))
        return;
    const QStringList categories = entry(text, "Categories").split(QLatin1Char(';'));
    if (!categories.contains(QStringLiteral("TerminalEmulator")))
        return;
    const QString base = QFileInfo(path).completeBaseName().toLower();
    const QString program = entry(text, "Exec").section(QLatin1Char(' '), 0, 0);
    names_ += {base, base.section(QLatin1Char('.'), -1), entry(text, "StartupWMClass").toLower(),
               QFileInfo(program).fileName().toLower()};
    names_.remove(QString());
}

} // namespace quillmender
