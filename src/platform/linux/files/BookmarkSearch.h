// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/BookmarkRecord.h"
#include "platform/linux/files/Mounts.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace stowpocket {

/// A folder in which moved files are looked for, and how many levels deep.
struct SearchRoot {
    std::string path;
    int depth = 0;
};

/// How much one search may look at, however many files it looks for.
struct SearchLimits {
    /// The folders in which the files were. Most renamed files are still there.
    std::chrono::milliseconds timeInOwnFolders{1000};
    /// Everything else.
    std::size_t entries = 20'000;
    std::chrono::milliseconds time{150};
};

/// Finds files that are no longer at their recorded paths. Returns one answer per record, in order, with the path of
/// the file. Looks first in the folder of each file, even if that was renamed; then, for all files together, around
/// those folders and below `roots`. Enters no other mount, no hidden folder and no trash. Nothing on the way to a
/// recorded path or a root may hang.
[[nodiscard]] std::vector<std::optional<std::string>> searchForFiles(const std::vector<BookmarkRecord>& missing,
                                                                     const std::vector<SearchRoot>& roots,
                                                                     const Mounts& mounts,
                                                                     const SearchLimits& limits = {});

}  // namespace stowpocket
