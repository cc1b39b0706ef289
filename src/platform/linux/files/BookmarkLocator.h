// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/BookmarkSearch.h"
#include "platform/linux/files/MountTable.h"
#include "services/Bookmarks.h"

#include <optional>
#include <string>
#include <vector>

namespace stowpocket {

/// Describes the file at `url`; none when there is no such file.
[[nodiscard]] std::optional<BookmarkRecord> describeFile(const FileURL& url, const Mounts& mounts);

/// Whether each of the recorded files is where it was, one answer per record in order. A file that is not there, on a
/// volume that is, is to be sought.
[[nodiscard]] std::vector<std::optional<ResolvedBookmark>>
filesInTheirPlaces(const std::vector<BookmarkRecord>& records, const Mounts& mounts);

/// Where the recorded files are now, one answer per record in order; none for one that is gone. Those that are not in
/// their places share one search.
[[nodiscard]] std::vector<std::optional<ResolvedBookmark>>
locateFiles(const std::vector<BookmarkRecord>& records, const std::vector<SearchRoot>& roots, const Mounts& mounts);

}  // namespace stowpocket
