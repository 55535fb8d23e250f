#include "desktop/stalls/editor/StallingObject.h"

#include "desktop/stalls/editor/Nonsense.h"

#include <QThread>
#include <QTimer>

namespace quillmender {

namespace {

QString nameOf(const QDBusMessage &call) {
    if (call.member() == QStringLiteral("Get"))
        return QStringLiteral("Get:") + call.arguments().value(1).toString();
    return call.member();
}

bool changesText(const QString &call) {
    return call == QStringLiteral("InsertText") || call == QStringLiteral("DeleteText") ||
           call == QStringLiteral("SetTextContents");
}

QString described(const QDBusMessage &call) {
    QStringList arguments;
    for (const QVariant &argument : call.arguments())
        arguments.append(argument.toString());
    return QStringLiteral("%1(%2)").arg(call.member(), arguments.join(QStringLiteral(", ")));
}

} // namespace

StallingObject::StallingObject(QPlainTextEdit &field, AccessibleText &text, QDBusConnection bus)
    : field_(field),
      text_(text),
      bus_(std::move(bus)) {}

bool StallingObject::handleMessage(const QDBusMessage &call, const QDBusConnection &) {
    if (call.path() == QStringLiteral("/control")) {
        bus_.send(call.createReply(control(call)));
        return true;
    }
    const QString name = nameOf(call);
    const int number = ++counts_[name];
    const QString numbered = QStringLiteral("%1#%2").arg(name).arg(number);
    const Stall *stall = stallOf(numbered);
    calls_.append(described(call) + (stall ? QStringLiteral(" ") + stall->toString() : QString()));
    if (stall)
        misbehave(*stall, call);
    else
        bus_.send(text_.carryOut(call));
    return true;
}

const Stall *StallingObject::stallOf(const QString &call) {
    for (const Stall &stall : stalls_) {
        if (stall.at == call)
            return &stall;
    }
    return nullptr;
}

void StallingObject::misbehave(const Stall &stall, const QDBusMessage &call) {
    const auto act = [this, call] { bus_.send(text_.carryOut(call)); };
    const auto wait = static_cast<unsigned long>(stall.duration.count());
    switch (stall.how) {
    case Stall::How::hangs:
        QThread::msleep(wait);
        act();
        return;
    case Stall::How::hangsAfterwards: {
        const QDBusMessage answer = text_.carryOut(call);
        QThread::msleep(wait);
        bus_.send(answer);
        return;
    }
    case Stall::How::answersLate: {
        const QDBusMessage answer = text_.carryOut(call);
        later(stall.duration, [this, answer] { bus_.send(answer); });
        return;
    }
    case Stall::How::actsLate:
        later(stall.duration, act);
        return;
    case Stall::How::answersTwice: {
        const QDBusMessage answer = text_.carryOut(call);
        bus_.send(answer);
        bus_.send(answer);
        return;
    }
    case Stall::How::talksNonsense:
        text_.carryOut(call);
        bus_.send(nonsense(call, int(stall.duration.count())));
        return;
    case Stall::How::keepsSilent:
        text_.carryOut(call);
        return;
    case Stall::How::lies:
        bus_.send(changesText(call.member()) ? call.createReply(true)
                                             : nonsense(call, int(stall.duration.count())));
        return;
    case Stall::How::fails:
        bus_.send(call.createErrorReply(QDBusError::Failed, QStringLiteral("not today")));
        return;
    case Stall::How::isStopped:
    case Stall::How::isLate:
        act();
        return;
    }
}

void StallingObject::later(std::chrono::milliseconds after, const std::function<void()> &act) {
    ++pending_;
    QTimer::singleShot(after, this, [this, act] {
        act();
        --pending_;
    });
}

QVariantList StallingObject::control(const QDBusMessage &call) {
    if (call.member() == QStringLiteral("prepare"))
        prepare(call.arguments());
    return {field_.toPlainText(), pending_, sentinels_, calls_};
}

void StallingObject::prepare(const QVariantList &arguments) {
    stalls_.clear();
    for (const QString &text : arguments.value(3).toStringList()) {
        if (const auto stall = Stall::fromString(text))
            stalls_.append(*stall);
    }
    counts_.clear();
    calls_.clear();
    field_.setPlainText(arguments.value(0).toString());
    QTextCursor cursor = field_.textCursor();
    cursor.setPosition(arguments.value(1).toInt());
    cursor.setPosition(arguments.value(2).toInt(), QTextCursor::KeepAnchor);
    field_.setTextCursor(cursor);
}

} // namespace quillmender
