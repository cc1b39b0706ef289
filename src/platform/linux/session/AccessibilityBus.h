// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>

namespace stowpocket {

/// Has Qt serve screen readers without asking whether there is one, where the bus of accessibility does not answer
/// that within 300 ms; Qt would wait for it 25 seconds, twice. Waits no longer than that itself. Main thread, before
/// the first window. False when the bus is silent.
bool avoidSilentAccessibilityBus(const QDBusConnection& bus);

}  // namespace stowpocket
