// SPDX-License-Identifier: MIT
#include "FakeTray.h"

#include <algorithm>
#include <array>

namespace stowpocket {
namespace {

constexpr std::uint32_t dockOpcode = 0;
constexpr std::uint32_t embeddedNotify = 0;
constexpr std::uint32_t colorMask = 0xFFFFFF;

}  // namespace

FakeTray::FakeTray(Container container, std::uint32_t background) : container_(container), background_(background) {
    panel_ = makeWindow(root_, panelX, panelY, 200, 30);
    xcb_map_window(connection_, panel_);
    xcb_set_selection_owner(connection_, session_->window(), session_->atom("_NET_SYSTEM_TRAY_S0"), XCB_CURRENT_TIME);
    send(root_, XCB_EVENT_MASK_STRUCTURE_NOTIFY, root_, "MANAGER", XCB_CURRENT_TIME,
         session_->atom("_NET_SYSTEM_TRAY_S0"), session_->window());
}

xcb_window_t FakeTray::makeWindow(xcb_window_t parent, std::int16_t x, std::int16_t y, std::uint16_t width,
                                  std::uint16_t height) {
    const xcb_window_t window = xcb_generate_id(connection_);
    const std::array<std::uint32_t, 2> values{background_, 1};
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, parent, x, y, width, height, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data());
    return window;
}

void FakeTray::send(xcb_window_t destination, std::uint32_t mask, xcb_window_t window, const char* type,
                    std::uint32_t first, std::uint32_t second, std::uint32_t third) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = session_->atom(type);
    event.data.data32[0] = first;
    event.data.data32[1] = second;
    event.data.data32[2] = third;
    xcb_send_event(connection_, 0, destination, mask, reinterpret_cast<const char*>(&event));
    xcb_flush(connection_);
}

void FakeTray::work() {
    const xcb_atom_t opcode = session_->atom("_NET_SYSTEM_TRAY_OPCODE");
    while (const XcbSession::Event event{xcb_poll_for_event(connection_)}) {
        if (typeOf(*event) != XCB_CLIENT_MESSAGE)
            continue;
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
        if (message.type == opcode && message.data.data32[1] == dockOpcode)
            takeIn(message.data.data32[2]);
    }
}

void FakeTray::takeIn(xcb_window_t window) {
    const xcb_window_t parent = container_ == Container::inPanel ? panel_ : root_;
    const xcb_window_t socket = makeWindow(parent, 5, 3, grantedWidth, grantedHeight);
    const std::array<std::uint32_t, 2> size{grantedWidth, grantedHeight};
    xcb_map_window(connection_, socket);
    xcb_reparent_window(connection_, window, socket, 0, 0);
    xcb_configure_window(connection_, window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size.data());
    xcb_map_window(connection_, window);
    send(window, XCB_EVENT_MASK_NO_EVENT, window, "_XEMBED", XCB_CURRENT_TIME, embeddedNotify, 0);
    docked_ = window;
    ++dockedCount_;
}

std::optional<std::pair<std::uint32_t, std::uint32_t>> FakeTray::extremes() {
    const auto cookie =
        xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, docked_, 0, 0, grantedWidth, grantedHeight, ~0U);
    const XcbAnswer<xcb_get_image_reply_t> image(xcb_get_image_reply(connection_, cookie, nullptr));
    if (!image)
        return std::nullopt;
    const auto* const pixels = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get()));
    const auto [least, most] =
        std::minmax_element(pixels, pixels + grantedWidth * grantedHeight,
                            [](std::uint32_t a, std::uint32_t b) { return (a & colorMask) < (b & colorMask); });
    return std::pair(*least & colorMask, *most & colorMask);
}

std::optional<std::uint32_t> FakeTray::lightest() {
    const auto found = extremes();
    return found ? std::optional(found->second) : std::nullopt;
}

std::optional<std::uint32_t> FakeTray::darkest() {
    const auto found = extremes();
    return found ? std::optional(found->first) : std::nullopt;
}

}  // namespace stowpocket
