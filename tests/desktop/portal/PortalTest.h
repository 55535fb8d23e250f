#pragma once

#include "desktop/harness/Waiter.h"
#include "desktop/portal/FakeDesktopPortal.h"
#include "platform/linux/portal/Portal.h"
#include "support/RunTask.h"

#include <QUuid>
#include <gmock/gmock.h>

#include <optional>

namespace quillmender {

/// A portal, and somebody who asks it on a connection of its own.
class PortalTest : public testing::Test {
  protected:
    using Manner = FakeDesktopPortal::Manner;
    using Outcome = portal::PortalAnswer::Outcome;

    ~PortalTest() override { QDBusConnection::disconnectFromBus(name_); }

    const QString name_ = QUuid::createUuid().toString();
    std::optional<FakeDesktopPortal> fake_{std::in_place};
    portal::Portal portal_{QDBusConnection::connectToBus(QDBusConnection::SessionBus, name_)};
};

} // namespace quillmender
