// SPDX-License-Identifier: MIT
#import "platform/macos/MacStatusItemButton.h"

#import "platform/macos/Conversions.h"
#import "platform/macos/StatusItemDropNSView.h"
#import "platform/macos/SystemSymbol.h"

@interface StowpocketClickTarget : NSObject
- (void)clicked:(id)sender;
- (void)runOnClick:(std::function<void()>)action;
@end

@implementation StowpocketClickTarget {
    std::function<void()> _action;
}

- (void)clicked:(id)sender {
    const std::function<void()> action = _action;  // a copy: a click may set another action
    if (action)
        action();
}

- (void)runOnClick:(std::function<void()>)action {
    _action = std::move(action);
}

@end

namespace stowpocket {

MacStatusItemButton::MacStatusItemButton(NSStatusBarButton* button)
    : button_(button), target_([[StowpocketClickTarget alloc] init]) {
    button_.imagePosition = NSImageLeading;
    button_.target = target_;
    button_.action = @selector(clicked:);
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

void MacStatusItemButton::addDropView(std::shared_ptr<DraggingDestination> dropView) {
    StatusItemDropNSView* const view = [[StatusItemDropNSView alloc] initWithFrame:NSZeroRect];
    [view takeDropsFor:std::move(dropView)];
    view.frame = button_.bounds;
    view.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
    [button_ addSubview:view];
}

}  // namespace stowpocket
