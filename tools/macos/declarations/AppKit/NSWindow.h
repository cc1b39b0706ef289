// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import "NSImage.h"
#import "NSView.h"

NS_ASSUME_NONNULL_BEGIN
DECL_OPTIONS(NSUInteger, NSWindowStyleMask){NSWindowStyleMaskTitled = 1 << 0, NSWindowStyleMaskClosable = 1 << 1,
                                            NSWindowStyleMaskFullSizeContentView = 1 << 15};
DECL_ENUM(NSInteger, NSWindowTitleVisibility){NSWindowTitleVisible = 0, NSWindowTitleHidden = 1};
typedef NSInteger NSWindowLevel;
static const NSWindowLevel NSFloatingWindowLevel = 3;
@protocol NSWindowDelegate <NSObject>
@optional
- (void)windowWillClose:(NSNotification*)notification;
@end
@interface NSWindow : NSResponder
+ (instancetype)windowWithContentViewController:(NSViewController*)controller;
@property(copy) NSString* title;
@property NSWindowTitleVisibility titleVisibility;
@property BOOL titlebarAppearsTransparent;
@property NSWindowStyleMask styleMask;
@property(getter=isMovableByWindowBackground) BOOL movableByWindowBackground;
@property(getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property(nullable, copy) NSColor* backgroundColor;
@property NSWindowLevel level;
@property(nullable, weak) id<NSWindowDelegate> delegate;
@property(readonly, getter=isVisible) BOOL visible;
@property(readonly) NSInteger windowNumber;
@property(readonly) NSPoint mouseLocationOutsideOfEventStream;
- (void)setContentSize:(NSSize)size;
- (void)center;
- (void)close;
- (BOOL)makeFirstResponder:(nullable NSResponder*)responder;
- (void)makeKeyWindow;
- (void)makeKeyAndOrderFront:(nullable id)sender;
- (void)orderFrontRegardless;
- (void)orderOut:(nullable id)sender;
@end
@interface NSScreen : NSObject
@property(class, nullable, readonly, strong) NSScreen* mainScreen;
@property(readonly) CGFloat backingScaleFactor;
@end
NS_ASSUME_NONNULL_END
