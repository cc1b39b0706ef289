// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "foundation/Values.h"

#include <QImage>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace stowpocket {

/// The size limit of a file in the thumbnail cache.
constexpr std::size_t maxThumbnailFileSize = std::size_t{4} << 20u;

/// Reads a file of the desktop's thumbnail cache, which any program may have written. None unless it is a PNG of
/// modest size that claims to show `uri` as of `modifiedSeconds`. Any thread.
[[nodiscard]] std::optional<QImage> acceptedThumbnail(std::span<const std::uint8_t> file, std::string_view uri,
                                                      std::int64_t modifiedSeconds);

/// The thumbnails that the programs of the desktop share, as freedesktop specifies them. Read-only.
class ThumbnailCache {
public:
    /// The user's cache, found through the environment.
    ThumbnailCache();
    /// A thumbnail of the file as of `modifiedSeconds`, of at least `side` pixels unless the picture in the file is
    /// smaller. Reads files: on a background thread.
    [[nodiscard]] std::optional<QImage> find(const FileURL& url, std::int64_t modifiedSeconds, int side) const;
    /// The name in the cache of the smallest size with at least `side` pixels.
    [[nodiscard]] static std::string sizeName(int side);

private:
    std::string root_;
};

}  // namespace stowpocket
