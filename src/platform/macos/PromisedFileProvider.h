// SPDX-License-Identifier: MIT
// For the adapters in this folder only: includes the system's headers.
#pragma once

#include "services/Dragging.h"

#import <AppKit/AppKit.h>

#include <memory>
#include <vector>

namespace stowpocket {

/// The promised files of a drag, each as one thing of a drop. They are written while they are being asked for, so
/// that must be while the drop is handled.
[[nodiscard]] std::vector<std::shared_ptr<ItemProvider>> promisedFileProvidersOn(NSPasteboard* _Nonnull pasteboard);

}  // namespace stowpocket
