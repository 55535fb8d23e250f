#include "platform/linux/wayland/sway/SwayHotKey.h"

#include "platform/linux/wayland/sway/SwayBindings.h"
#include "platform/linux/wayland/sway/SwayConfig.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QLoggingCategory>

namespace quillmender::sway {

using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.sway", QtWarningMsg)

constexpr std::chrono::milliseconds answerLimit = 5s;
constexpr std::chrono::milliseconds pauseAfterSilence = 2s;

const QString usualMode = QStringLiteral("default");

QString uniqueCommand() {
    static int number = 0;
    return QStringLiteral("nop quillmender %1-%2")
        .arg(QCoreApplication::applicationPid())
        .arg(++number);
}

/// Absent when the compositor has not said whether it did.
std::optional<bool> isDone(const std::optional<QJsonDocument> &answer) {
    if (!answer || answer->array().isEmpty())
        return std::nullopt;
    return answer->array().first().toObject()[u"success"].toBool();
}

} // namespace

SwayHotKey::SwayHotKey(SwayIpc &ipc, QKeyCombination keys, QString spelled,
                       std::function<void()> handler)
    : HeldHotKey(std::move(handler)),
      ipc_(ipc),
      asked_(keys),
      spelled_(std::move(spelled)),
      command_(uniqueCommand()) {
    again_.setSingleShot(true);
    connect(&again_, &QTimer::timeout, this, &SwayHotKey::refresh);
    connect(&ipc_, &SwayIpc::eventReceived, this, &SwayHotKey::handleEvent);
    connect(&ipc_, &SwayIpc::connected, this, &SwayHotKey::refresh);
    connect(&ipc_, &SwayIpc::lost, this, &SwayHotKey::handleLoss);
    ipc_.subscribe(
        {QStringLiteral("binding"), QStringLiteral("mode"), QStringLiteral("workspace")});
    refresh();
}

SwayHotKey::~SwayHotKey() {
    if (mayBeBound_)
        ipc_.post(Request::runCommand, "unbindsym " + spelled_.toUtf8());
}

std::optional<QKeyCombination> SwayHotKey::keys() const {
    return isHeld_ ? std::optional(asked_) : std::nullopt;
}

void SwayHotKey::refresh() {
    ++turn_;
    again_.stop();
    if (isTaking_)
        return;
    isTaking_ = true;
    take(this);
}

QCoro::Task<> SwayHotKey::take(QPointer<SwayHotKey> self) {
    Attempt outcome;
    quint64 turn = 0;
    do {
        turn = self->turn_;
        outcome = co_await attempt(self, turn);
        if (!self)
            co_return;
    } while (turn != self->turn_);
    self->settle(outcome);
}

QCoro::Task<SwayHotKey::Attempt> SwayHotKey::attempt(QPointer<SwayHotKey> self, quint64 turn) {
    const auto silent = QStringLiteral("the compositor does not answer");
    const QPointer<SwayIpc> ipc(&self->ipc_);
    const QKeyCombination keys = self->asked_;
    const QByteArray order = (self->spelled_ + u' ' + self->command_).toUtf8();

    const std::optional<QString> line = co_await lineInTheWay(ipc, keys);
    if (!self)
        co_return Attempt{};
    if (!line)
        co_return Attempt{.isWorthRepeating = true, .reason = silent};
    if (!line->isEmpty())
        co_return Attempt{
            .reason = QStringLiteral("the compositor's configuration binds it: %1").arg(*line)};

    const auto state = co_await ipc->ask(Request::getBindingState, QByteArray(), answerLimit);
    if (!self || self->turn_ != turn)
        co_return Attempt{};
    const QString mode = state ? state->object()[u"name"].toString() : QString();
    if (state && mode != usualMode)
        co_return Attempt{.reason = QStringLiteral("the compositor is in the mode %1").arg(mode)};

    self->mayBeBound_ = true;
    const QByteArray withoutRepeats = "bindsym --no-repeat " + order;
    const QByteArray withRepeats = "bindsym " + order;
    auto answer = co_await ipc->ask(Request::runCommand, withoutRepeats, answerLimit);
    if (!self)
        co_return Attempt{};
    self->isWithoutRepeats_ = true;
    if (isDone(answer) == false) {
        // Older ones do not know the option.
        answer = co_await ipc->ask(Request::runCommand, withRepeats, answerLimit);
        if (!self)
            co_return Attempt{};
        self->isWithoutRepeats_ = false;
    }
    const std::optional<bool> isBound = isDone(answer);
    if (!isBound)
        co_return Attempt{.isWorthRepeating = true, .reason = silent};
    self->mayBeBound_ = *isBound;
    if (!*isBound)
        co_return Attempt{.reason = QStringLiteral("the compositor refuses to bind it")};
    co_return Attempt{.isHeld = true};
}

QCoro::Task<std::optional<QString>> SwayHotKey::lineInTheWay(QPointer<SwayIpc> ipc,
                                                             QKeyCombination keys) {
    const auto version = co_await ipc->ask(Request::getVersion, QByteArray(), answerLimit);
    if (!ipc || !version)
        co_return std::nullopt;
    const auto config = co_await ipc->ask(Request::getConfig, QByteArray(), answerLimit);
    if (!ipc || !config || !config->object()[u"config"].isString())
        co_return std::nullopt;
    const QStringList lines =
        configurationLines(config->object()[u"config"].toString(),
                           version->object()[u"loaded_config_file_name"].toString());
    co_return bindingOf(keys, lines).value_or(QString());
}

void SwayHotKey::settle(const Attempt &outcome) {
    isTaking_ = false;
    if (outcome.isWorthRepeating && ipc_.isConnected())
        again_.start(pauseAfterSilence);
    const QPointer self(this);
    setHeld(outcome.isHeld, outcome.reason);
    if (self)
        Q_EMIT settled();
}

void SwayHotKey::setHeld(bool isHeld, const QString &reason) {
    if (reason_ != reason && !reason.isEmpty())
        qCWarning(log, "the hot key %s is not held: %s", qUtf8Printable(spelled_),
                  qUtf8Printable(reason));
    reason_ = reason;
    if (isHeld_ == isHeld)
        return;
    isHeld_ = isHeld;
    Q_EMIT keysChanged();
}

void SwayHotKey::handleEvent(Event event, const QJsonObject &content) {
    const QString change = content[u"change"].toString();
    if (event == Event::binding) {
        handleBinding(content[u"binding"].toObject());
    } else if (event == Event::workspace && change == QStringLiteral("reload")) {
        // What was bound has gone, and the keys may be somebody else's by now.
        mayBeBound_ = false;
        refresh();
    } else if (event == Event::mode && change == usualMode && !isHeld_) {
        refresh();
    }
}

void SwayHotKey::handleBinding(const QJsonObject &binding) {
    if (binding[u"command"].toString() == command_) {
        handlePress();
    } else if (isHeld_ && isOurCombination(binding)) {
        mayBeBound_ = false;
        setHeld(false, QStringLiteral("it has been bound to something else"));
    }
}

void SwayHotKey::handlePress() {
    // From the press to its first repeat, with a keyboard as slow as anybody has it.
    constexpr qint64 longestRepeatGap = 1000;
    const bool isRepeat =
        !isWithoutRepeats_ && lastPress_.isValid() && lastPress_.elapsed() < longestRepeatGap;
    lastPress_.start();
    if (!isRepeat)
        press();
}

bool SwayHotKey::isOurCombination(const QJsonObject &binding) const {
    QStringList parts;
    for (const auto *kind : {u"event_state_mask", u"symbols"}) {
        const QJsonArray names = binding[QStringView(kind)].toArray();
        for (const QJsonValue &name : names)
            parts.append(name.toString());
    }
    const int code = binding[u"input_code"].toInt();
    if (code > 0 && binding[u"symbols"].toArray().isEmpty())
        parts.append(QString::number(code));
    return bindingOf(asked_, {QStringLiteral("bindsym ") + parts.join(u'+')}).has_value();
}

void SwayHotKey::handleLoss() {
    ++turn_;
    // The user may have loaded a configuration that has the keys before it is back.
    mayBeBound_ = false;
    setHeld(false, QStringLiteral("the compositor's socket is gone"));
}

} // namespace quillmender::sway
