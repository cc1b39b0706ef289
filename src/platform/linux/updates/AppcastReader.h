// SPDX-License-Identifier: MIT
#pragma once

#include "updates/UpdateStatus.h"

#include <QByteArray>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

/// The text of a piece of HTML, or of plain text: no markup, no scripts or style sheets, nothing that would be
/// fetched. Paragraphs, rows and list entries begin on new lines. `html` is well-formed UTF-8; text that is too long
/// for a window is cut off.
[[nodiscard]] std::string plainNotes(std::string_view html);

/// Parses a list of releases: RSS 2.0 with the elements and attributes of the update namespace. None if `bytes` are
/// not a complete list. A field that is too long, or an address that may not be requested, is left empty. A document
/// type, which could define entities, makes the list invalid.
[[nodiscard]] std::optional<std::vector<AppcastItem>> readAppcast(const QByteArray& bytes);

}  // namespace stowpocket
