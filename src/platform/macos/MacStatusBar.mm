// SPDX-License-Identifier: MIT
#include "foundation/Invariant.h"
#import "platform/macos/AppKitPictures.h"
#import "platform/macos/Conversions.h"
#import "platform/macos/MacDraggingPasteboard.h"
#import "platform/macos/MacStatusItemButton.h"
#include "platform/macos/MacWindows.h"
#include "services/Dragging.h"

#import <AppKit/AppKit.h>

#include <memory>

/// A transparent view that owns a destination of the core and forwards drags to it. Clicks pass through to the button
/// beneath.
@interface StatusItemDropNSView : NSView
/// Called once.
- (void)takeDropsFor:(std::shared_ptr<stowpocket::DraggingDestination>)destination;
@end

using stowpocket::MacDraggingPasteboard;

static NSDragOperation systemOperation(stowpocket::DragOperation operation) {
    return operation == stowpocket::DragOperation::copy ? NSDragOperationCopy : NSDragOperationNone;
}

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

@interface StowpocketClickTarget : NSObject
- (void)clicked:(id)sender;
- (void)runOnClick:(std::function<void()>)action;
- (void)offerMenu:(stowpocket::StatusItemMenu)menu;
- (void)showMenuOn:(NSView*)view;
- (void)chosen:(NSMenuItem*)item;
@end

@implementation StowpocketClickTarget {
    std::function<void()> _action;
    stowpocket::StatusItemMenu _menu;
}

- (void)clicked:(id)sender {
    NSEvent* const event = NSApplication.sharedApplication.currentEvent;
    const bool isOtherButton = event != nil && event.type == NSEventTypeRightMouseUp;
    if (isOtherButton && _menu.entries)
        return [self showMenuOn:static_cast<NSView*>(sender)];
    const std::function<void()> action = _action;  // a copy, because a click may set another action
    if (action)
        action();
}

/// Returns when the menu is closed.
- (void)showMenuOn:(NSView*)view {
    NSMenu* const menu = [[NSMenu alloc] initWithTitle:@""];
    menu.autoenablesItems = NO;
    for (const stowpocket::StatusItemMenuEntry& entry : _menu.entries()) {
        if (entry.beginsGroup)
            [menu addItem:NSMenuItem.separatorItem];
        NSMenuItem* const item = [[NSMenuItem alloc] initWithTitle:stowpocket::nsString(entry.title)
                                                            action:@selector(chosen:)
                                                     keyEquivalent:@""];
        item.target = self;
        item.tag = entry.id;
        item.enabled = entry.isEnabled;
        [menu addItem:item];
    }
    [menu popUpMenuPositioningItem:nil atLocation:NSPoint{0, view.bounds.size.height} inView:view];
}

- (void)chosen:(NSMenuItem*)item {
    _menu.choose(static_cast<int>(item.tag));
}

- (void)offerMenu:(stowpocket::StatusItemMenu)menu {
    _menu = std::move(menu);
}

- (void)runOnClick:(std::function<void()>)action {
    _action = std::move(action);
}

@end

namespace stowpocket {
namespace {

class MacStatusItem : public StatusItem {
public:
    explicit MacStatusItem(NSStatusItem* item) : item_(item) {
        if (NSStatusBarButton* const button = item_.button)
            button_ = std::make_shared<MacStatusItemButton>(button);
    }
    ~MacStatusItem() override { [NSStatusBar.systemStatusBar removeStatusItem:item_]; }
    MacStatusItem(const MacStatusItem&) = delete;
    MacStatusItem& operator=(const MacStatusItem&) = delete;

    [[nodiscard]] std::shared_ptr<StatusItemButton> button() override { return button_; }

private:
    NSStatusItem* const item_;
    std::shared_ptr<MacStatusItemButton> button_;
};

class MacStatusBar : public StatusBar {
public:
    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override {
        return std::make_unique<MacStatusItem>(
            [NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength]);
    }
};

}  // namespace

MacStatusItemButton::MacStatusItemButton(NSStatusBarButton* button)
    : button_(button), target_([[StowpocketClickTarget alloc] init]) {
    button_.imagePosition = NSImageLeading;
    button_.target = target_;
    button_.action = @selector(clicked:);
    [button_ sendActionOn:NSEventMaskLeftMouseUp | NSEventMaskRightMouseUp];
}

MacStatusItemButton::~MacStatusItemButton() {
    button_.action = nullptr;
    button_.target = nil;
}

void MacStatusItemButton::setImage(const StatusItemImage& image) {
    button_.image = systemSymbol(image.symbolName, image.accessibilityDescription,
                                 symbolConfiguration(image.pointSize, image.weight));
}

void MacStatusItemButton::setTitle(const StatusItemTitle& title) {
    NSDictionary<NSAttributedStringKey, id>* const attributes = @{
        NSFontAttributeName : [NSFont monospacedDigitSystemFontOfSize:title.fontSize
                                                               weight:systemWeight(title.weight)],
        NSForegroundColorAttributeName : NSColor.controlTextColor,
        NSBaselineOffsetAttributeName : @(title.baselineOffset),
    };
    button_.attributedTitle = [[NSAttributedString alloc] initWithString:nsString(title.text) attributes:attributes];
}

void MacStatusItemButton::setAction(std::function<void()> action) {
    [target_ runOnClick:std::move(action)];
}

void MacStatusItemButton::setMenu(StatusItemMenu menu) {
    [target_ offerMenu:std::move(menu)];
}

void MacStatusItemButton::addDropView(std::shared_ptr<DraggingDestination> dropView) {
    StatusItemDropNSView* const view = [[StatusItemDropNSView alloc] initWithFrame:NSZeroRect];
    [view takeDropsFor:std::move(dropView)];
    view.frame = button_.bounds;
    view.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
    [button_ addSubview:view];
}

std::unique_ptr<StatusBar> makeMacStatusBar() {
    return std::make_unique<MacStatusBar>();
}

}  // namespace stowpocket
