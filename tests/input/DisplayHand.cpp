// SPDX-License-Identifier: MIT
#include "input/DisplayHand.h"

#include "platform/linux/input/KeyModifiers.h"
#include "x11/ComesTrue.h"

#include <array>
#include <xcb/xtest.h>

namespace stowpocket {

DisplayHand::DisplayHand() = default;

void DisplayHand::fake(std::uint8_t type, std::uint8_t detail, int x, int y) {
    xcb_test_fake_input(session_->raw(), type, detail, XCB_CURRENT_TIME, session_->root(),
                        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    xcb_flush(session_->raw());
}

/// Xvfb numbers its devices in the order in which it makes them; its keyboard comes after those for XTEST.
void DisplayHand::fakeOnKeyboard(std::uint8_t type, std::uint8_t key) {
    constexpr std::uint8_t keyboardOfXvfb = 7;
    const std::uint8_t firstEvent = xcb_get_extension_data(session_->raw(), &xcb_input_id)->first_event;
    xcb_test_fake_input(session_->raw(), static_cast<std::uint8_t>(firstEvent + type), key, XCB_CURRENT_TIME,
                        XCB_WINDOW_NONE, 0, 0, keyboardOfXvfb);
    xcb_flush(session_->raw());
}

void DisplayHand::press(const std::vector<std::uint8_t>& keys) {
    for (const std::uint8_t key : keys)
        down(key);
    for (auto key = keys.rbegin(); key != keys.rend(); ++key)
        up(*key);
    sync();
}

void DisplayHand::moveTo(int x, int y) {
    fake(XCB_MOTION_NOTIFY, 0, x, y);
    sync();
}

void DisplayHand::sync() {
    static_cast<void>(lockState());
}

std::uint16_t DisplayHand::lockState() {
    const XcbAnswer<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(session_->raw(), xcb_query_pointer(session_->raw(), session_->root()), nullptr));
    return pointer ? pointer->mask & x11Modifier::all : 0;
}

xcb_window_t DisplayHand::activeWindow() {
    const auto words = session_->property(session_->root(), session_->atom("_NET_ACTIVE_WINDOW"), 4).words();
    return words.empty() ? 0 : words.front();
}

xcb_window_t DisplayHand::clipboardOwner() {
    const auto cookie = xcb_get_selection_owner(session_->raw(), session_->atom("CLIPBOARD"));
    const XcbAnswer<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(session_->raw(), cookie, nullptr));
    return reply ? reply->owner : 0;
}

std::string DisplayHand::textOf(xcb_window_t window, const std::string& property) {
    const X11Property found = session_->property(window, session_->atom(property), 1024);
    std::string text;
    for (const std::byte letter : found.bytes)
        text.push_back(static_cast<char>(letter));
    return text;
}

bool DisplayHand::isUnderPointer(xcb_window_t window) {
    xcb_window_t under = session_->root();
    while (under != 0 && under != window) {
        const XcbAnswer<xcb_query_pointer_reply_t> pointer(
            xcb_query_pointer_reply(session_->raw(), xcb_query_pointer(session_->raw(), under), nullptr));
        under = pointer ? pointer->child : 0;
    }
    return under == window;
}

void DisplayHand::setProperty(xcb_window_t window, const std::string& name, xcb_atom_t type, std::uint8_t format,
                              const std::string& bytes) {
    xcb_change_property(session_->raw(), XCB_PROP_MODE_REPLACE, window, session_->atom(name), type, format,
                        static_cast<std::uint32_t>(bytes.size() / (format / 8u)), bytes.data());
    sync();
}

bool DisplayHand::putUnder(xcb_window_t window, std::pair<int, int> pointer) {
    const std::array<std::uint32_t, 3> placeAndOrder{static_cast<std::uint32_t>(pointer.first - 50),
                                                     static_cast<std::uint32_t>(pointer.second - 50),
                                                     XCB_STACK_MODE_ABOVE};
    xcb_configure_window(session_->raw(), window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_STACK_MODE,
                         placeAndOrder.data());
    return comesTrue([&] { return isUnderPointer(window); });
}

bool DisplayHand::bringToFront(xcb_window_t window) {
    constexpr std::uint32_t askedByUser = 2;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = session_->atom("_NET_ACTIVE_WINDOW");
    message.data.data32[0] = askedByUser;
    return comesTrue([&] {
        if (activeWindow() == window)
            return true;
        xcb_send_event(session_->raw(), 0, session_->root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&message));
        sync();
        return false;
    });
}

xcb_window_t DisplayHand::openForeignWindow() {
    xcb_connection_t* const connection = session_->raw();
    const xcb_window_t window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, session_->root(), 0, 0, 300, 200, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(connection, window);
    xcb_flush(connection);
    return bringToFront(window) ? window : 0;
}

}  // namespace stowpocket
