// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/pictures/ImageDecoder.h"
#include "platform/linux/pictures/ThumbnailCache.h"
#include "services/Pictures.h"

namespace stowpocket {

/// The longest side of the thumbnail that `request` asks for, in pixels.
[[nodiscard]] int pixelSide(const ThumbnailRequest& request);

/// What this process can find out about a file without the desktop's help.
struct LocalThumbnail {
    std::optional<Image> image;
    /// None when there is no regular file.
    std::optional<FileState> state;
    /// Set when only the desktop's thumbnailer may have a picture of a file of this type.
    std::string typeForDesktop;
};

/// Thumbnails from the shared cache or from the file itself. Holds nothing but settings; every function waits for
/// files and runs on a background thread.
class LocalThumbnailer {
public:
    explicit LocalThumbnailer(ImageDecoder decoder);
    /// `failed` is the state of the file that is known to give no thumbnail.
    [[nodiscard]] LocalThumbnail make(const ThumbnailRequest& request, const std::optional<FileState>& failed) const;
    [[nodiscard]] std::optional<Image> cached(const ThumbnailRequest& request, const FileState& state) const;

private:
    [[nodiscard]] LocalThumbnail decoded(const ThumbnailRequest& request, const FileState& state) const;

    ThumbnailCache cache_;
    ImageDecoder decoder_;
};

}  // namespace stowpocket
