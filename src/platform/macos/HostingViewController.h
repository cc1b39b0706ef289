// SPDX-License-Identifier: MIT
// For the adapters in this folder only: includes the system's headers.
#pragma once

#include "platform/macos/HostedView.h"

#import <AppKit/AppKit.h>

#include <memory>

namespace stowpocket {

/// A controller whose view holds the toolkit's and is as large. It must not outlive `content`.
[[nodiscard]] NSViewController* _Nonnull hostingController(HostedView& content);

}  // namespace stowpocket
