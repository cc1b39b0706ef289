// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import "NSImage.h"
#import "NSView.h"

NS_ASSUME_NONNULL_BEGIN
@class NSDraggingSession, NSPasteboard;
extern "C" NSPasteboardType const NSPasteboardTypeFileURL;
typedef NSString* NSPasteboardName;
extern "C" NSPasteboardName const NSPasteboardNameDrag;
typedef NSString* NSPasteboardReadingOptionKey;

DECL_OPTIONS(NSUInteger, NSPasteboardWritingOptions){NSPasteboardWritingPromised = 1UL << 9};
@protocol NSPasteboardWriting <NSObject>
- (NSArray<NSPasteboardType>*)writableTypesForPasteboard:(NSPasteboard*)pasteboard;
@optional
- (NSPasteboardWritingOptions)writingOptionsForType:(NSPasteboardType)type pasteboard:(NSPasteboard*)pasteboard;
@required
- (nullable id)pasteboardPropertyListForType:(NSPasteboardType)type;
@end
@protocol NSPasteboardReading <NSObject>
@end
@interface NSPasteboardItem : NSObject <NSPasteboardWriting, NSPasteboardReading>
@property(readonly, copy) NSArray<NSPasteboardType>* types;
- (nullable NSData*)dataForType:(NSPasteboardType)type;
- (nullable NSString*)stringForType:(NSPasteboardType)type;
@end
@interface NSPasteboard : NSObject
+ (NSPasteboard*)pasteboardWithName:(NSPasteboardName)name;
@property(class, readonly, strong) NSPasteboard* generalPasteboard;
- (NSInteger)clearContents;
- (BOOL)writeObjects:(NSArray<id<NSPasteboardWriting>>*)objects;
@property(nullable, readonly, copy) NSArray<NSPasteboardItem*>* pasteboardItems;
- (nullable NSArray*)readObjectsForClasses:(NSArray<Class>*)classes
                                   options:(nullable NSDictionary<NSPasteboardReadingOptionKey, id>*)options;
@end
@interface NSURL (NSPasteboardSupport) <NSPasteboardWriting, NSPasteboardReading>
@end

@interface NSFilePromiseReceiver : NSObject <NSPasteboardReading>
@property(readonly, copy) NSArray<NSString*>* fileTypes;
- (void)receivePromisedFilesAtDestination:(NSURL*)destination
                                  options:(NSDictionary*)options
                           operationQueue:(NSOperationQueue*)queue
                                   reader:(void (^)(NSURL* url, NSError* _Nullable error))reader;
@end

DECL_OPTIONS(NSUInteger, NSDragOperation){NSDragOperationNone = 0, NSDragOperationCopy = 1};
DECL_ENUM(NSInteger, NSDraggingContext){NSDraggingContextOutsideApplication = 0,
                                        NSDraggingContextWithinApplication = 1};
@protocol NSDraggingInfo <NSObject>
@property(readonly, strong) NSPasteboard* draggingPasteboard;
@end
@protocol NSDraggingDestination <NSObject>
@optional
- (NSDragOperation)draggingEntered:(id<NSDraggingInfo>)sender;
- (NSDragOperation)draggingUpdated:(id<NSDraggingInfo>)sender;
- (BOOL)performDragOperation:(id<NSDraggingInfo>)sender;
@end
@protocol NSDraggingSource <NSObject>
- (NSDragOperation)draggingSession:(NSDraggingSession*)session
    sourceOperationMaskForDraggingContext:(NSDraggingContext)context;
@optional
- (void)draggingSession:(NSDraggingSession*)session endedAtPoint:(NSPoint)point operation:(NSDragOperation)operation;
@end
@interface NSDraggingSession : NSObject
@end
@interface NSDraggingItem : NSObject
- (instancetype)initWithPasteboardWriter:(id<NSPasteboardWriting>)writer NS_DESIGNATED_INITIALIZER;
- (void)setDraggingFrame:(NSRect)frame contents:(nullable id)contents;
@end
@interface NSView (NSDragging) <NSDraggingDestination>
- (NSDraggingSession*)beginDraggingSessionWithItems:(NSArray<NSDraggingItem*>*)items
                                              event:(NSEvent*)event
                                             source:(id<NSDraggingSource>)source;
@end
NS_ASSUME_NONNULL_END
