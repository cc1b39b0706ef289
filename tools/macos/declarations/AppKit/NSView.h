// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import "NSEvent.h"
#import "NSImage.h"

NS_ASSUME_NONNULL_BEGIN
@class NSWindow;
@interface NSResponder : NSObject <NSCoding>
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@property(nullable, assign) NSResponder* nextResponder;
@end
@interface NSApplication : NSResponder
@property(class, readonly, strong) NSApplication* sharedApplication;
@property(nullable, readonly, strong) NSEvent* currentEvent;
@property(nullable, readonly, weak) NSWindow* keyWindow;
@property(readonly, strong) NSAppearance* effectiveAppearance SINCE(10.14);
- (void)activateIgnoringOtherApps:(BOOL)ignoringOtherApps;
- (void)terminate:(nullable id)sender;
@end

typedef NSString* NSPasteboardType;
DECL_OPTIONS(NSUInteger, NSAutoresizingMaskOptions){NSViewWidthSizable = 2, NSViewHeightSizable = 16};
@interface NSView : NSResponder
- (instancetype)initWithFrame:(NSRect)frame NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@property(nullable, readonly, assign) NSWindow* window;
@property(readonly) NSRect bounds;
@property NSRect frame;
@property(readonly, getter=isFlipped) BOOL flipped;
@property NSAutoresizingMaskOptions autoresizingMask;
- (void)addSubview:(NSView*)view;
- (NSPoint)convertPoint:(NSPoint)point fromView:(nullable NSView*)view;
- (void)registerForDraggedTypes:(NSArray<NSPasteboardType>*)types;
@end
@interface NSViewController : NSResponder
@property(strong) NSView* view;
@end

@class NSImage;
DECL_ENUM(NSUInteger, NSCellImagePosition){NSImageLeading = 7};
@interface NSControl : NSView
@property(nullable, weak) id target;
@property(nullable) SEL action;
- (NSInteger)sendActionOn:(NSEventMask)mask;
@end
@interface NSMenuItem : NSObject
- (instancetype)initWithTitle:(NSString*)title
                       action:(nullable SEL)action
                keyEquivalent:(NSString*)key NS_DESIGNATED_INITIALIZER;
@property(class, readonly, strong) NSMenuItem* separatorItem;
@property(nullable, weak) id target;
@property NSInteger tag;
@property(getter=isEnabled) BOOL enabled;
@end
@interface NSMenu : NSObject
- (instancetype)initWithTitle:(NSString*)title NS_DESIGNATED_INITIALIZER;
@property BOOL autoenablesItems;
- (void)addItem:(NSMenuItem*)item;
- (BOOL)popUpMenuPositioningItem:(nullable NSMenuItem*)item
                      atLocation:(NSPoint)location
                          inView:(nullable NSView*)view;
@end
@interface NSButton : NSControl
@property(nullable, strong) NSImage* image;
@property(copy) NSAttributedString* attributedTitle;
@property NSCellImagePosition imagePosition;
@end

DECL_ENUM(NSUInteger, NSAlertStyle){NSAlertStyleWarning = 0, NSAlertStyleInformational = 1, NSAlertStyleCritical = 2};
typedef NSInteger NSModalResponse;
@interface NSAlert : NSObject
@property(copy) NSString* messageText;
@property(copy) NSString* informativeText;
@property NSAlertStyle alertStyle;
- (NSButton*)addButtonWithTitle:(NSString*)title;
- (NSModalResponse)runModal;
@end
NS_ASSUME_NONNULL_END
