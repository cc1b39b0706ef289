// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Values.h"

#include <QImage>

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace stowpocket {

/// No file in the thumbnail cache that can be believed is larger.
constexpr std::size_t maxThumbnailFileSize = std::size_t{4} << 20u;

/// Reads a file of the desktop's thumbnail cache, which any program may have written. None unless it is a PNG of
/// modest size that says of itself that it shows `uri` as it was at `modifiedSeconds`. On any thread.
[[nodiscard]] std::optional<QImage> acceptedThumbnail(std::span<const std::uint8_t> file, std::string_view uri,
                                                      std::int64_t modifiedSeconds);

}  // namespace stowpocket
