// SPDX-License-Identifier: MIT
#pragma once

#include "services/RunningShelf.h"

#include <span>
#include <string>
#include <string_view>

namespace stowpocket {

[[nodiscard]] std::string_view helpText();

/// `text` on one line that a terminal shows and does not obey: as it is where it can be, else as a shell would take
/// it, $'...' with escapes, when it holds characters that control the terminal, the lines or the direction of text,
/// or bytes that are no UTF-8.
[[nodiscard]] std::string printable(std::string_view text);

/// One path a line.
[[nodiscard]] std::string listText(std::span<const StagedFile> files);
/// An array of objects. The URL holds every byte of a name; "path" is null where the name is no UTF-8.
[[nodiscard]] std::string listJSON(std::span<const StagedFile> files);

}  // namespace stowpocket
