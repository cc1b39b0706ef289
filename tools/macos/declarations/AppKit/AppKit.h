// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import "NSDragging.h"
#import "NSEvent.h"
#import "NSImage.h"
#import "NSPopover.h"
#import "NSStatusItem.h"
#import "NSView.h"
#import "NSWindow.h"
#import "NSWorkspace.h"
