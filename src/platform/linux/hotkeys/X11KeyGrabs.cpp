// SPDX-License-Identifier: MIT
#include "platform/linux/hotkeys/X11KeyGrabs.h"

#include "platform/linux/x11/X11Events.h"

#include <algorithm>
#include <utility>

namespace stowpocket {
namespace {

/// The key symbols of the whole keyboard, asked for at once.
class KeySymbols {
public:
    explicit KeySymbols(xcb_connection_t* connection) : first_(xcb_get_setup(connection)->min_keycode) {
        const auto count = static_cast<std::uint8_t>(xcb_get_setup(connection)->max_keycode - first_ + 1);
        answer_.reset(
            xcb_get_keyboard_mapping_reply(connection, xcb_get_keyboard_mapping(connection, first_, count), nullptr));
    }
    [[nodiscard]] std::vector<std::uint32_t> operator()(std::uint8_t key) const {
        if (!answer_ || key < first_)
            return {};
        const auto perKey = static_cast<std::size_t>(answer_->keysyms_per_keycode);
        const std::size_t begin = static_cast<std::size_t>(key - first_) * perKey;
        const auto length = static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(answer_.get()));
        const std::uint32_t* const all = xcb_get_keyboard_mapping_keysyms(answer_.get());
        return begin + perKey > length ? std::vector<std::uint32_t>()
                                       : std::vector<std::uint32_t>(all + begin, all + begin + perKey);
    }

private:
    const std::uint8_t first_;
    XcbAnswer<xcb_get_keyboard_mapping_reply_t> answer_;
};

ModifierLayout presentLayout(xcb_connection_t* connection) {
    const auto cookie = xcb_get_modifier_mapping(connection);
    const KeySymbols symbols(connection);
    const XcbAnswer<xcb_get_modifier_mapping_reply_t> mapping(
        xcb_get_modifier_mapping_reply(connection, cookie, nullptr));
    std::array<std::vector<std::uint8_t>, 8> keys;
    if (mapping) {
        const std::uint8_t* next = xcb_get_modifier_mapping_keycodes(mapping.get());
        for (auto& keysOfOne : keys) {
            keysOfOne.assign(next, next + mapping->keycodes_per_modifier);
            next += mapping->keycodes_per_modifier;
        }
    }
    return modifierLayoutOf(keys, std::cref(symbols));
}

}  // namespace

X11KeyGrabs::X11KeyGrabs(xcb_connection_t* connection)
    : connection_(connection),
      root_(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root),
      layout_(presentLayout(connection)) {}

bool X11KeyGrabs::readLayout() {
    const ModifierLayout now = presentLayout(connection_);
    return std::exchange(layout_, now) != now;
}

bool X11KeyGrabs::grab(const KeyCombination& combination) const {
    const std::uint16_t modifiers = x11ModifiersOf(combination.carbonModifiers, layout_);
    std::vector<xcb_void_cookie_t> requests;
    for (const std::uint16_t locks : lockStates(layout_)) {
        requests.push_back(xcb_grab_key_checked(connection_, 0, root_, static_cast<std::uint16_t>(modifiers | locks),
                                                combination.key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    bool refused = false;
    for (const xcb_void_cookie_t request : requests) {
        const XcbAnswer<xcb_generic_error_t> error(xcb_request_check(connection_, request));
        refused = refused || error;
    }
    if (refused)
        ungrab(combination);
    return !refused;
}

void X11KeyGrabs::ungrab(const KeyCombination& combination) const {
    const std::uint16_t modifiers = x11ModifiersOf(combination.carbonModifiers, layout_);
    for (const std::uint16_t locks : lockStates(layout_))
        xcb_ungrab_key(connection_, combination.key, root_, static_cast<std::uint16_t>(modifiers | locks));
    xcb_flush(connection_);
}

}  // namespace stowpocket
