// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "foundation/UUID.h"
#include "foundation/Values.h"

#include <cstdint>
#include <optional>
#include <string>

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

}  // namespace stowpocket
