// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "services/Image.h"

#include <functional>
#include <optional>

namespace stowpocket {

struct ThumbnailRequest {
    FileURL fileURL;
    Size size;
    /// Pixels per point of the screen on which it will be shown.
    double scale = 1;
};

/// Makes small pictures of what files contain. Files come from anywhere: one that is broken, huge or hostile yields
/// no picture and harms nobody.
class Thumbnails {
public:
    using Completion = std::function<void(std::optional<Image>)>;

    virtual ~Thumbnails() = default;
    /// Called on the main thread, which never waits. `completion` runs exactly once, on any thread; none when the
    /// file has no thumbnail. Not called after this object is destroyed.
    virtual void generate(const ThumbnailRequest& request, Completion completion) = 0;
};

}  // namespace stowpocket
