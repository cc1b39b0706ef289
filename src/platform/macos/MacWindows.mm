// SPDX-License-Identifier: MIT
#include "platform/macos/MacWindows.h"

#include "foundation/Invariant.h"
#import "platform/macos/Conversions.h"
#import "platform/macos/MacStatusItemButton.h"

/// Runs a function when a popover has left the screen, after its animation, or when a window is about to close.
@interface StowpocketCloseDelegate : NSObject <NSPopoverDelegate, NSWindowDelegate>
- (instancetype)initWithClosed:(std::function<void()>)closed;
@end

@implementation StowpocketCloseDelegate {
    std::function<void()> _closed;
}

- (instancetype)initWithClosed:(std::function<void()>)closed {
    self = [super init];
    if (self != nil)
        _closed = std::move(closed);
    return self;
}

- (void)popoverDidClose:(NSNotification*)notification {
    _closed();
}

- (void)windowWillClose:(NSNotification*)notification {
    _closed();
}

@end

namespace stowpocket {
namespace {

/// Returns a controller whose view contains the toolkit's view and is as large. It must not outlive `content`.
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

class MacPopover : public Popover {
public:
    explicit MacPopover(std::function<std::unique_ptr<HostedView>()> makeContent)
        : makeContent_(std::move(makeContent)),
          delegate_([[StowpocketCloseDelegate alloc] initWithClosed:[this] { closed(); }]) {
        popover_.behavior = NSPopoverBehaviorApplicationDefined;
        popover_.animates = YES;
        popover_.delegate = delegate_;
    }
    ~MacPopover() override {
        popover_.delegate = nil;
        [popover_ close];
    }
    MacPopover(const MacPopover&) = delete;
    MacPopover& operator=(const MacPopover&) = delete;

    [[nodiscard]] bool isShown() const override { return popover_.shown; }
    void setAnimates(bool animates) override { popover_.animates = animates; }

    void show(StatusItemButton& anchor) override {
        auto* const button = dynamic_cast<MacStatusItemButton*>(&anchor);
        invariant(button != nullptr, "a popover hangs on an icon of its own desktop");
        NSView* const view = button->view();
        if (view.window == nil)
            return;  // the system raises an exception for a view that is in no window
        makeContent();
        followSize();
        [popover_ showRelativeToRect:view.bounds ofView:view preferredEdge:NSRectEdgeMinY];
        content_->setShown(true);
    }

    void makeKey() override {
        if (!content_)
            return;
        NSView* const view = (__bridge NSView*)content_->nativeView();
        [view.window makeKeyWindow];
        [view.window makeFirstResponder:view];
    }

    void performClose() override { [popover_ performClose:nil]; }

private:
    void makeContent() {
        if (content_)
            return;
        content_ = makeContent_();
        popover_.contentViewController = hostingController(*content_);
        sizeChanged_ = content_->sizeChanged().connect([this] { followSize(); });
        content_->setCancel([this] { onCancel(); });
    }

    void followSize() {
        const Size size = content_->size();
        popover_.contentSize = NSMakeSize(size.width, size.height);
    }

    /// A popover may have been shown again while it closed with an animation.
    void closed() {
        if (content_ && !popover_.shown)
            content_->setShown(false);
    }

    const std::function<std::unique_ptr<HostedView>()> makeContent_;
    std::unique_ptr<HostedView> content_;
    Subscription sizeChanged_;
    NSPopover* const popover_ = [[NSPopover alloc] init];
    /// The popover does not retain it.
    StowpocketCloseDelegate* const delegate_;
};

/// The colour behind the view of the first run.
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
          delegate_(
              [[StowpocketCloseDelegate alloc] initWithClosed:[view = content_.get()] { view->setShown(false); }]) {
        window_.releasedWhenClosed = NO;  // this object owns it
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
    /// The window does not retain it.
    StowpocketCloseDelegate* const delegate_;
};

}  // namespace

std::unique_ptr<Popover> makeMacPopover(std::function<std::unique_ptr<HostedView>()> makeContent) {
    return std::make_unique<MacPopover>(std::move(makeContent));
}

std::unique_ptr<Window> makeMacWindow(MacWindowKind kind, const std::string& title,
                                      std::unique_ptr<HostedView> content) {
    return std::make_unique<MacWindow>(kind, title, std::move(content));
}

}  // namespace stowpocket
