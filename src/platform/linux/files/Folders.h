// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace stowpocket {

/// The user's folders by the XDG Base Directory rules: the variable when it holds an absolute path, else the usual
/// place below the home folder; none when the user has no home folder. Not while another thread changes the
/// environment.
[[nodiscard]] std::optional<std::string> configHome();
[[nodiscard]] std::optional<std::string> dataHome();
/// `HOME` when it holds an absolute path, else what the user database says.
[[nodiscard]] std::optional<std::string> homeFolder();

/// Makes the folder at the absolute `path` and those missing above it, readable by the user alone. True when a folder
/// of this user stands there afterwards; a symbolic link in the last place is not taken for one, since whoever set it
/// decides where the user's files go.
[[nodiscard]] bool makeFolders(const std::string& path);

/// The folder that holds `path`.
[[nodiscard]] std::string parentFolder(const std::string& path);

}  // namespace stowpocket
