// SPDX-License-Identifier: MIT
#include "platform/macos/MacStatusBar.h"

#import "platform/macos/MacStatusItemButton.h"

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

std::unique_ptr<StatusBar> makeMacStatusBar() {
    return std::make_unique<MacStatusBar>();
}

}  // namespace stowpocket
