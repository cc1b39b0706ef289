// SPDX-License-Identifier: MIT
#import "platform/macos/HostingViewController.h"

namespace stowpocket {

NSViewController* hostingController(HostedView& content) {
    const Size size = content.size();
    const NSRect frame = NSMakeRect(0, 0, size.width, size.height);
    NSViewController* const controller = [[NSViewController alloc] init];
    controller.view = [[NSView alloc] initWithFrame:frame];
    NSView* const view = (__bridge NSView*)content.nativeView();
    view.frame = frame;
    view.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
    [controller.view addSubview:view];
    return controller;
}

}  // namespace stowpocket
