// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace stowpocket {

/// The text of a piece of HTML, or of plain text: no markup, no scripts or style sheets, nothing that would be
/// fetched. Paragraphs, rows and list entries begin on new lines. `html` is well-formed UTF-8; text that is too long
/// for a window is cut off.
[[nodiscard]] std::string plainNotes(std::string_view html);

}  // namespace stowpocket
