// SPDX-License-Identifier: MIT
#pragma once

#include "services/RunningShelf.h"

#include <span>
#include <string>
#include <string_view>

namespace stowpocket {

[[nodiscard]] std::string_view helpText();

/// Makes `text` safe to print on one line of a terminal. Text that contains control characters, characters that
/// change lines or the direction of text, or bytes that are not UTF-8, is quoted with escapes as for a shell: $'...'.
[[nodiscard]] std::string printable(std::string_view text);

/// One path per line.
[[nodiscard]] std::string listText(std::span<const StagedFile> files);
/// An array of objects. The URL contains every byte of a name; "path" is null if the name is not UTF-8.
[[nodiscard]] std::string listJSON(std::span<const StagedFile> files);

}  // namespace stowpocket
