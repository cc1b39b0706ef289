// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

/// What the file system knows and a name does not. Answers the path without any link when `path` is a symbolic link
/// that leads somewhere, else nothing.
using LinkTarget = std::function<std::optional<std::string>(const std::string& path)>;

/// The absolute path that `path` names for somebody standing in the absolute `workingDirectory`, without ".", ".."
/// and doubled or trailing slashes. Links stay as they are written, but for one before "..", where the kernel too
/// goes to its target first. Empty when the path is empty or there is no working directory to begin at.
[[nodiscard]] std::optional<std::string> absolutePath(std::string_view path, std::string_view workingDirectory,
                                                      const LinkTarget& linkTarget);

/// The file that an argument names: a path, or a `file:` URL of this machine.
[[nodiscard]] std::optional<FileURL> fileOfArgument(std::string_view argument, std::string_view workingDirectory,
                                                    std::string_view localHost, const LinkTarget& linkTarget);

}  // namespace stowpocket
