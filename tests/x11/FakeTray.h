// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/input/XcbSession.h"

namespace stowpocket {

/// A tray manager on a connection of its own, as a panel would be. It works only while it is asked to, and ends
/// as a crash does: its windows go, with all that is inside.
class FakeTray {
public:
    /// Where a tray puts the windows that it takes in.
    enum class Container { inPanel, underRoot };

    static constexpr std::uint16_t grantedWidth = 22;
    static constexpr std::uint16_t grantedHeight = 24;
    static constexpr std::int16_t panelX = 300;
    static constexpr std::int16_t panelY = 10;

    /// Takes the selection and announces itself. `background` is the colour of its panel, 0xRRGGBB.
    FakeTray(Container container, std::uint32_t background);

    /// Takes in the window that was offered since the last time, if any.
    void work();
    /// 0 before any.
    [[nodiscard]] xcb_window_t docked() const { return docked_; }
    [[nodiscard]] int dockedCount() const { return dockedCount_; }

    /// The colours that the screen shows in the docked window, as 0xRRGGBB; none when it cannot be read.
    [[nodiscard]] std::optional<std::uint32_t> lightest();
    [[nodiscard]] std::optional<std::uint32_t> darkest();

private:
    [[nodiscard]] xcb_window_t makeWindow(xcb_window_t parent, std::int16_t x, std::int16_t y, std::uint16_t width,
                                          std::uint16_t height);
    void send(xcb_window_t destination, std::uint32_t mask, xcb_window_t window, const char* type,
              std::uint32_t first, std::uint32_t second, std::uint32_t third);
    void takeIn(xcb_window_t window);
    [[nodiscard]] std::optional<std::pair<std::uint32_t, std::uint32_t>> extremes();

    const std::unique_ptr<XcbSession> session_ = XcbSession::open();
    xcb_connection_t* const connection_ = session_->raw();
    const Container container_;
    const std::uint32_t background_;
    const xcb_window_t root_ = session_->root();
    xcb_window_t panel_ = 0;
    xcb_window_t docked_ = 0;
    int dockedCount_ = 0;
};

}  // namespace stowpocket
