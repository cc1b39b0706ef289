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

/// A folder in which moved files are looked for, and how many levels below it.
struct SearchRoot {
    std::string path;
    int depth = 0;
};

/// How much one search may look at, whatever it is asked for.
struct SearchLimits {
    /// The folders in which the files were, where most of those that were given another name still are.
    std::chrono::milliseconds timeInOwnFolders{1000};
    /// Everything else.
    std::size_t entries = 20'000;
    std::chrono::milliseconds time{150};
};

/// Finds files that are no longer where they were recorded: one answer per record, in order, with the file's path.
/// First in the folder of each, wherever that has been renamed to; then, for all together, around those folders and
/// below `roots`. Enters no other mount, no hidden folder and no trash. Nothing on the way to a record or root may
/// hang.
[[nodiscard]] std::vector<std::optional<std::string>> searchForFiles(const std::vector<BookmarkRecord>& missing,
                                                                     const std::vector<SearchRoot>& roots,
                                                                     const Mounts& mounts,
                                                                     const SearchLimits& limits = {});

}  // namespace stowpocket
