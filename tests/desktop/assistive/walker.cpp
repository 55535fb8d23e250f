#include "desktop/harness/AccessibleClient.h"

#include <QCoreApplication>
#include <QFile>

#include <csignal>
#include <cstdio>

using quillmender::harness::Accessible;
using quillmender::harness::AccessibleClient;

namespace {

volatile std::sig_atomic_t isToEnd = 0;

/// What a screen reader asks about each object, in its order: count the children, then ask for one
/// after the other. Answers the number of objects.
int walk(const Accessible &node, int depth) {
    constexpr int deepest = 40;
    node.name();
    node.description();
    node.role();
    node.hasState(quillmender::harness::AccessibleState::showing);
    node.extents();
    node.indexInParent();
    const QStringList interfaces = node.interfaces();
    if (interfaces.contains(QStringLiteral("org.a11y.atspi.Text"))) {
        const int end = int(node.text().size());
        node.caretOffset();
        node.selection();
        node.characterExtents(end - 1);
        node.characterExtents(end);
    }
    int objects = 1;
    const int children = depth < deepest ? node.childCount() : 0;
    for (int i = 0; i < children && !isToEnd; ++i) {
        if (const auto child = node.child(i))
            objects += walk(*child, depth + 1);
    }
    return objects;
}

} // namespace

/// Walks the accessible tree of a process without a pause, until it is told to end (SIGTERM).
/// Arguments: the address of the accessibility bus, the process. Its output is a line per walk: how
/// many objects it met.
int main(int argc, char *argv[]) {
    const QCoreApplication application(argc, argv);
    std::signal(SIGTERM, [](int) { isToEnd = 1; });
    const AccessibleClient client(
        QDBusConnection::connectToBus(QString::fromLocal8Bit(argv[1]), QStringLiteral("walker")));
    const qint64 process = QByteArray(argv[2]).toLongLong();
    while (!isToEnd) {
        const auto program = client.application(process);
        if (!program)
            continue;
        std::printf("%d\n", walk(*program, 0));
        std::fflush(stdout);
    }
}
