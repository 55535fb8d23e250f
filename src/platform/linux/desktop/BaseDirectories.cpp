#include "platform/linux/desktop/BaseDirectories.h"

#include <QByteArrayList>

namespace quillmender {

namespace {

constexpr const char *folders[] = {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME",
                                   "XDG_STATE_HOME", "XDG_RUNTIME_DIR"};
constexpr const char *lists[] = {"XDG_CONFIG_DIRS", "XDG_DATA_DIRS"};

void keepAbsolute(const char *variable) {
    const QByteArrayList given = qgetenv(variable).split(':');
    QByteArrayList kept;
    for (const QByteArray &folder : given)
        if (folder.startsWith('/'))
            kept.append(folder);
    if (kept.isEmpty())
        qunsetenv(variable);
    else if (kept.size() != given.size())
        qputenv(variable, kept.join(':'));
}

} // namespace

void unsetRelativeBaseDirectories() {
    for (const char *variable : folders)
        if (!qgetenv(variable).startsWith('/'))
            qunsetenv(variable);
    for (const char *variable : lists)
        keepAbsolute(variable);
}

} // namespace quillmender
