// SPDX-License-Identifier: MIT
#pragma once

#include "services/RunningShelf.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace stowpocket {

[[nodiscard]] std::string_view helpText();

/// Makes `text` safe to print on one line of a terminal. Text that contains control characters, characters that
/// change lines or the direction of text, or bytes that are not UTF-8, is quoted with escapes as for a shell: $'...'.
[[nodiscard]] std::string printable(std::string_view text);

/// `format` for each file, with `end` behind it: %p stands for the path, %n the name, %u the URL, %i the id, %s the
/// size in bytes, %% a percent sign, and \0, \n, \t and \\ are escapes. Names are printable, unless NUL is the end.
/// None if the format contains any other of these, or ends in the middle of one.
[[nodiscard]] std::optional<std::string> listText(std::span<const StagedFile> files, std::string_view format,
                                                  char end);
/// An array of objects. The URL contains every byte of a name; "path" is null if the name is not UTF-8.
[[nodiscard]] std::string listJSON(std::span<const StagedFile> files);

}  // namespace stowpocket
