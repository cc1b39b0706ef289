// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>

#include <string>

namespace stowpocket {

/// Starts `executable`, independent of this process, and waits until somebody owns `name` on the bus. False when the
/// program ends before that, or takes too long.
[[nodiscard]] bool startProgramAndAwaitName(const std::string& executable, const QDBusConnection& bus,
                                            const QString& name);

}  // namespace stowpocket
