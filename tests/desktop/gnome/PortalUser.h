#pragma once

#include "desktop/harness/Waiter.h"
#include "desktop/harness/gnome/GnomeDesktopTest.h"
#include "platform/linux/portal/Portal.h"

#include <QUuid>

#include <memory>
#include <optional>

namespace quillmender {

/// A desktop whose portal is asked by this process, as the product asks it.
class PortalUser : public harness::GnomeDesktopTest {
  protected:
    ~PortalUser() override {
        portal_.reset();
        if (!name_.isEmpty())
            QDBusConnection::disconnectFromBus(name_);
    }

    /// On a connection of its own. The one before is over: a program that has ended.
    portal::Portal &newPortal() {
        portal_.reset();
        if (!name_.isEmpty())
            QDBusConnection::disconnectFromBus(name_);
        name_ = QUuid::createUuid().toString();
        portal_.emplace(QDBusConnection::connectToBus(desktop().sessionBus().address(), name_));
        return *portal_;
    }

    /// Waits for what a task gives, after the user has done something.
    template <typename T>
    static T resultOf(QCoro::Task<T> task, const std::function<void()> &user) {
        // The task can outlast a test that has given up.
        const auto result = std::make_shared<std::optional<T>>();
        const auto settle = [](QCoro::Task<T> running,
                               std::shared_ptr<std::optional<T>> out) -> QCoro::Task<> {
            out->emplace(co_await running);
        };
        const auto settling = settle(std::move(task), result);
        user();
        harness::waitUntil([&] { return result->has_value(); },
                           QStringLiteral("the portal has answered"));
        return std::move(**result);
    }

  private:
    QString name_;
    std::optional<portal::Portal> portal_;
};

} // namespace quillmender
