// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace stowpocket {

struct ShelfItem;

/// Writes a file's size, in bytes, as the desktop does.
using ByteCountText = std::function<std::string(std::int64_t bytes)>;

/// What the tile of one item shows.
struct TilePresentation {
    /// The file name on one line.
    std::string name;
    std::string size;
    bool isMissing = false;
    bool isDraggable = true;

    /// All of it in words, for assistive technology.
    [[nodiscard]] std::string accessibleName() const;
};

[[nodiscard]] TilePresentation tilePresentation(const ShelfItem& item, const ByteCountText& byteCountText);

/// A file name, well-formed UTF-8, as one line of text: blanks stand for control characters and line ends, and the
/// invisible characters that would make "gpj.exe" read as "exe.jpg" are left out.
[[nodiscard]] std::string displayName(std::string_view filename);

}  // namespace stowpocket
