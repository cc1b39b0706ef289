// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import "NSView.h"

NS_ASSUME_NONNULL_BEGIN
@interface NSStatusBarButton : NSButton
@end
@interface NSStatusItem : NSObject
@property(nullable, readonly, strong) NSStatusBarButton* button;
@end
static const CGFloat NSVariableStatusItemLength = -1.0;
@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar* systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end
NS_ASSUME_NONNULL_END
