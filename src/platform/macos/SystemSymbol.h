// SPDX-License-Identifier: MIT
// For the adapters in this folder only: includes the system's headers.
#pragma once

#include "services/StatusItem.h"

#import <AppKit/AppKit.h>

#include <string_view>

namespace stowpocket {

[[nodiscard]] NSFontWeight systemWeight(FontWeight weight);
[[nodiscard]] NSImageSymbolConfiguration* _Nonnull symbolConfiguration(double pointSize, FontWeight weight);

/// The system's own picture of that name; null where this system has none. Unless configured otherwise it takes the
/// colour of the place where it is shown.
[[nodiscard]] NSImage* _Nullable systemSymbol(std::string_view name, std::string_view accessibilityDescription,
                                              NSImageSymbolConfiguration* _Nonnull configuration);

}  // namespace stowpocket
