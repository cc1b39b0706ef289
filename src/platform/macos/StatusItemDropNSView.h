// SPDX-License-Identifier: MIT
// For the adapters in this folder only: includes the system's headers.
#pragma once

#include "services/Dragging.h"

#import <AppKit/AppKit.h>

#include <memory>

/// A transparent view that forwards drags to a destination of the core, which it keeps. Clicks pass on to what lies
/// beneath it.
@interface StatusItemDropNSView : NSView
/// Called once.
- (void)takeDropsFor:(std::shared_ptr<stowpocket::DraggingDestination>)destination;
@end
