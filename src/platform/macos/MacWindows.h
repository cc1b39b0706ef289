// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "services/Pictures.h"
#include "services/StatusItem.h"
#include "services/Windows.h"

#include <functional>
#include <memory>
#include <string>

// The menu bar, and windows of the system around views of the toolkit.
namespace stowpocket {

/// A view of the toolkit inside a window or popover of the system. Main thread.
class HostedView {
public:
    virtual ~HostedView() = default;
    /// The NSView that it draws in; the same for as long as this lives.
    [[nodiscard]] virtual void* nativeView() = 0;
    /// What it wants to be as large as.
    [[nodiscard]] virtual Size size() const = 0;
    /// Emitted when it wants another size.
    [[nodiscard]] virtual Signal<>& sizeChanged() = 0;
    /// `cancel` runs on Escape, where nothing inside has a use for that.
    virtual void setCancel(std::function<void()> cancel) = 0;
    /// Told when the window around it has appeared and when it goes, so that nothing moves where nobody looks. Shown
    /// while its native view is in no window, it would make itself one.
    virtual void setShown(bool isShown) = 0;
};

/// The system's menu bar.
[[nodiscard]] std::unique_ptr<StatusBar> makeMacStatusBar();

/// `makeContent` is called once, when the popover is first shown. Its anchor must be a button of this system's menu
/// bar.
[[nodiscard]] std::unique_ptr<Popover> makeMacPopover(std::function<std::unique_ptr<HostedView>()> makeContent);

enum class MacWindowKind {
    titled,  ///< a plain window with a title bar and a close button
    bare,    ///< the title bar is transparent and empty, the view behind it too; floats, and moves by its background
};

/// A window of the fixed size of its content.
[[nodiscard]] std::unique_ptr<Window> makeMacWindow(MacWindowKind kind, const std::string& title,
                                                    std::unique_ptr<HostedView> content);

}  // namespace stowpocket
