// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#import "platform/macos/HostingViewController.h"
#include "platform/macos/MacWindows.h"

/// Tells when the window is about to close.
@interface StowpocketWindowDelegate : NSObject <NSWindowDelegate>
- (instancetype)initWithWillClose:(std::function<void()>)willClose;
@end

@implementation StowpocketWindowDelegate {
    std::function<void()> _willClose;
}

- (instancetype)initWithWillClose:(std::function<void()>)willClose {
    self = [super init];
    if (self != nil)
        _willClose = std::move(willClose);
    return self;
}

- (void)windowWillClose:(NSNotification*)notification {
    _willClose();
}

@end

namespace stowpocket {
namespace {

/// Behind the first run's view.
NSColor* bareBackground() {
    constexpr double largest = 255;
    return [NSColor colorWithSRGBRed:13 / largest green:17 / largest blue:23 / largest alpha:1];
}

void makeBare(NSWindow* window) {
    window.titlebarAppearsTransparent = YES;
    window.titleVisibility = NSWindowTitleHidden;
    window.styleMask = NSWindowStyleMaskTitled | NSWindowStyleMaskClosable | NSWindowStyleMaskFullSizeContentView;
    window.movableByWindowBackground = YES;
    window.backgroundColor = bareBackground();
    window.level = NSFloatingWindowLevel;
}

class MacWindow : public Window {
public:
    MacWindow(MacWindowKind kind, const std::string& title, std::unique_ptr<HostedView> content)
        : content_(std::move(content)),
          window_([NSWindow windowWithContentViewController:hostingController(*content_)]),
          delegate_([[StowpocketWindowDelegate alloc]
              initWithWillClose:[view = content_.get()] { view->setShown(false); }]) {
        window_.releasedWhenClosed = NO;  // this object keeps it
        window_.title = nsString(title);
        window_.styleMask = NSWindowStyleMaskTitled | NSWindowStyleMaskClosable;
        window_.delegate = delegate_;
        if (kind == MacWindowKind::bare)
            makeBare(window_);
        const Size size = content_->size();
        [window_ setContentSize:NSMakeSize(size.width, size.height)];
    }
    ~MacWindow() override {
        window_.delegate = nil;
        [window_ close];
    }
    MacWindow(const MacWindow&) = delete;
    MacWindow& operator=(const MacWindow&) = delete;

    [[nodiscard]] bool isVisible() const override { return window_.visible; }
    void center() override { [window_ center]; }
    void makeKeyAndOrderFront() override {
        content_->setShown(true);
        [window_ makeKeyAndOrderFront:nil];
        [window_ makeFirstResponder:(__bridge NSView*)content_->nativeView()];
    }
    void orderFrontRegardless() override { [window_ orderFrontRegardless]; }
    void close() override { [window_ close]; }

private:
    const std::unique_ptr<HostedView> content_;
    NSWindow* const window_;
    /// The window does not keep it.
    StowpocketWindowDelegate* const delegate_;
};

}  // namespace

std::unique_ptr<Window> makeMacWindow(MacWindowKind kind, const std::string& title,
                                      std::unique_ptr<HostedView> content) {
    return std::make_unique<MacWindow>(kind, title, std::move(content));
}

}  // namespace stowpocket
