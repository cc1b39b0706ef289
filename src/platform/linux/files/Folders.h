// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace stowpocket {

/// Makes the folder at the absolute `path` and those missing above it, readable by the user alone. True when a folder
/// of this user stands there afterwards; a symbolic link in the last place is not taken for one, since whoever set it
/// decides where the user's files go.
[[nodiscard]] bool makeFolders(const std::string& path);

/// The folder that holds `path`.
[[nodiscard]] std::string parentFolder(const std::string& path);

}  // namespace stowpocket
