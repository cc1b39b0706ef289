// SPDX-License-Identifier: MIT
#include "platform/linux/session/AccessibilityBus.h"

#include "platform/linux/dbus/BusCalls.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QLoggingCategory>

namespace stowpocket {
namespace {

Q_LOGGING_CATEGORY(sessionLog, "stowpocket.session")

constexpr int patienceMs = 300;
/// Makes Qt 6 ask for the address only, without waiting.
constexpr auto alwaysOn = "QT_LINUX_ACCESSIBILITY_ALWAYS_ON";

QDBusMessage question() {
    QDBusMessage question = propertyCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                         QStringLiteral("org.a11y.Status"), QStringLiteral("IsEnabled"));
    // A bus that is not running is not started for this, and Qt does not ask it either.
    question.setAutoStartService(false);
    return question;
}

}  // namespace

AccessibilityBusProbe::AccessibilityBusProbe(const QDBusConnection& bus)
    : answer_(bus.asyncCall(question(), patienceMs)) {}

bool AccessibilityBusProbe::avoidSilentBus() {
    answer_.waitForFinished();
    const QDBusError::ErrorType error = answer_.error().type();
    const bool isSilent =
        error == QDBusError::NoReply || error == QDBusError::Timeout || error == QDBusError::TimedOut;
    if (isSilent) {
        qCWarning(sessionLog, "the accessibility bus does not answer; it is served when it does");
        qputenv(alwaysOn, "1");
    }
    return !isSilent;
}

}  // namespace stowpocket
