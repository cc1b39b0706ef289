// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/pictures/ImageDecoder.h"
#include "platform/linux/pictures/ThumbnailCache.h"
#include "services/Pictures.h"

namespace stowpocket {

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
