// SPDX-License-Identifier: MIT
#include "platform/linux/session/AccessibilityBus.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>

namespace stowpocket {
namespace {

TEST(AccessibilityBusTest, oneThatIsSilentIsNotWaitedFor) {
    constexpr auto alwaysOn = "QT_LINUX_ACCESSIBILITY_ALWAYS_ON";
    const QByteArray before = qgetenv(alwaysOn);
    qunsetenv(alwaysOn);
    PrivateBus bus;
    const QDBusConnection program = bus.connection(QStringLiteral("program"));
    EXPECT_TRUE(AccessibilityBusProbe(program).avoidSilentBus()) << "there is none";
    EXPECT_FALSE(qEnvironmentVariableIsSet(alwaysOn));
    // Its owner is this thread, which waits and so cannot answer.
    QDBusConnection owner = bus.connection(QStringLiteral("owner"));
    QObject silent;
    ASSERT_TRUE(owner.registerObject(QStringLiteral("/org/a11y/bus"), &silent, QDBusConnection::ExportAllProperties));
    ASSERT_TRUE(owner.registerService(QStringLiteral("org.a11y.Bus")));
    EXPECT_FALSE(AccessibilityBusProbe(program).avoidSilentBus());
    EXPECT_TRUE(qEnvironmentVariableIsSet(alwaysOn));
    before.isNull() ? qunsetenv(alwaysOn) : qputenv(alwaysOn, before);
}

}  // namespace
}  // namespace stowpocket
