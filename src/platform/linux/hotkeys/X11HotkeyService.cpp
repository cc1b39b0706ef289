// SPDX-License-Identifier: MIT
#include "platform/linux/hotkeys/X11HotkeyService.h"

#include "platform/linux/input/Keys.h"
#include "platform/linux/x11/X11Events.h"

#include <QLoggingCategory>

#include <algorithm>
#include <array>
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

Q_LOGGING_CATEGORY(hotkeyLog, "stowpocket.hotkeys")

/// Kinds of events of the XKEYBOARD extension, told apart in their second byte.
constexpr std::uint8_t newKeyboardNotify = 0;
constexpr std::uint8_t mapNotify = 1;

void logRefusal(std::uint32_t keyCode, std::uint32_t modifiers, const char* why) {
    qCWarning(hotkeyLog, "hotkey with key code %u and modifiers 0x%x not registered: %s", keyCode, modifiers, why);
}

std::uint8_t firstEventOf(xcb_connection_t* connection, std::string_view extension) {
    const auto cookie =
        xcb_query_extension(connection, static_cast<std::uint16_t>(extension.size()), extension.data());
    const XcbAnswer<xcb_query_extension_reply_t> answer(xcb_query_extension_reply(connection, cookie, nullptr));
    return answer && answer->present != 0 ? answer->first_event : std::uint8_t{0};
}

/// The press of a hotkey, without its characters.
KeyEvent keyEventOf(const KeyCombination& combination, bool capsLock) {
    constexpr std::array<std::pair<std::uint32_t, std::int64_t>, 4> table{{
        {carbonModifier::shiftKey, modifierFlag::shift},
        {carbonModifier::controlKey, modifierFlag::control},
        {carbonModifier::optionKey, modifierFlag::option},
        {carbonModifier::cmdKey, modifierFlag::command},
    }};
    const std::uint16_t key = virtualKeyOf(combination.key);
    std::int64_t flags = ownFlagsOf(key) | (capsLock ? keyFlag::capsLock : 0);
    for (const auto& [modifier, flag] : table) {
        if ((combination.carbonModifiers & modifier) != 0)
            flags |= flag;
    }
    return {.keyCode = key, .modifierFlags = flags};
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

class X11HotkeyService::Registration : public HotkeyRegistration {
public:
    explicit Registration(X11HotkeyService& service) : service_(service), mine_(service.hotkeys_.begin()) {}
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() override {
        const Hotkey mine = *mine_;
        service_.hotkeys_.erase(mine_);
        if (mine.grabbed && !service_.isGrabbed(mine.combination))
            service_.grabs_.ungrab(mine.combination);
    }

private:
    X11HotkeyService& service_;
    const std::list<Hotkey>::iterator mine_;
};

X11HotkeyService::X11HotkeyService(xcb_connection_t* connection)
    : grabs_(connection), characters_(connection), keyboardExtensionEvent_(firstEventOf(connection, "XKEYBOARD")) {}

std::unique_ptr<HotkeyRegistration> X11HotkeyService::registerHotkey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                                     HotkeyIdentifier identifier) {
    const std::optional<std::uint8_t> key = physicalKeyOf(keyCode);
    if (!key) {
        logRefusal(keyCode, modifiers, "this keyboard has no such key");
        return nullptr;
    }
    if (hotkeys_.empty())
        static_cast<void>(grabs_.readLayout());  // changes are not followed while there is nothing to keep grabbed
    const KeyCombination combination{*key, modifiers};
    // Equal hotkeys share a grab: the server would let one program grab it twice and release both at the first
    // ungrab.
    if (!isGrabbed(combination) && !grabs_.grab(combination)) {
        logRefusal(keyCode, modifiers, "another program holds it");
        return nullptr;
    }
    hotkeys_.push_front({combination, identifier});
    return std::make_unique<Registration>(*this);
}

bool X11HotkeyService::isGrabbed(const KeyCombination& combination) const {
    return std::ranges::any_of(hotkeys_,
                               [&](const Hotkey& each) { return each.grabbed && each.combination == combination; });
}

bool X11HotkeyService::handleEvent(const xcb_generic_event_t& event) {
    const std::uint8_t type = typeOf(event);
    if (const auto* const press = eventAs<xcb_key_press_event_t>(event))
        keyPressed(*press);
    else if (const auto* const release = eventAs<xcb_key_release_event_t>(event, XCB_KEY_RELEASE))
        repeats_.noteRelease(release->detail, release->time);
    else if (type == XCB_MAPPING_NOTIFY ||
             (type == keyboardExtensionEvent_ && (event.pad0 == newKeyboardNotify || event.pad0 == mapNotify)))
        scheduleMappingCheck();
    return false;  // Qt ignores keys of the root window but for their time
}

void X11HotkeyService::keyPressed(const xcb_key_press_event_t& event) {
    if (event.event != grabs_.root())
        return;
    const ModifierLayout& layout = grabs_.layout();
    const auto locks = static_cast<std::uint16_t>(x11Modifier::lock | layout.numLock | layout.scrollLock);
    const auto modifiers = static_cast<std::uint16_t>(event.state & x11Modifier::all & ~locks);
    const auto pressed = std::ranges::find_if(hotkeys_, [&](const Hotkey& hotkey) {
        return hotkey.combination.key == event.detail &&
               x11ModifiersOf(hotkey.combination.carbonModifiers, layout) == modifiers;
    });
    if (pressed == hotkeys_.end() || !repeats_.isNewPress(event.detail, event.time))
        return;
    KeyEvent keyEvent = keyEventOf(pressed->combination, (event.state & x11Modifier::lock) != 0);
    keyEvent.capitals = characters_(event.detail, event.state);
    later([this, keyEvent = std::move(keyEvent), identifier = pressed->identifier] { fire(keyEvent, identifier); });
}

void X11HotkeyService::fire(const KeyEvent& event, HotkeyIdentifier identifier) {
    if (ownWindowsTake_ && ownWindowsTake_(event))
        return;
    if (handler_)
        handler_(&identifier);
}

/// Changes of the keyboard come in bursts, of which only the end matters.
void X11HotkeyService::scheduleMappingCheck() {
    if (mappingCheckScheduled_ || hotkeys_.empty())
        return;
    mappingCheckScheduled_ = true;
    later([this] { checkMapping(); });
}

void X11HotkeyService::checkMapping() {
    mappingCheckScheduled_ = false;
    const X11KeyGrabs before = grabs_;
    if (!grabs_.readLayout())
        return;
    for (const Hotkey& hotkey : hotkeys_)
        before.ungrab(hotkey.combination);
    for (Hotkey& hotkey : hotkeys_) {
        hotkey.grabbed = grabs_.grab(hotkey.combination);
        if (!hotkey.grabbed)
            logRefusal(virtualKeyOf(hotkey.combination.key), hotkey.combination.carbonModifiers,
                       "another program holds it under the new keyboard map");
    }
}

}  // namespace stowpocket
