// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <xcb/xcb.h>

namespace stowpocket {

struct FreeXcbAnswer {
    void operator()(void* answer) const { std::free(answer); }
};
/// An answer, an error or an event of the X server, which xcb wants freed this way.
template <class Answer>
using XcbAnswer = std::unique_ptr<Answer, FreeXcbAnswer>;

/// The number of each type of event. Those of extensions get theirs when the server starts.
template <class Event>
inline constexpr std::uint8_t x11EventType = 0;
template <>
inline constexpr std::uint8_t x11EventType<xcb_key_press_event_t> = XCB_KEY_PRESS;
template <>
inline constexpr std::uint8_t x11EventType<xcb_destroy_notify_event_t> = XCB_DESTROY_NOTIFY;
template <>
inline constexpr std::uint8_t x11EventType<xcb_map_notify_event_t> = XCB_MAP_NOTIFY;
template <>
inline constexpr std::uint8_t x11EventType<xcb_reparent_notify_event_t> = XCB_REPARENT_NOTIFY;
template <>
inline constexpr std::uint8_t x11EventType<xcb_configure_notify_event_t> = XCB_CONFIGURE_NOTIFY;
template <>
inline constexpr std::uint8_t x11EventType<xcb_property_notify_event_t> = XCB_PROPERTY_NOTIFY;
template <>
inline constexpr std::uint8_t x11EventType<xcb_selection_clear_event_t> = XCB_SELECTION_CLEAR;
template <>
inline constexpr std::uint8_t x11EventType<xcb_selection_request_event_t> = XCB_SELECTION_REQUEST;
template <>
inline constexpr std::uint8_t x11EventType<xcb_selection_notify_event_t> = XCB_SELECTION_NOTIFY;
template <>
inline constexpr std::uint8_t x11EventType<xcb_client_message_event_t> = XCB_CLIENT_MESSAGE;
template <>
inline constexpr std::uint8_t x11EventType<xcb_mapping_notify_event_t> = XCB_MAPPING_NOTIFY;
template <>
inline constexpr std::uint8_t x11EventType<xcb_ge_generic_event_t> = XCB_GE_GENERIC;

/// The type of an event, whether the server or another program sent it.
[[nodiscard]] inline std::uint8_t typeOf(const xcb_generic_event_t& event) {
    return static_cast<std::uint8_t>(event.response_type & 0x7F);
}

/// Returns null when the event has another type. `type` is needed where two types share a structure, as press and
/// release of a key, and for extensions. The type 0 matches nothing.
template <class Event>
[[nodiscard]] const Event* eventAs(const xcb_generic_event_t& event, std::uint8_t type = x11EventType<Event>) {
    return type != 0 && typeOf(event) == type ? reinterpret_cast<const Event*>(&event) : nullptr;
}

/// Sends an event to whoever selected `mask` on `destination`. With an empty mask it goes to the program of that
/// window.
template <class Event>
void sendEvent(xcb_connection_t* connection, xcb_window_t destination, std::uint32_t mask, const Event& event) {
    // The server reads 32 bytes of every event, though some structures are shorter.
    std::array<char, 32> bytes{};
    static_assert(sizeof event <= bytes.size());
    std::memcpy(bytes.data(), &event, sizeof event);
    xcb_send_event(connection, 0, destination, mask, bytes.data());
    xcb_flush(connection);
}

/// Tells who asked for a selection that the data is in `property`, or with 0 that there is none.
void answerSelectionRequest(xcb_connection_t* connection, const xcb_selection_request_event_t& request,
                            xcb_atom_t property);

/// Sees each event on Qt's connection to the X server before Qt does. Installed from construction to destruction.
/// Main thread.
class X11EventFilter : private QAbstractNativeEventFilter {
public:
    X11EventFilter(const X11EventFilter&) = delete;
    X11EventFilter& operator=(const X11EventFilter&) = delete;
    ~X11EventFilter() override = default;

protected:
    X11EventFilter();

    /// Returns true to keep the event from Qt. Must not ask the server anything, because Qt could handle the next
    /// event meanwhile.
    virtual bool handleEvent(const xcb_generic_event_t& event) = 0;
    /// Runs `work` when Qt has handled the event, or after `delay`. Never runs it after this is destroyed.
    void later(std::function<void()> work) { later(std::chrono::milliseconds::zero(), std::move(work)); }
    void later(std::chrono::milliseconds delay, std::function<void()> work);

private:
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) final;

    QObject context_;
};

}  // namespace stowpocket
