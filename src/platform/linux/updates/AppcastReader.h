// SPDX-License-Identifier: MIT
#pragma once

#include "updates/UpdateTransport.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace stowpocket {

/// Reads a list of releases: RSS 2.0 with the elements and attributes of the update namespace. None when `bytes` are
/// no such list to the end. A field that is too long, or an address that may not be asked, is left empty; a document
/// type, which could define entities, makes it none.
[[nodiscard]] std::optional<std::vector<AppcastItem>> readAppcast(const QByteArray& bytes);

}  // namespace stowpocket
