// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Values.h"
#include "services/Preferences.h"
#include "shelf/ShelfItem.h"

#include <cstdint>
#include <set>
#include <string_view>
#include <vector>

namespace stowpocket {

class Bookmarks;
class FileManager;

/// Preference: the most items the shelf holds, an integer.
inline constexpr std::string_view shelfCapacityKey = "shelfCapacity";
inline constexpr std::int64_t defaultShelfCapacity = 20;

/// The capacity in force: the stored one, or the default where none above 0 is stored.
[[nodiscard]] inline std::int64_t shelfCapacity(const PreferenceStore& preferences) {
    const std::int64_t stored = preferences.integer(shelfCapacityKey);
    return stored < 1 ? defaultShelfCapacity : stored;
}

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
