#include "platform/linux/terminal/ProcessTable.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>
#include <unistd.h>

namespace quillmender {

namespace {

constexpr unsigned firstTerminalMajor = 136;

QByteArray pathOf(qint64 process, const QByteArray &name) {
    return "/proc/" + QByteArray::number(process) + '/' + name;
}

QByteArray contentsOf(const QByteArray &path) {
    QFile file(QFile::decodeName(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Absent when the link cannot be read; errno then says why.
std::optional<QByteArray> targetOf(const QByteArray &link) {
    QByteArray target(4096, '\0');
    const ssize_t size = ::readlink(link.constData(), target.data(), std::size_t(target.size()));
    if (size < 0)
        return std::nullopt;
    target.truncate(size);
    return target;
}

dev_t deviceOf(quint32 number) {
    return makedev((number >> 8) & 0xfffU, (number & 0xffU) | ((number >> 12) & 0xfff00U));
}

std::optional<ProcessEntry> readEntry(qint64 process) {
    const QByteArray line = contentsOf(pathOf(process, "stat"));
    // The name before the state can hold anything but ends with the last parenthesis.
    const QByteArrayList fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    constexpr int needed = 6;
    if (fields.size() < needed || fields[0].isEmpty())
        return std::nullopt;
    return ProcessEntry{process,
                        fields[0].front(),
                        fields[1].toLongLong(),
                        fields[2].toLongLong(),
                        fields[3].toLongLong(),
                        deviceOf(fields[4].toUInt()),
                        fields[5].toLongLong()};
}

/// Names of what is in a folder of /proc; absent when it cannot be listed.
std::optional<QByteArrayList> listOf(const QByteArray &path) {
    const int folder = ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return std::nullopt;
    ::close(folder);
    QByteArrayList names;
    const QStringList found =
        QDir(QFile::decodeName(path))
            .entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QString &name : found)
        names.append(name.toLatin1());
    return names;
}

/// The device at the other end of a descriptor of /dev/ptmx.
std::optional<dev_t> terminalAt(qint64 process, const QByteArray &descriptor) {
    for (const QByteArray &line : contentsOf(pathOf(process, "fdinfo/" + descriptor)).split('\n')) {
        if (!line.startsWith("tty-index:"))
            continue;
        bool isNumber = false;
        const unsigned index = line.mid(10).trimmed().toUInt(&isNumber);
        if (isNumber)
            return makedev(firstTerminalMajor, index);
    }
    return std::nullopt;
}

} // namespace

ProcessTable ProcessTable::read() {
    ProcessTable table;
    const std::optional<QByteArrayList> names = listOf("/proc");
    for (const QByteArray &name : names.value_or(QByteArrayList())) {
        bool isNumber = false;
        const qint64 process = name.toLongLong(&isNumber);
        if (!isNumber)
            continue;
        if (const auto entry = readEntry(process))
            table.entries_.append(*entry);
    }
    return table;
}

QList<qint64> ProcessTable::familyOf(qint64 process) const {
    QList<qint64> family{process};
    for (qsizetype i = 0; i < family.size(); ++i) {
        for (const ProcessEntry &entry : entries_) {
            if (entry.parent == family[i] && !family.contains(entry.id))
                family.append(entry.id);
        }
    }
    return family;
}

bool ProcessTable::isAncestor(qint64 ancestor, qint64 process) const {
    return ancestor != process && familyOf(ancestor).contains(process);
}

bool isStopped(qint64 process) {
    const auto entry = readEntry(process);
    return entry && (entry->state == 'T' || entry->state == 't');
}

std::optional<QSet<dev_t>> terminalsHeldBy(qint64 process) {
    const auto descriptors = listOf(pathOf(process, "fd"));
    if (!descriptors)
        return errno == ENOENT ? std::optional(QSet<dev_t>()) : std::nullopt;
    QSet<dev_t> terminals;
    for (const QByteArray &descriptor : *descriptors) {
        const auto target = targetOf(pathOf(process, "fd/" + descriptor));
        if (!target && errno != ENOENT)
            return std::nullopt;
        if (!target || !target->endsWith("ptmx"))
            continue;
        const auto terminal = terminalAt(process, descriptor);
        if (!terminal)
            return std::nullopt;
        terminals.insert(*terminal);
    }
    return terminals;
}

QByteArray programOf(qint64 process) {
    QByteArray path = targetOf(pathOf(process, "exe")).value_or(QByteArray());
    // It was upgraded since it was started.
    if (path.endsWith(" (deleted)"))
        path.chop(10);
    return path.mid(path.lastIndexOf('/') + 1);
}

QByteArrayList argumentsOf(qint64 process) {
    QByteArray all = contentsOf(pathOf(process, "cmdline"));
    if (all.endsWith('\0'))
        all.chop(1);
    return all.isEmpty() ? QByteArrayList() : all.split('\0');
}

QByteArray environmentOf(qint64 process, const QByteArray &name) {
    const QByteArrayList variables = contentsOf(pathOf(process, "environ")).split('\0');
    for (const QByteArray &variable : variables) {
        if (variable.startsWith(name + '='))
            return variable.mid(name.size() + 1);
    }
    return {};
}

bool isWaitingForChild(qint64 process) {
    const auto threads = listOf(pathOf(process, "task"));
    return threads && !threads->isEmpty() &&
           std::all_of(threads->begin(), threads->end(), [&](const QByteArray &thread) {
               return contentsOf(pathOf(process, "task/" + thread + "/wchan"))
                   .startsWith("do_wait");
           });
}

bool readsKeysOf(qint64 process, dev_t device) {
    for (const char *stream : {"fd/0", "fd/1", "fd/2"}) {
        const QByteArray path = pathOf(process, stream);
        struct stat about{};
        // Looked at before it is opened: opening anything else may have effects.
        if (::stat(path.constData(), &about) != 0 || !S_ISCHR(about.st_mode) ||
            about.st_rdev != device)
            continue;
        const int terminal = ::open(path.constData(), O_RDONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
        if (terminal < 0)
            continue;
        const auto closing = qScopeGuard([terminal] { ::close(terminal); });
        struct termios settings{};
        if (::tcgetattr(terminal, &settings) == 0)
            return (settings.c_lflag & tcflag_t(ICANON)) == 0;
    }
    return false;
}

} // namespace quillmender
