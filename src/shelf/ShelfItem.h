// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "foundation/UUID.h"
#include "foundation/Values.h"

#include <cstdint>
#include <optional>
#include <string>

namespace stowpocket {

/// One file staged on the shelf, referred to where it lies: the shelf never copies, moves or owns it. An item is
/// itself by its `id` alone; whether two items refer to the same file is a question of their URLs.
struct ShelfItem {
    UUID id;
    FileURL fileURL;
    /// Finds the file again when its path no longer does; none when no bookmark could be made.
    std::optional<Bytes> bookmarkData;
    /// The last path component when the item was added, as well-formed UTF-8.
    std::string filename;
    /// In bytes, when the item was added; 0 when it could not be read.
    std::int64_t fileSize = 0;
    Date dateAdded;
    /// Whether the file was there when last looked for.
    bool isAvailable = false;

    friend bool operator==(const ShelfItem& one, const ShelfItem& other) { return one.id == other.id; }
};

}  // namespace stowpocket
