#include "unit/platform/wayland/FakeSway.h"

#include <QJsonArray>

namespace quillmender::sway {

namespace {

QByteArray text(const QJsonObject &object) {
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace

FakeSway::FakeSway() {
    toCommand = [](const QString &) { return QByteArray(R"([{"success":true}])"); };
    listen();
}

void FakeSway::listen() {
    server_ = std::make_unique<QLocalServer>();
    server_->listen(path());
    connect(server_.get(), &QLocalServer::newConnection, this, &FakeSway::accept);
}

void FakeSway::goAway() {
    server_.reset();
    socket_ = nullptr;
}

void FakeSway::accept() {
    socket_ = server_->nextPendingConnection();
    decoder_ = IpcDecoder();
    ++connections_;
    connect(socket_, &QLocalSocket::readyRead, this, [this, socket = socket_] {
        decoder_.add(socket->readAll());
        while (const auto message = decoder_.next())
            handle(*message);
    });
}

void FakeSway::sendRaw(const QByteArray &bytes) {
    if (!socket_)
        return;
    socket_->write(bytes);
    socket_->flush();
}

void FakeSway::sendEvent(Event event, const QByteArray &content) {
    send({static_cast<quint32>(event), content});
}

void FakeSway::answer(Request request, const QByteArray &content) {
    send({static_cast<quint32>(request), content});
}

QStringList FakeSway::commands() const {
    QStringList commands;
    for (const IpcMessage &message : received) {
        if (message.type == static_cast<quint32>(Request::runCommand))
            commands.append(QString::fromUtf8(message.payload));
    }
    return commands;
}

QStringList FakeSway::subscriptions() const {
    QStringList subscriptions;
    for (const IpcMessage &message : received) {
        if (message.type == static_cast<quint32>(Request::subscribe))
            subscriptions.append(QString::fromUtf8(message.payload));
    }
    return subscriptions;
}

int FakeSway::asked(Request request) const {
    return static_cast<int>(
        std::ranges::count(received, static_cast<quint32>(request), &IpcMessage::type));
}

void FakeSway::handle(const IpcMessage &message) {
    received.append(message);
    const auto request = static_cast<Request>(message.type);
    if (silentTo.contains(request))
        return;
    switch (request) {
    case Request::runCommand:
        if (const auto answered = toCommand(QString::fromUtf8(message.payload)))
            answer(request, *answered);
        break;
    case Request::subscribe:
        answer(request, R"({"success":true})");
        break;
    case Request::getTree:
        answer(request, tree);
        break;
    case Request::getVersion:
        answer(request, text({{QStringLiteral("loaded_config_file_name"), configPath()}}));
        break;
    case Request::getConfig:
        answer(request, text({{QStringLiteral("config"), QString::fromUtf8(config)}}));
        break;
    case Request::getBindingState:
        answer(request, text({{QStringLiteral("name"), QString::fromUtf8(mode)}}));
        break;
    }
}

} // namespace quillmender::sway
