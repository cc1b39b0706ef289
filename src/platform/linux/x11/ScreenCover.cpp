// SPDX-License-Identifier: MIT
#include "platform/linux/x11/ScreenCover.h"

#include <array>
#include <string_view>
#include <utility>

namespace stowpocket {
namespace {

/// Windows of this depth may be transparent.
constexpr std::uint8_t blendingDepth = 32;

/// Returns 0 when the server has none.
xcb_visualid_t blendingVisual(const xcb_screen_t& screen) {
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0; xcb_depth_next(&depth)) {
        if (depth.data->depth == blendingDepth && depth.data->visuals_len > 0)
            return xcb_depth_visuals(depth.data)->visual_id;
    }
    return 0;
}

xcb_atom_t atomNamed(xcb_connection_t* server, std::string_view name) {
    const auto cookie = xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const XcbAnswer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(server, cookie, nullptr));
    return reply ? reply->atom : x11None;
}

}  // namespace

void X11ScreenCover::show() {
    xcb_connection_t* const server = connection_.raw();
    const xcb_visualid_t visual = blendingVisual(*xcb_setup_roots_iterator(xcb_get_setup(server)).data);
    const std::optional<QRect> screen = connection_.geometryOnRoot(connection_.root());
    if (window_ != x11None || visual == 0 || !screen)
        return;
    colors_ = xcb_generate_id(server);
    xcb_create_colormap(server, XCB_COLORMAP_ALLOC_NONE, colors_, connection_.root(), visual);
    window_ = xcb_generate_id(server);
    // GNOME Shell hides its bar while an unmanaged window is as large as the screen.
    const int leftFree = kind_ == Kind::unmanaged ? 1 : 0;
    // The server paints the background, as compositors pass over a window that nothing was painted into.
    const std::array<std::uint32_t, 4> values{0, 0, kind_ == Kind::unmanaged ? 1u : 0u, colors_};
    xcb_create_window(
        server, blendingDepth, window_, connection_.root(), 0, 0, static_cast<std::uint16_t>(screen->width()),
        static_cast<std::uint16_t>(screen->height() - leftFree), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
        XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP, values.data());
    if (kind_ == Kind::desktop)
        becomeDesktop();
    constexpr std::uint32_t below = XCB_STACK_MODE_BELOW;
    xcb_configure_window(server, window_, XCB_CONFIG_WINDOW_STACK_MODE, &below);
    xcb_map_window(server, window_);
    xcb_flush(server);
}

void X11ScreenCover::becomeDesktop() const {
    xcb_connection_t* const server = connection_.raw();
    connection_.setProperty(window_, atomNamed(server, "_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM,
                            {atomNamed(server, "_NET_WM_WINDOW_TYPE_DESKTOP")});
    // The program that opens a window with this time does not want it to become active.
    connection_.setProperty(window_, connection_.atom(X11Atom::userTime), XCB_ATOM_CARDINAL, {0});
    // ICCCM, 4.1.2.4: of these hints the first says which others hold, and the second that it takes no input.
    constexpr std::uint32_t inputHint = 1;
    connection_.setProperty(window_, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, {inputHint, 0, 0, 0, 0, 0, 0, 0, 0});
}

void X11ScreenCover::hide() {
    if (window_ == x11None)
        return;
    xcb_destroy_window(connection_.raw(), std::exchange(window_, x11None));
    xcb_free_colormap(connection_.raw(), colors_);
    xcb_flush(connection_.raw());
}

}  // namespace stowpocket
