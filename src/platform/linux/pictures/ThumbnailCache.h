// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"

#include <QImage>

#include <cstdint>
#include <optional>
#include <string>

namespace stowpocket {

/// The thumbnails that the programs of the desktop share, as freedesktop describes them. Only read here.
class ThumbnailCache {
public:
    /// The user's cache, found through the environment.
    ThumbnailCache();
    /// A thumbnail of the file as it was at `modifiedSeconds`, of at least `side` pixels unless the file's own
    /// picture is smaller. Reads files: on a background thread.
    [[nodiscard]] std::optional<QImage> find(const FileURL& url, std::int64_t modifiedSeconds, int side) const;
    /// What the cache calls the smallest size that has at least `side` pixels.
    [[nodiscard]] static std::string sizeName(int side);

private:
    std::string root_;
};

}  // namespace stowpocket
