// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "services/Pictures.h"
#include "services/StatusItem.h"
#include "services/Windows.h"

#include <functional>
#include <memory>
#include <string>

// The menu bar, and the system's windows around views of the toolkit.
namespace stowpocket {

/// A view of the toolkit inside a window or popover of the system. Main thread only.
class HostedView {
public:
    virtual ~HostedView() = default;
    /// Returns the NSView that it draws in, always the same one.
    [[nodiscard]] virtual void* nativeView() = 0;
    /// Returns the size that it wants.
    [[nodiscard]] virtual Size size() const = 0;
    /// Emitted when it wants another size.
    [[nodiscard]] virtual Signal<>& sizeChanged() = 0;
    /// `cancel` runs when Escape is pressed and nothing inside uses the key.
    virtual void setCancel(std::function<void()> cancel) = 0;
    /// Called when the window around it has appeared and when it disappears, so that a hidden view does not animate.
    /// A view that is shown while its native view is in no window would open a window of its own.
    virtual void setShown(bool isShown) = 0;
};

/// The system's menu bar.
[[nodiscard]] std::unique_ptr<StatusBar> makeMacStatusBar();

/// `makeContent` is called once, when the popover is first shown. The popover's anchor must be a button made by
/// `makeMacStatusBar`.
[[nodiscard]] std::unique_ptr<Popover> makeMacPopover(std::function<std::unique_ptr<HostedView>()> makeContent);

enum class MacWindowKind {
    titled,  ///< a plain window with a title bar and a close button
    bare,    ///< its empty title bar is transparent, with the view behind it; floats, and moves by its background
};

/// Returns a window of the fixed size of its content.
[[nodiscard]] std::unique_ptr<Window> makeMacWindow(MacWindowKind kind, const std::string& title,
                                                    std::unique_ptr<HostedView> content);

}  // namespace stowpocket
