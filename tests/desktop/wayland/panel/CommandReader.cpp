#include "desktop/wayland/panel/CommandReader.h"

#include <QCoreApplication>
#include <QJsonDocument>

#include <array>
#include <cstdio>
#include <unistd.h>

namespace quillmender::test {

CommandReader::CommandReader(std::function<void(const QString &)> perform,
                             std::function<QJsonObject()> state)
    : perform_(std::move(perform)),
      state_(std::move(state)),
      input_(STDIN_FILENO, QSocketNotifier::Read) {
    connect(&input_, &QSocketNotifier::activated, this, &CommandReader::read);
}

void CommandReader::read() {
    std::array<char, 4096> part{};
    const ssize_t size = ::read(STDIN_FILENO, part.data(), part.size());
    if (size <= 0) {
        QCoreApplication::exit();
        return;
    }
    unread_.append(part.data(), size);
    for (qsizetype end = unread_.indexOf('\n'); end >= 0; end = unread_.indexOf('\n')) {
        const QString line = QString::fromUtf8(unread_.first(end));
        unread_.remove(0, end + 1);
        perform_(line);
        std::puts(QJsonDocument(state_()).toJson(QJsonDocument::Compact).constData());
        std::fflush(stdout);
    }
}

} // namespace quillmender::test
