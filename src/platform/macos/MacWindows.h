// SPDX-License-Identifier: MIT
#pragma once

#include "platform/macos/HostedView.h"
#include "services/Windows.h"

#include <functional>
#include <memory>
#include <string>

// Windows of the system around views of the toolkit.
namespace stowpocket {

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
