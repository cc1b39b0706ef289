// SPDX-License-Identifier: MIT
#pragma once

#include "platform/macos/Pixels.h"

#include <QImage>

namespace stowpocket {

/// Null for pixels that are not there.
[[nodiscard]] QImage qImageOf(const Pixels& pixels);
[[nodiscard]] Pixels pixelsOfImage(const QImage& image);

}  // namespace stowpocket
