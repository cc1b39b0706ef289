// SPDX-License-Identifier: MIT
#include "foundation/Invariant.h"
#import "platform/macos/HostingViewController.h"
#import "platform/macos/MacStatusItemButton.h"
#include "platform/macos/MacWindows.h"

/// Tells when the popover is off the screen, after its movement.
@interface StowpocketPopoverDelegate : NSObject <NSPopoverDelegate>
- (instancetype)initWithClosed:(std::function<void()>)closed;
@end

@implementation StowpocketPopoverDelegate {
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

@end

namespace stowpocket {
namespace {

class MacPopover : public Popover {
public:
    explicit MacPopover(std::function<std::unique_ptr<HostedView>()> makeContent)
        : makeContent_(std::move(makeContent)),
          delegate_([[StowpocketPopoverDelegate alloc] initWithClosed:[this] { closed(); }]) {
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
            return;  // on a view that is in no window the system would raise an exception
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

    /// One that closes in a movement may have been shown again before it was over.
    void closed() {
        if (content_ && !popover_.shown)
            content_->setShown(false);
    }

    const std::function<std::unique_ptr<HostedView>()> makeContent_;
    std::unique_ptr<HostedView> content_;
    Subscription sizeChanged_;
    NSPopover* const popover_ = [[NSPopover alloc] init];
    /// The popover does not keep it.
    StowpocketPopoverDelegate* const delegate_;
};

}  // namespace

std::unique_ptr<Popover> makeMacPopover(std::function<std::unique_ptr<HostedView>()> makeContent) {
    return std::make_unique<MacPopover>(std::move(makeContent));
}

}  // namespace stowpocket
