// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "foundation/Values.h"
#include "platform/linux/files/FileIdentity.h"

#include <optional>
#include <string>
#include <vector>

namespace stowpocket {

/// What a bookmark remembers of its file.
struct BookmarkRecord {
    /// How many folders above the file are remembered.
    static constexpr std::size_t maxAncestors = 4;

    FileURL url;
    FileIdentity identity;
    /// Where its volume was mounted, empty when unknown, and that volume's identifier, empty when it has none.
    std::string mountPoint;
    std::string volume;
    /// The folders above the file on the same volume, nearest first.
    std::vector<InodeIdentity> ancestors;
    friend bool operator==(const BookmarkRecord&, const BookmarkRecord&) = default;
};

/// The record as bookmark data: versioned JSON, its paths escaped as URLs so that names in any encoding survive.
[[nodiscard]] Bytes encodeBookmark(const BookmarkRecord& record);

/// Empty when `data` is no bookmark of a version that is known here.
[[nodiscard]] std::optional<BookmarkRecord> decodeBookmark(const Bytes& data);

}  // namespace stowpocket
