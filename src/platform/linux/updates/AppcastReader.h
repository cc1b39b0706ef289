// SPDX-License-Identifier: MIT
#pragma once

#include "updates/UpdateStatus.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace stowpocket {

/// Parses a list of releases: RSS 2.0 with the elements and attributes of the update namespace. None if `bytes` are
/// not a complete list. A field that is too long, or an address that may not be requested, is left empty. A document
/// type, which could define entities, makes the list invalid.
[[nodiscard]] std::optional<std::vector<AppcastItem>> readAppcast(const QByteArray& bytes);

}  // namespace stowpocket
