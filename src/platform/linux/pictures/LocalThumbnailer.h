// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "foundation/Values.h"
#include "platform/linux/pictures/ImageDecoder.h"
#include "services/Pictures.h"

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

/// The longest side of the thumbnail that `request` asks for, in pixels.
[[nodiscard]] int pixelSide(const ThumbnailRequest& request);

/// What this process can find out about a file without the help of the desktop.
struct LocalThumbnail {
    std::optional<Image> image;
    /// None if there is no regular file.
    std::optional<FileState> state;
    /// Set if only the thumbnailer of the desktop may have a picture of a file of this type.
    std::string typeForDesktop;
};

/// Thumbnails from the shared cache or from the file itself. Contains settings only; every function waits for files
/// and runs on a background thread.
class LocalThumbnailer {
public:
    explicit LocalThumbnailer(ImageDecoder decoder);
    /// `failed` is the state of the file that is known to have no thumbnail.
    [[nodiscard]] LocalThumbnail make(const ThumbnailRequest& request, const std::optional<FileState>& failed) const;
    [[nodiscard]] std::optional<Image> cached(const ThumbnailRequest& request, const FileState& state) const;

private:
    [[nodiscard]] LocalThumbnail decoded(const ThumbnailRequest& request, const FileState& state) const;

    ThumbnailCache cache_;
    ImageDecoder decoder_;
};

}  // namespace stowpocket
