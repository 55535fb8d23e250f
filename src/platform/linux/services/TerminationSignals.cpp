#include "platform/linux/services/TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace quillmender {

namespace {

int wakeUp[2] = {-1, -1};

void handleSignal(int) {
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(wakeUp[0], &byte, 1);
}

} // namespace

void onTerminationSignal(std::function<void()> listener) {
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, wakeUp) != 0)
        return;
    auto *notifier =
        new QSocketNotifier(wakeUp[1], QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier,
                     [notifier, listener = std::move(listener)] {
                         notifier->setEnabled(false);
                         listener();
                     });
    struct sigaction action = {};
    action.sa_handler = handleSignal;
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        ::sigaction(signal, &action, nullptr);
}

} // namespace quillmender
