// SPDX-License-Identifier: MIT
// For the adapters in this folder only: includes the system's headers.
#pragma once

#include "platform/macos/MacPictures.h"
#include "services/StatusItem.h"

#import <AppKit/AppKit.h>

#include <optional>
#include <string_view>

namespace stowpocket {

/// Returns the picture in its own number of pixels, or nothing when it has no size or an absurd one. Any thread.
[[nodiscard]] std::optional<Pixels> pixelsOf(CGImageRef _Nullable image);
/// Returns the picture, `scale` pixels to a point, in the middle of a square whose side is `side` pixels. A picture
/// that is too large is shrunk to fit. Main thread.
[[nodiscard]] std::optional<Pixels> pixelsOf(NSImage* _Nonnull image, double scale, int side);

/// Returns null when the pixels cannot be shown.
[[nodiscard]] NSImage* _Nullable nsImageOf(const Pixels& pixels, const Size& size);

[[nodiscard]] NSFontWeight systemWeight(FontWeight weight);
[[nodiscard]] NSImageSymbolConfiguration* _Nonnull symbolConfiguration(double pointSize, FontWeight weight);

/// Returns the system's own picture of that name, or null when this system has none. Unless it is configured
/// otherwise, it takes its colour from the place where it is shown.
[[nodiscard]] NSImage* _Nullable systemSymbol(std::string_view name, std::string_view accessibilityDescription,
                                              NSImageSymbolConfiguration* _Nonnull configuration);

}  // namespace stowpocket
