// SPDX-License-Identifier: MIT
#import "platform/macos/AppKitPictures.h"
#import "platform/macos/Conversions.h"
#include "platform/macos/MacDrags.h"

#include <utility>

/// Offers the file itself and its contents under their own types. The contents are read only when a receiver asks for
/// them.
@interface StowpocketFileWriter : NSObject <NSPasteboardWriting>
- (instancetype)initWithFile:(NSURL*)file;
@end

@implementation StowpocketFileWriter {
    NSURL* _file;
    NSArray<NSString*>* _contentTypes;
}

- (instancetype)initWithFile:(NSURL*)file {
    self = [super init];
    if (self != nil) {
        _file = file;
        NSItemProvider* const provider = [[NSItemProvider alloc] initWithContentsOfURL:file];
        _contentTypes = provider == nil ? @[] : provider.registeredTypeIdentifiers;
    }
    return self;
}

- (NSArray<NSPasteboardType>*)writableTypesForPasteboard:(NSPasteboard*)pasteboard {
    NSMutableArray<NSPasteboardType>* const types = [NSMutableArray arrayWithCapacity:4];
    for (NSPasteboardType type in [_file writableTypesForPasteboard:pasteboard])
        [types addObject:type];
    for (NSPasteboardType type in _contentTypes) {
        if (![types containsObject:type])
            [types addObject:type];
    }
    return types;
}

- (NSPasteboardWritingOptions)writingOptionsForType:(NSPasteboardType)type pasteboard:(NSPasteboard*)pasteboard {
    return [[_file writableTypesForPasteboard:pasteboard] containsObject:type] ? 0 : NSPasteboardWritingPromised;
}

- (nullable id)pasteboardPropertyListForType:(NSPasteboardType)type {
    id const own = [_file pasteboardPropertyListForType:type];
    if (own != nil || ![_contentTypes containsObject:type])
        return own;
    return [NSData dataWithContentsOfURL:_file options:NSDataReadingMappedIfSafe error:nil];
}

@end

/// Runs a function when the drag has ended.
@interface StowpocketDragSource : NSObject <NSDraggingSource>
- (instancetype)initWithEnd:(std::function<void()>)ended;
@end

@implementation StowpocketDragSource {
    std::function<void()> _ended;
}

- (instancetype)initWithEnd:(std::function<void()>)ended {
    self = [super init];
    if (self != nil)
        _ended = std::move(ended);
    return self;
}

/// Never offers to move, which would let other programs take the user's file away.
- (NSDragOperation)draggingSession:(NSDraggingSession*)session
    sourceOperationMaskForDraggingContext:(NSDraggingContext)context {
    return NSDragOperationCopy;
}

- (void)draggingSession:(NSDraggingSession*)session endedAtPoint:(NSPoint)point operation:(NSDragOperation)operation {
    const std::function<void()> ended = std::exchange(_ended, nullptr);
    if (ended)
        ended();
}

@end

namespace stowpocket {
namespace {

/// Returns the press or move of the mouse that is being handled. The toolkit may deliver it late, when the system is
/// already at another event, with which no drag can begin. In that case an equal event is made.
NSEvent* mouseEventIn(NSWindow* window) {
    NSEvent* const current = NSApplication.sharedApplication.currentEvent;
    if (current.type == NSEventTypeLeftMouseDown || current.type == NSEventTypeLeftMouseDragged)
        return current;
    return [NSEvent mouseEventWithType:NSEventTypeLeftMouseDragged
                              location:window.mouseLocationOutsideOfEventStream
                         modifierFlags:0
                             timestamp:current.timestamp
                          windowNumber:window.windowNumber
                               context:nil
                           eventNumber:0
                            clickCount:1
                              pressure:1];
}

/// Returns the frame in the view's own coordinates, which run from the top or from the bottom.
NSRect frameBelowPointer(NSView* view, NSEvent* event, const DragImage& image) {
    const NSPoint pointer = [view convertPoint:event.locationInWindow fromView:nil];
    const double above = view.flipped ? image.hotSpotY : image.size.height - image.hotSpotY;
    return NSMakeRect(pointer.x - image.hotSpotX, pointer.y - above, image.size.width, image.size.height);
}

class MacFileDragSource : public FileDragSource {
public:
    void start(void* nativeView, const std::vector<FileURL>& files, const DragImage& image,
               std::function<void()> ended) override {
        NSView* const view = (__bridge NSView*)nativeView;
        NSWindow* const window = view.window;
        NSEvent* const event = window == nil ? nil : mouseEventIn(window);
        if (event == nil)
            return ended();
        // The picture stands for all files and belongs to the first.
        NSImage* picture = nsImageOf(image.pixels, image.size);
        NSMutableArray<NSDraggingItem*>* const items = [NSMutableArray arrayWithCapacity:files.size()];
        for (const FileURL& file : files) {
            NSDraggingItem* const item = [[NSDraggingItem alloc]
                initWithPasteboardWriter:[[StowpocketFileWriter alloc] initWithFile:nsURL(file)]];
            [item setDraggingFrame:frameBelowPointer(view, event, image) contents:picture];
            [items addObject:item];
            picture = nil;
        }
        source_ = [[StowpocketDragSource alloc] initWithEnd:std::move(ended)];
        [view beginDraggingSessionWithItems:items event:event source:source_];
    }

private:
    /// The documentation does not promise that the session retains it.
    StowpocketDragSource* source_ = nil;
};

}  // namespace

std::unique_ptr<FileDragSource> makeMacFileDragSource() {
    return std::make_unique<MacFileDragSource>();
}

}  // namespace stowpocket
