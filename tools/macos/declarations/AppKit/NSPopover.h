// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import "NSView.h"

NS_ASSUME_NONNULL_BEGIN
@class NSPopover;
DECL_ENUM(NSInteger, NSPopoverBehavior){NSPopoverBehaviorApplicationDefined = 0, NSPopoverBehaviorTransient = 1,
                                        NSPopoverBehaviorSemitransient = 2};
@protocol NSPopoverDelegate <NSObject>
@optional
- (void)popoverDidClose:(NSNotification*)notification;
@end
@interface NSPopover : NSResponder
@property(nullable, weak) id<NSPopoverDelegate> delegate;
@property NSPopoverBehavior behavior;
@property BOOL animates;
@property(nullable, strong) NSViewController* contentViewController;
@property NSSize contentSize;
@property(readonly, getter=isShown) BOOL shown;
- (void)showRelativeToRect:(NSRect)rect ofView:(NSView*)view preferredEdge:(NSRectEdge)edge;
- (void)performClose:(nullable id)sender;
- (void)close;
@end
NS_ASSUME_NONNULL_END
