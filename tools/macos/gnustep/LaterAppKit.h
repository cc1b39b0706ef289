// SPDX-License-Identifier: MIT
// What Later.h has of AppKit and of the frameworks beside it.
#pragma once

#import <AppKit/AppKit.h>
#import <AppKit/NSPopover.h>
#import <AppKit/NSStatusBarButton.h>

#include "CoreGraphics/CoreGraphics.h"

typedef NSString* NSPasteboardType;
enum : NSUInteger {
    NSEventMaskLeftMouseDown = NSLeftMouseDownMask,
    NSEventMaskLeftMouseUp = NSLeftMouseUpMask,
    NSEventMaskRightMouseUp = NSRightMouseUpMask,
    NSEventMaskRightMouseDown = NSRightMouseDownMask,
    NSEventMaskKeyDown = NSKeyDownMask,
    NSDataReadingMappedIfSafe = 1,
};
#define NSEventTypeLeftMouseDown NSLeftMouseDown
#define NSEventTypeLeftMouseDragged NSLeftMouseDragged
#define NSEventTypeRightMouseUp NSRightMouseUp
#define NSAlertStyleInformational NSInformationalAlertStyle
#define NSImageLeading NSImageLeft
#define NSPasteboardNameDrag NSDragPboard
#define NSRectEdgeMinY NSMinYEdge
enum { NSWindowTitleHidden = 1 };

NS_ASSUME_NONNULL_BEGIN
// ---- windows and the menu bar

@interface NSWindow (Later)
@property BOOL titlebarAppearsTransparent;
@property NSInteger titleVisibility;
@property NSUInteger styleMask;
@property(readonly, getter=isVisible) BOOL visible;
@end
@interface NSView (Later)
@property(readonly, getter=isFlipped) BOOL flipped;
@end
@interface NSMenuItem (Later)
@property(class, readonly) NSMenuItem* separatorItem;
@property(nullable, weak) id target;
@property NSInteger tag;
@property(getter=isEnabled) BOOL enabled;
@end
@interface NSMenu (Later)
@property BOOL autoenablesItems;
- (BOOL)popUpMenuPositioningItem:(nullable NSMenuItem*)item
                      atLocation:(NSPoint)location
                          inView:(nullable NSView*)view;
@end
@interface NSWorkspace (Later)
@property(readonly) BOOL accessibilityDisplayShouldReduceMotion;
- (void)activateFileViewerSelectingURLs:(NSArray<NSURL*>*)urls;
@end

#define NSPopover StandInPopover
@interface NSPopover : NSObject
@property NSPopoverBehavior behavior;
@property BOOL animates;
@property(nullable, unsafe_unretained) id<NSPopoverDelegate> delegate;
@property(nullable, nonatomic) NSViewController* contentViewController;
@property NSSize contentSize;
@property(readonly, getter=isShown) BOOL shown;
- (void)showRelativeToRect:(NSRect)rect ofView:(NSView*)view preferredEdge:(NSRectEdge)edge;
- (void)performClose:(nullable id)sender;
- (void)close;
@end
#define NSStatusItem StandInStatusItem
#define NSStatusBar StandInStatusBar
@interface NSStatusItem : NSObject
@property(nullable, nonatomic) NSStatusBarButton* button;
@end
@interface NSStatusBar : NSObject
@property(class, readonly) NSStatusBar* systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end

@interface NSEvent (Later)
+ (nullable NSEvent*)eventWithCGEvent:(CGEventRef)event;
+ (nullable id)addLocalMonitorForEventsMatchingMask:(NSUInteger)mask
                                            handler:(NSEvent* _Nullable (^)(NSEvent*))handler;
+ (nullable id)addGlobalMonitorForEventsMatchingMask:(NSUInteger)mask handler:(void (^)(NSEvent*))handler;
+ (void)removeMonitor:(id)monitor;
@end
#define NSAppleEventManager StandInAppleEventManager
@interface NSAppleEventManager : NSObject
+ (NSAppleEventManager*)sharedAppleEventManager;
- (void)setEventHandler:(id)handler
            andSelector:(SEL)selector
          forEventClass:(uint32_t)eventClass
             andEventID:(uint32_t)eventID;
- (void)removeEventHandlerForEventClass:(uint32_t)eventClass andEventID:(uint32_t)eventID;
@end

// ---- pictures, text and colours

@interface NSImageSymbolConfiguration : NSObject {
@public
    std::string text;
    std::array<unsigned char, 4> rgba;
}
+ (instancetype)configurationWithPointSize:(CGFloat)size weight:(CGFloat)weight;
+ (instancetype)configurationWithPaletteColors:(NSArray<NSColor*>*)colors;
- (instancetype)configurationByApplyingConfiguration:(NSImageSymbolConfiguration*)configuration;
@end
@interface NSImage (Later)
+ (nullable NSImage*)imageWithSystemSymbolName:(NSString*)name
                      accessibilityDescription:(nullable NSString*)description;
- (nullable NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration;
- (instancetype)initWithCGImage:(CGImageRef)image size:(NSSize)size;
- (nullable CGImageRef)CGImageForProposedRect:(nullable NSRect*)rect
                                      context:(nullable NSGraphicsContext*)context
                                        hints:(nullable NSDictionary*)hints;
@end
@interface NSFont (Later)
+ (NSFont*)monospacedDigitSystemFontOfSize:(CGFloat)size weight:(CGFloat)weight;
@end
@interface NSColor (Later)
@property(class, readonly) NSColor* controlAccentColor;
@end
@interface NSColorSpace (Later)
@property(class, readonly) NSColorSpace* sRGBColorSpace;
@end
@interface NSApplication (Later)
@property(readonly) NSAppearance* effectiveAppearance;
@end
@interface NSAppearance (Later)
- (void)performAsCurrentDrawingAppearance:(void (^)(void))block;
@end

// ---- what is dragged

extern NSPasteboardType const NSPasteboardTypeFileURL;
#define NSPasteboardItem StandInPasteboardItem
@interface NSPasteboardItem : NSObject
@property(readonly, copy) NSArray<NSPasteboardType>* types;
- (nullable NSData*)dataForType:(NSPasteboardType)type;
- (nullable NSString*)stringForType:(NSPasteboardType)type;
@end
@interface NSPasteboard (Later)
@property(nullable, readonly, copy) NSArray<NSPasteboardItem*>* pasteboardItems;
- (NSInteger)clearContents;
- (BOOL)writeObjects:(NSArray*)objects;
- (nullable NSArray*)readObjectsForClasses:(NSArray<Class>*)classes options:(nullable NSDictionary*)options;
@end
@interface NSURL (LaterPasteboard)
- (NSArray<NSPasteboardType>*)writableTypesForPasteboard:(NSPasteboard*)pasteboard;
- (nullable id)pasteboardPropertyListForType:(NSPasteboardType)type;
@end
@interface NSData (Later)
+ (nullable instancetype)dataWithContentsOfURL:(NSURL*)url
                                       options:(NSUInteger)options
                                         error:(NSError* _Nullable* _Nullable)error;
@end
@interface NSFilePromiseReceiver : NSObject
@property(readonly, copy) NSArray<NSString*>* fileTypes;
- (void)receivePromisedFilesAtDestination:(NSURL*)folder
                                  options:(NSDictionary*)options
                           operationQueue:(NSOperationQueue*)queue
                                   reader:(void (^)(NSURL*, NSError* _Nullable))reader;
@end
@interface NSDraggingSession : NSObject
@end
@interface NSDraggingItem : NSObject
- (instancetype)initWithPasteboardWriter:(id<NSPasteboardWriting>)writer;
- (void)setDraggingFrame:(NSRect)frame contents:(nullable id)contents;
@end
@interface NSView (LaterDragging)
- (NSDraggingSession*)beginDraggingSessionWithItems:(NSArray<NSDraggingItem*>*)items
                                              event:(NSEvent*)event
                                             source:(id<NSDraggingSource>)source;
@end

#define NSItemProvider StandInItemProvider
#define NSItemProviderRepresentationVisibilityAll 0
@interface NSItemProvider : NSObject
- (nullable instancetype)initWithContentsOfURL:(NSURL*)url;
@property(readonly, copy) NSArray<NSString*>* registeredTypeIdentifiers;
- (BOOL)hasItemConformingToTypeIdentifier:(NSString*)type;
- (void)registerDataRepresentationForTypeIdentifier:(NSString*)type
                                         visibility:(NSInteger)visibility
                                        loadHandler:(NSProgress* _Nullable (^)(void (^)(NSData* _Nullable,
                                                                                        NSError* _Nullable)))handler;
- (nullable NSProgress*)loadFileRepresentationForTypeIdentifier:(NSString*)type
                                              completionHandler:
                                                  (void (^)(NSURL* _Nullable, NSError* _Nullable))handler;
- (void)loadItemForTypeIdentifier:(NSString*)type
                          options:(nullable NSDictionary*)options
                completionHandler:(void (^)(id<NSSecureCoding> _Nullable, NSError* _Null_unspecified))handler;
@end
NS_ASSUME_NONNULL_END
