// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "foundation/UUID.h"
#include "foundation/Values.h"
#include "services/Preferences.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

/// One file on the shelf, referenced in its place: the shelf never copies, moves or owns it. Items are equal if their
/// ids are; two items refer to the same file if their URLs are equal.
struct ShelfItem {
    UUID id;
    FileURL fileURL;
    /// Finds the file again after it was moved; none if no bookmark could be created.
    std::optional<Bytes> bookmarkData;
    /// The last path component when the item was added, as well-formed UTF-8.
    std::string filename;
    /// In bytes, when the item was added; 0 when it could not be read.
    std::int64_t fileSize = 0;
    Date dateAdded;
    /// Whether the file existed at the last check.
    bool isAvailable = false;

    friend bool operator==(const ShelfItem& one, const ShelfItem& other) { return one.id == other.id; }
};

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
