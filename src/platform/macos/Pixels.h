// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Values.h"
#include "services/Pictures.h"

#include <functional>
#include <memory>

namespace stowpocket {

/// A picture as plain memory: rows from the top without gaps, four bytes a pixel in the order blue, green, red,
/// alpha, the colours multiplied by alpha, in sRGB.
struct Pixels {
    int width = 0;
    int height = 0;
    Bytes bytes;
};

/// Makes the toolkit's picture of pixels. Called on any thread.
using MakeImageContent = std::function<std::shared_ptr<const ImageContent>(const Pixels&)>;

}  // namespace stowpocket
