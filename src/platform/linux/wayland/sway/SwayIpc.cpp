#include "platform/linux/wayland/sway/SwayIpc.h"

#include "platform/SignalWait.h"

#include <QJsonArray>
#include <QLoggingCategory>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace quillmender::sway {

using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.sway", QtWarningMsg)

constexpr std::chrono::milliseconds longestPause = 10s;

/// A compositor that is stopped answers none; what is asked meanwhile must not pile up.
constexpr size_t mostQuestions = 64;

} // namespace

SwayIpc::SwayIpc(QString socketPath) : path_(std::move(socketPath)) {
    again_.setSingleShot(true);
    connect(&again_, &QTimer::timeout, this, &SwayIpc::connectToCompositor);
    connectToCompositor();
}

SwayIpc::~SwayIpc() {
    if (socket_)
        socket_->disconnect(this);
    for (const auto &question : std::exchange(questions_, {}))
        question->end(std::nullopt);
}

std::unique_ptr<SwayIpc> SwayIpc::open() {
    const QString path = qEnvironmentVariable("SWAYSOCK");
    if (path.isEmpty())
        return nullptr;
    auto ipc = std::make_unique<SwayIpc>(path);
    return ipc->isConnected() ? std::move(ipc) : nullptr;
}

QCoro::Task<std::optional<QJsonDocument>> SwayIpc::ask(Request request, QByteArray payload,
                                                       std::chrono::milliseconds limit) {
    const std::shared_ptr<IpcQuestion> question = start(request, payload);
    if (!question)
        co_return std::nullopt;
    if (!question->isOver())
        co_await SignalWait(question.get(), &IpcQuestion::over, limit);
    co_return question->answer();
}

void SwayIpc::post(Request request, const QByteArray &payload) {
    start(request, payload);
}

void SwayIpc::subscribe(const QStringList &events) {
    QStringList added;
    for (const QString &event : events) {
        if (!subscribed_.contains(event))
            added.append(event);
    }
    subscribed_ += added;
    if (isConnected() && !added.isEmpty())
        sendSubscription(added);
}

std::shared_ptr<IpcQuestion> SwayIpc::start(Request request, const QByteArray &payload) {
    if (!isConnected() || questions_.size() >= mostQuestions)
        return nullptr;
    const auto type = static_cast<quint32>(request);
    const auto question = std::make_shared<IpcQuestion>(type);
    questions_.push_back(question);
    socket_->write(encode({type, payload}));
    // Who says something last goes away right after it.
    if (socket_)
        socket_->flush();
    return question;
}

void SwayIpc::sendSubscription(const QStringList &events) {
    post(Request::subscribe,
         QJsonDocument(QJsonArray::fromStringList(events)).toJson(QJsonDocument::Compact));
}

void SwayIpc::connectToCompositor() {
    auto socket = std::make_unique<QLocalSocket>();
    socket->connectToServer(path_);
    if (socket->state() != QLocalSocket::ConnectedState) {
        socket->abort();
        tryAgainLater();
        return;
    }
    socket_ = std::move(socket);
    decoder_ = IpcDecoder();
    connect(socket_.get(), &QLocalSocket::readyRead, this, &SwayIpc::receive);
    connect(socket_.get(), &QLocalSocket::disconnected, this,
            [this] { endConnection("the compositor has closed it"); });
    if (!subscribed_.isEmpty())
        sendSubscription(subscribed_);
    Q_EMIT connected();
}

void SwayIpc::tryAgainLater() {
    again_.start(pause_);
    pause_ = std::min(pause_ * 2, longestPause);
}

void SwayIpc::receive() {
    decoder_.add(socket_->readAll());
    // Whoever hears of a message may end the connection, or this object.
    const QPointer self(this);
    while (self && isConnected()) {
        const std::optional<IpcMessage> message = decoder_.next();
        if (!message)
            break;
        take(*message);
    }
    if (self && isConnected() && decoder_.isGarbage())
        endConnection("the compositor does not speak the i3 protocol");
}

void SwayIpc::take(const IpcMessage &message) {
    QJsonParseError error;
    const QJsonDocument content = QJsonDocument::fromJson(message.payload, &error);
    if (error.error != QJsonParseError::NoError) {
        endConnection("the compositor sends what is no JSON");
        return;
    }
    if (message.isEvent()) {
        Q_EMIT eventReceived(static_cast<Event>(message.type), content.object());
        return;
    }
    if (questions_.empty() || questions_.front()->type() != message.type) {
        endConnection("the compositor answers what nobody asked");
        return;
    }
    // A connection that answers is worth another one at once when it ends.
    pause_ = firstPause;
    const auto question = questions_.front();
    questions_.pop_front();
    question->end(content);
}

void SwayIpc::endConnection(const char *reason) {
    if (!isConnected())
        return;
    qCWarning(log, "the connection to the compositor's socket ends: %s", reason);
    socket_->disconnect(this);
    socket_->abort();
    socket_.release()->deleteLater();
    tryAgainLater();
    const QPointer self(this);
    for (const auto &question : std::exchange(questions_, {}))
        question->end(std::nullopt);
    if (self)
        Q_EMIT lost();
}

} // namespace quillmender::sway
