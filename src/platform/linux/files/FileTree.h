// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace stowpocket {

/// Copies the file or folder at `from` to `to`, where nothing may be yet. A link at `from` is followed, links inside
/// a folder are copied as links. Permissions are kept, but never the set-user and set-group bits. True when the whole
/// copy stands; otherwise nothing of it is left. Pipes, sockets and devices are refused.
[[nodiscard]] bool copyTree(const std::string& from, const std::string& to);

/// Removes the file, link or folder at `path` with all that it holds, never what a link leads to. True when nothing
/// is there afterwards.
bool removeTree(const std::string& path);

/// The same for a name in an open folder.
bool removeTreeAt(int folder, const char* name);

/// Folders nested deeper than this are neither copied nor removed.
inline constexpr int maxTreeDepth = 128;

}  // namespace stowpocket
