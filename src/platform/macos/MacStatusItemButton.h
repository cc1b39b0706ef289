// SPDX-License-Identifier: MIT
// For the adapters in this folder only: includes the system's headers.
#pragma once

#include "services/StatusItem.h"

#import <AppKit/AppKit.h>

@class StowpocketClickTarget;

namespace stowpocket {

/// The button of a status item. The item owns the system's button, which is gone with it.
class MacStatusItemButton : public StatusItemButton {
public:
    explicit MacStatusItemButton(NSStatusBarButton* _Nonnull button);
    ~MacStatusItemButton() override;
    MacStatusItemButton(const MacStatusItemButton&) = delete;
    MacStatusItemButton& operator=(const MacStatusItemButton&) = delete;

    void setImage(const StatusItemImage& image) override;
    void setTitle(const StatusItemTitle& title) override;
    void setAction(std::function<void()> action) override;
    void setMenu(StatusItemMenu menu) override;
    void addDropView(std::shared_ptr<DraggingDestination> dropView) override;

    /// The view that a popover is attached to.
    [[nodiscard]] NSView* _Nonnull view() const { return button_; }

private:
    NSStatusBarButton* const _Nonnull button_;
    /// The button does not retain the target of its action.
    StowpocketClickTarget* const _Nonnull target_;
};

}  // namespace stowpocket
