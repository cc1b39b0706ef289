// SPDX-License-Identifier: MIT
#import "platform/macos/StatusItemDropNSView.h"

#include "foundation/Invariant.h"
#import "platform/macos/Conversions.h"
#import "platform/macos/MacDraggingPasteboard.h"

using stowpocket::DragOperation;
using stowpocket::MacDraggingPasteboard;

namespace {

NSDragOperation systemOperation(DragOperation operation) {
    return operation == DragOperation::copy ? NSDragOperationCopy : NSDragOperationNone;
}

}  // namespace

@implementation StatusItemDropNSView {
    std::shared_ptr<stowpocket::DraggingDestination> _destination;
}

- (nullable instancetype)initWithCoder:(NSCoder*)coder {
    stowpocket::invariant(false, "init(coder:) has not been implemented");
    return [super initWithCoder:coder];
}

- (void)takeDropsFor:(std::shared_ptr<stowpocket::DraggingDestination>)destination {
    _destination = std::move(destination);
    NSMutableArray<NSPasteboardType>* const types = [NSMutableArray arrayWithCapacity:2];
    for (const std::string& type : _destination->registeredDraggedTypes())
        [types addObject:stowpocket::nsString(type)];
    [self registerForDraggedTypes:types];
}

- (NSDragOperation)draggingEntered:(id<NSDraggingInfo>)sender {
    MacDraggingPasteboard pasteboard(sender.draggingPasteboard);
    return systemOperation(_destination->draggingEntered(pasteboard));
}

- (NSDragOperation)draggingUpdated:(id<NSDraggingInfo>)sender {
    MacDraggingPasteboard pasteboard(sender.draggingPasteboard);
    return systemOperation(_destination->draggingUpdated(pasteboard));
}

- (BOOL)performDragOperation:(id<NSDraggingInfo>)sender {
    MacDraggingPasteboard pasteboard(sender.draggingPasteboard);
    return _destination->performDragOperation(pasteboard);
}

@end
