// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>

#include <chrono>
#include <functional>

class QObject;

namespace stowpocket {

/// Sends `call` without waiting. Runs `then` once with the answer, or with the error that came instead, unless
/// `context` is gone by then. No answer within the limit is an error.
void callOnBus(const QDBusConnection& bus, const QDBusMessage& call, QObject& context,
               std::function<void(const QDBusMessage& answer)> then,
               std::chrono::milliseconds limit = std::chrono::seconds(25));

/// A call of the message bus itself.
[[nodiscard]] QDBusMessage busCall(const QString& method, const QVariantList& arguments);

/// Asks the message bus for a name, without waiting in line for it.
[[nodiscard]] QDBusMessage nameRequest(const QString& name);

/// The question for a property of another program's object. Its answer holds a QDBusVariant.
[[nodiscard]] QDBusMessage propertyCall(const QString& service, const QString& path, const QString& interface,
                                        const QString& property);

}  // namespace stowpocket

namespace stowpocket {

/// Finds out whether the accessibility bus answers. Qt would wait 25 seconds, twice, for one that does not. Main
/// thread.
class AccessibilityBusProbe {
public:
    /// Sends the question and does not wait for the answer.
    explicit AccessibilityBusProbe(const QDBusConnection& bus);

    /// Called before the first window. Waits until at most 300 ms after the question. Without an answer by then,
    /// returns false and has Qt serve screen readers without asking whether there is one.
    bool avoidSilentBus();

private:
    QDBusPendingCall answer_;
};

}  // namespace stowpocket
