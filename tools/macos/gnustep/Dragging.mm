// SPDX-License-Identifier: MIT
// What GNUstep lacks of pasteboards and drags. A pasteboard holds what this process has written.
#include "gnustep/StandIns.h"

using namespace stowpocket;

NSPasteboardType const NSPasteboardTypeFileURL = @"public.file-url";

// ---- pasteboards

@implementation NSPasteboardItem {
@public
    NSArray* _types;
    std::vector<std::string> _texts;
}
- (NSArray<NSPasteboardType>*)types {
    return _types;
}
- (NSData*)dataForType:(NSPasteboardType)type {
    if (![_types containsObject:type])
        return nil;
    const std::string& text = _texts.at([_types indexOfObject:type]);
    return [NSData dataWithBytes:text.data() length:text.size()];
}
- (NSString*)stringForType:(NSPasteboardType)type {
    NSData* const data = [self dataForType:type];
    return data == nil ? nil : [[NSString alloc] initWithData:data encoding:NSUTF8StringEncoding];
}
@end

/// What each pasteboard holds, by its name.
static NSMutableDictionary<NSString*, NSArray*>* contents() {
    static NSMutableDictionary* const contents = [[NSMutableDictionary alloc] init];
    return contents;
}

static NSArray* objectsOf(Class wanted, NSPasteboard* pasteboard) {
    NSMutableArray* const found = [NSMutableArray array];
    for (id object in contents()[pasteboard.name]) {
        if ([object isKindOfClass:wanted])
            [found addObject:object];
    }
    return found;
}

@implementation NSPasteboard (Later)
- (NSArray<NSPasteboardItem*>*)pasteboardItems {
    return objectsOf(NSPasteboardItem.class, self);
}
- (NSArray*)readObjectsForClasses:(NSArray<Class>*)classes options:(NSDictionary*)options {
    return objectsOf(classes.firstObject, self);
}
- (NSInteger)clearContents {
    contents()[self.name] = @[];
    return 0;
}
/// Files, texts and what a drag has.
- (BOOL)writeObjects:(NSArray*)objects {
    for (id object in objects) {
        id item = object;
        if ([object isKindOfClass:NSURL.class])
            item = standIn::itemOf(NSPasteboardTypeFileURL, ((NSURL*)object).absoluteString.UTF8String);
        else if ([object isKindOfClass:NSString.class])
            item = standIn::itemOf(@"public.utf8-plain-text", ((NSString*)object).UTF8String);
        contents()[self.name] = [contents()[self.name] arrayByAddingObject:item];
    }
    return YES;
}
@end
@implementation NSURL (LaterPasteboard)
- (NSArray<NSPasteboardType>*)writableTypesForPasteboard:(NSPasteboard*)pasteboard {
    return @[ NSPasteboardTypeFileURL ];
}
- (id)pasteboardPropertyListForType:(NSPasteboardType)type {
    return [type isEqual:NSPasteboardTypeFileURL] ? self.absoluteString : nil;
}
@end
@implementation NSData (Later)
+ (instancetype)dataWithContentsOfURL:(NSURL*)url options:(NSUInteger)options error:(NSError**)error {
    return [NSData dataWithContentsOfFile:url.path];
}
@end

// ---- promises and providers

/// Writes its files on another thread, each with its own name inside; one named "refused" cannot be written.
@implementation NSFilePromiseReceiver {
@public
    NSArray* _types;
    std::vector<std::string> _names;
}
- (NSArray<NSString*>*)fileTypes {
    return _types;
}
- (void)receivePromisedFilesAtDestination:(NSURL*)folder
                                  options:(NSDictionary*)options
                           operationQueue:(NSOperationQueue*)queue
                                   reader:(void (^)(NSURL*, NSError*))reader {
    standIn::onAnotherThread(^{
      for (const std::string& name : self->_names) {
          NSString* const text = [NSString stringWithUTF8String:name.c_str()];
          NSString* const path = [folder.path stringByAppendingPathComponent:text];
          const BOOL isWritten = name != "refused" && [[text dataUsingEncoding:NSUTF8StringEncoding] writeToFile:path
                                                                                                      atomically:NO];
          NSError* const error = [NSError errorWithDomain:@"promise" code:1 userInfo:nil];
          reader([NSURL fileURLWithPath:path], isWritten ? nil : error);
      }
    });
}
@end

@implementation NSItemProvider {
    NSString* _type;
    NSData* _data;
}
- (instancetype)initWithContentsOfURL:(NSURL*)url {
    self = [super init];
    _type = [url.pathExtension isEqual:@"png"] ? @"public.png" : @"public.data";
    return [NSFileManager.defaultManager fileExistsAtPath:url.path] ? self : nil;
}
- (NSArray<NSString*>*)registeredTypeIdentifiers {
    return @[ _type ];
}
- (BOOL)hasItemConformingToTypeIdentifier:(NSString*)type {
    return [type isEqual:_type];
}
- (void)registerDataRepresentationForTypeIdentifier:(NSString*)type
                                         visibility:(NSInteger)visibility
                                        loadHandler:(NSProgress* (^)(void (^)(NSData*, NSError*)))handler {
    _type = type;
    handler(^(NSData* data, NSError*) {
      self->_data = data;
    });
}
- (NSProgress*)loadFileRepresentationForTypeIdentifier:(NSString*)type
                                     completionHandler:(void (^)(NSURL*, NSError*))handler {
    NSString* const path = [NSTemporaryDirectory() stringByAppendingPathComponent:@"representation"];
    const BOOL isWritten = [type isEqual:_type] && [_data writeToFile:path atomically:YES];
    handler(isWritten ? [NSURL fileURLWithPath:path] : nil, nil);
    [NSFileManager.defaultManager removeItemAtPath:path error:nil];
    return nil;
}
- (void)loadItemForTypeIdentifier:(NSString*)type
                          options:(NSDictionary*)options
                completionHandler:(void (^)(id<NSSecureCoding>, NSError*))handler {
    handler([type isEqual:_type] ? (id)_data : nil, nil);
}
@end

// ---- drags

@interface StandInDraggingInfo : NSObject
@property(nonatomic) NSPasteboard* draggingPasteboard;
@end
@implementation StandInDraggingInfo
@end

@implementation NSDraggingSession
@end
@implementation NSDraggingItem {
@public
    id<NSPasteboardWriting> _writer;
    NSRect _frame;
    id _contents;
}
- (instancetype)initWithPasteboardWriter:(id<NSPasteboardWriting>)writer {
    self = [super init];
    _writer = writer;
    return self;
}
- (void)setDraggingFrame:(NSRect)frame contents:(id)contents {
    _frame = frame;
    _contents = contents;
}
@end
@implementation NSView (LaterDragging)
- (NSDraggingSession*)beginDraggingSessionWithItems:(NSArray<NSDraggingItem*>*)items
                                              event:(NSEvent*)event
                                             source:(id<NSDraggingSource>)source {
    NSDraggingItem* const item = items.firstObject;
    standIn::begunDrag = {event,
                          source,
                          item->_writer,
                          item->_frame,
                          item->_contents,
                          items.count,
                          [NSPasteboard pasteboardWithName:NSDragPboard]};
    return [[NSDraggingSession alloc] init];
}
@end

namespace stowpocket::standIn {

std::optional<Drag> begunDrag;

NSPasteboardItem* itemOf(NSArray* types, const std::vector<std::string>& texts) {
    NSPasteboardItem* const item = [[NSPasteboardItem alloc] init];
    item->_types = types;
    item->_texts = texts;
    return item;
}

NSPasteboardItem* itemOf(NSString* type, const std::string& text) {
    return itemOf(@ [type], { text });
}

NSFilePromiseReceiver* promiseOf(NSArray* types, const std::vector<std::string>& files) {
    NSFilePromiseReceiver* const receiver = [[NSFilePromiseReceiver alloc] init];
    receiver->_types = types;
    receiver->_names = files;
    return receiver;
}

id<NSDraggingInfo> drag(NSArray* objects) {
    StandInDraggingInfo* const info = [[StandInDraggingInfo alloc] init];
    info.draggingPasteboard = [NSPasteboard pasteboardWithName:NSDragPboard];
    [info.draggingPasteboard clearContents];
    [info.draggingPasteboard writeObjects:objects];
    return (id)info;
}

}  // namespace stowpocket::standIn
