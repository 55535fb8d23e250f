#include "platform/linux/desktop/DesktopEntry.h"

#include "platform/linux/desktop/ExecLine.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace quillmender {

namespace {

// Far above any real entry: what a stray link leads to is not read to its end.
constexpr qint64 largestFile = 1024LL * 1024;

QString unescaped(const QString &value) {
    QString result;
    for (qsizetype at = 0; at < value.size(); ++at) {
        if (value[at] != u'\\' || at + 1 == value.size()) {
            result += value[at];
            continue;
        }
        switch (const QChar code = value[++at]; code.unicode()) {
        case u's':
            result += u' ';
            break;
        case u'n':
            result += u'\n';
            break;
        case u't':
            result += u'\t';
            break;
        case u'r':
            result += u'\r';
            break;
        case u'\\':
            result += u'\\';
            break;
        default:
            result += u'\\';
            result += code;
        }
    }
    return result;
}

QString escaped(QString value) {
    value.replace(u'\\', QStringLiteral("\\\\"));
    value.replace(u'\n', QStringLiteral("\\n"));
    value.replace(u'\t', QStringLiteral("\\t"));
    value.replace(u'\r', QStringLiteral("\\r"));
    if (value.startsWith(u' '))
        value.replace(0, 1, QStringLiteral("\\s"));
    return value;
}

} // namespace

std::optional<DesktopEntry> DesktopEntry::read(const QString &path) {
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    bool hasGroup = false;
    bool isInGroup = false;
    DesktopEntry entry;
    for (const QString &line : QString::fromUtf8(file.read(largestFile)).split(u'\n')) {
        if (line.startsWith(u'[')) {
            isInGroup = line.trimmed() == QStringLiteral("[Desktop Entry]");
            hasGroup |= isInGroup;
            continue;
        }
        const qsizetype equals = line.indexOf(u'=');
        if (isInGroup && equals > 0 && !line.startsWith(u'#'))
            entry.values_.insert(line.left(equals).trimmed(), line.mid(equals + 1).trimmed());
    }
    if (!hasGroup)
        return std::nullopt;
    return entry;
}

QByteArray DesktopEntry::format(const QList<std::pair<QString, QString>> &values) {
    QString text = QStringLiteral("[Desktop Entry]\n");
    for (const auto &[key, value] : values)
        text += key + u'=' + escaped(value) + u'\n';
    return text.toUtf8();
}

std::optional<QString> DesktopEntry::string(const QString &key) const {
    const auto found = values_.constFind(key);
    if (found == values_.constEnd())
        return std::nullopt;
    return unescaped(*found);
}

bool DesktopEntry::isTrue(const QString &key) const {
    const QString value = values_.value(key);
    return value == QStringLiteral("true") || value == QStringLiteral("1");
}

bool DesktopEntry::isFalse(const QString &key) const {
    const QString value = values_.value(key);
    return value == QStringLiteral("false") || value == QStringLiteral("0");
}

QStringList DesktopEntry::command() const {
    const QString condition = string(QStringLiteral("TryExec")).value_or(QString());
    if (!condition.isEmpty() && QStandardPaths::findExecutable(condition).isEmpty())
        return {};
    auto command = execLine::parse(string(QStringLiteral("Exec")).value_or(QString()));
    if (!command)
        return {};
    // The search answers an absolute name with itself when it can be executed.
    command->first() = QStandardPaths::findExecutable(command->constFirst());
    return command->constFirst().isEmpty() ? QStringList() : *command;
}

} // namespace quillmender
