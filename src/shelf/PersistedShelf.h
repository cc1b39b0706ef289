// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Values.h"
#include "shelf/ShelfItem.h"

#include <set>
#include <string_view>
#include <vector>

namespace stowpocket {

class Bookmarks;
class FileManager;

/// Preference: the shelf, an array of one dictionary per item in shelf order.
inline constexpr std::string_view shelfBookmarksKey = "shelfBookmarks";

/// Two items may have one file; its access is ended once, so it is begun once. Main thread.
void beginAccess(const FileURL& url, Bookmarks& bookmarks, std::set<FileURL>& accessed);

[[nodiscard]] PropertyValue::Array encodedShelf(const std::vector<ShelfItem>& items);

struct DecodedShelf {
    std::vector<ShelfItem> items;
    /// URLs on which access was begun and is owed an end.
    std::set<FileURL> accessedResourceURLs;
    /// An item got a first or a fresh bookmark, so what is stored is behind.
    bool madeBookmarks = false;
    /// Items whose files are to be sought; they stand in the list as missing until then.
    std::vector<UUID> toBeSought;
};

/// Reads the shelf back. An entry that is malformed, or whose bookmark no longer leads anywhere, is left out; the
/// others keep their order. Main thread.
[[nodiscard]] DecodedShelf decodedShelf(const PropertyValue::Array& entries, Bookmarks& bookmarks,
                                        FileManager& fileManager);

}  // namespace stowpocket
