#include "platform/linux/terminal/TerminalCatalog.h"

#include "platform/linux/desktop/DesktopEntry.h"

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
    list();
    readListed(unread_->size());
    return isNamed();
}

bool TerminalCatalog::prepareMore() const {
    constexpr qsizetype atOnce = 25;
    if (unread_)
        readListed(atOnce);
    list();
    return !unread_->isEmpty();
}

void TerminalCatalog::list() const {
    if (unread_)
        return;
    unread_.emplace();
    for (const QString &folder : dataFolders_) {
        // A filter by name would load the library of regular expressions.
        QDirIterator files(folder + QStringLiteral("/applications"), QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            if (path.endsWith(QStringLiteral(".desktop")))
                unread_->append(path);
        }
    }
}

void TerminalCatalog::readListed(qsizetype most) const {
    for (qsizetype i = 0; i < most && !unread_->isEmpty(); ++i)
        loadFile(unread_->takeLast());
}

void TerminalCatalog::loadFile(const QString &path) const {
    QFile file(path);
    // Nearly no file has it: the rest is not worth parsing.
    if (!file.open(QIODevice::ReadOnly) || !file.readAll().contains("TerminalEmulator"))
        return;
    const std::optional<DesktopEntry> entry = DesktopEntry::read(path);
    const auto value = [&](const char *key) {
        return entry ? entry->string(QLatin1String(key)).value_or(QString()) : QString();
    };
    if (!value("Categories").split(u';').contains(QStringLiteral("TerminalEmulator")))
        return;
    const QString base = QFileInfo(path).completeBaseName().toLower();
    const QString program = value("Exec").section(u' ', 0, 0);
    names_ += {base, base.section(u'.', -1), value("StartupWMClass").toLower(),
               QFileInfo(program).fileName().toLower()};
    names_.remove(QString());
}

} // namespace quillmender
