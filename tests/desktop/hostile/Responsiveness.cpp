#include "desktop/hostile/Responsiveness.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QUuid>

#include <condition_variable>

namespace quillmender {

using namespace std::chrono_literals;

namespace {

const auto bystanderName = QStringLiteral("com.quillmender.Bystander");

harness::Command bystanderOf(harness::Desktop &desktop) {
    return desktop.command(QStringLiteral(QUILLMENDER_BYSTANDER));
}

} // namespace

Responsiveness::Responsiveness(harness::Desktop &desktop)
    : bystanderProcess_(bystanderOf(desktop)),
      program_(desktop.sessionBus().address(), QStringLiteral("com.quillmender.Quillmender"),
               QStringLiteral("/com/quillmender/Quillmender")),
      bystander_((desktop.sessionBus().waitForOwner(bystanderName), desktop.sessionBus().address()),
                 bystanderName, QStringLiteral("/bystander")) {}

Responsiveness::~Responsiveness() = default;

Responsiveness::Questioner::Questioner(QString address, QString service, QString path)
    : address_(std::move(address)),
      service_(std::move(service)),
      path_(std::move(path)),
      thread_([this](const std::stop_token &stop) { run(stop); }) {}

std::chrono::milliseconds Responsiveness::Questioner::longest() const {
    const std::scoped_lock lock(mutex_);
    const Clock::duration underWay =
        askedAt_ == Clock::time_point() ? Clock::duration() : Clock::now() - askedAt_;
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::max(longest_, underWay));
}

void Responsiveness::Questioner::run(const std::stop_token &stop) {
    const QString name = QUuid::createUuid().toString();
    {
        const QDBusConnection bus = QDBusConnection::connectToBus(address_, name);
        // An answer to this one comes from the thread that the object lives in.
        const QDBusMessage question = QDBusMessage::createMethodCall(
            service_, path_, QStringLiteral("org.freedesktop.DBus.Introspectable"),
            QStringLiteral("Introspect"));
        std::mutex pauseMutex;
        std::condition_variable_any pause;
        bool answers = true;
        while (answers && !stop.stop_requested()) {
            {
                const std::scoped_lock lock(mutex_);
                askedAt_ = Clock::now();
            }
            constexpr int deadline = 60'000;
            answers =
                bus.call(question, QDBus::Block, deadline).type() == QDBusMessage::ReplyMessage;
            {
                const std::scoped_lock lock(mutex_);
                if (answers)
                    longest_ = std::max(longest_, Clock::now() - askedAt_);
                askedAt_ = {};
            }
            std::unique_lock lock(pauseMutex);
            pause.wait_for(lock, stop, 5ms, [] { return false; });
        }
    }
    QDBusConnection::disconnectFromBus(name);
}

} // namespace quillmender
