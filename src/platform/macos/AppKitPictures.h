// SPDX-License-Identifier: MIT
// For the adapters in this folder only: includes the system's headers.
#pragma once

#include "platform/macos/MacPictures.h"
#include "services/StatusItem.h"

#import <AppKit/AppKit.h>

#include <optional>
#include <string_view>

namespace stowpocket {

/// The picture in as many pixels as it has; none where it has no size or an absurd one. Any thread.
[[nodiscard]] std::optional<Pixels> pixelsOf(CGImageRef _Nullable image);
/// The picture with `scale` pixels for each of its points, in the middle of a square of that many pixels; one that is
/// too large is made to fit. Main thread.
[[nodiscard]] std::optional<Pixels> pixelsOf(NSImage* _Nonnull image, double scale, int side);

/// Null where the pixels cannot be shown.
[[nodiscard]] NSImage* _Nullable nsImageOf(const Pixels& pixels, const Size& size);

[[nodiscard]] NSFontWeight systemWeight(FontWeight weight);
[[nodiscard]] NSImageSymbolConfiguration* _Nonnull symbolConfiguration(double pointSize, FontWeight weight);

/// The system's own picture of that name; null where this system has none. Unless configured otherwise it takes the
/// colour of the place where it is shown.
[[nodiscard]] NSImage* _Nullable systemSymbol(std::string_view name, std::string_view accessibilityDescription,
                                              NSImageSymbolConfiguration* _Nonnull configuration);

}  // namespace stowpocket
