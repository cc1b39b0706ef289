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

/// The current capacity: the stored one, or the default if no value above 0 is stored.
[[nodiscard]] inline std::int64_t shelfCapacity(const PreferenceStore& preferences) {
    const std::int64_t stored = preferences.integer(shelfCapacityKey);
    return stored < 1 ? defaultShelfCapacity : stored;
}

/// Preference: the shelf, an array of one dictionary per item in shelf order.
inline constexpr std::string_view shelfBookmarksKey = "shelfBookmarks";

/// Begins access to the file unless it has begun already: two items may have the same file, and access ends once.
/// Main thread.
void beginAccess(const FileURL& url, Bookmarks& bookmarks, std::set<FileURL>& accessed);

[[nodiscard]] PropertyValue::Array encodedShelf(const std::vector<ShelfItem>& items);

struct DecodedShelf {
    std::vector<ShelfItem> items;
    /// URLs on which access has begun and has to be ended.
    std::set<FileURL> accessedResourceURLs;
    /// Whether an item got a new bookmark, so that the shelf has to be saved.
    bool madeBookmarks = false;
    /// Items whose files have to be sought; they are missing until then.
    std::vector<UUID> toBeSought;
};

/// Decodes the stored shelf. Malformed entries, and those whose bookmark no longer leads to a file, are left out; the
/// others keep their order. Main thread.
[[nodiscard]] DecodedShelf decodedShelf(const PropertyValue::Array& entries, Bookmarks& bookmarks,
                                        FileManager& fileManager);

}  // namespace stowpocket
