// SPDX-License-Identifier: MIT
#include "platform/linux/x11/XcbSession.h"

#include <algorithm>
#include <cstring>
#include <poll.h>

namespace stowpocket {
namespace {

constexpr std::size_t wordSize = sizeof(std::uint32_t);
constexpr std::chrono::milliseconds serverTimeLimit(250);

}  // namespace

std::vector<std::uint32_t> X11Property::words() const {
    std::vector<std::uint32_t> units(format == 32 ? bytes.size() / wordSize : 0);
    if (!units.empty())
        std::memcpy(units.data(), bytes.data(), units.size() * wordSize);
    return units;
}

std::unique_ptr<XcbSession> XcbSession::open() {
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<XcbSession>(new XcbSession(connection));
}

XcbSession::XcbSession(xcb_connection_t* connection)
    : connection_(connection),
      root_(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root),
      window_(newWindow()) {}

XcbSession::~XcbSession() {
    xcb_disconnect(connection_);
}

xcb_window_t XcbSession::newWindow() const {
    const xcb_window_t window = xcb_generate_id(connection_);
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, root_, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    return window;
}

xcb_atom_t XcbSession::atom(const std::string& name) {
    const auto known = atoms_.find(name);
    if (known != atoms_.end())
        return known->second;
    const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const XcbAnswer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
    return reply ? atoms_.emplace(name, reply->atom).first->second : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

std::vector<std::string> XcbSession::namesOf(const std::vector<xcb_atom_t>& atoms) const {
    std::vector<xcb_get_atom_name_cookie_t> cookies;
    cookies.reserve(atoms.size());
    for (const xcb_atom_t atom : atoms)
        cookies.push_back(xcb_get_atom_name(connection_, atom));
    std::vector<std::string> names;
    for (const xcb_get_atom_name_cookie_t cookie : cookies) {
        const XcbAnswer<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(connection_, cookie, nullptr));
        if (reply)
            names.emplace_back(xcb_get_atom_name_name(reply.get()), reply->name_len);
    }
    return names;
}

X11Property XcbSession::property(xcb_window_t window, xcb_atom_t name, std::size_t mostBytes, bool thenDelete,
                                 std::size_t offset) const {
    const auto cookie = xcb_get_property(connection_, thenDelete ? 1 : 0, window, name, XCB_GET_PROPERTY_TYPE_ANY,
                                         static_cast<std::uint32_t>(offset / wordSize),
                                         static_cast<std::uint32_t>((mostBytes + wordSize - 1) / wordSize));
    const XcbAnswer<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_, cookie, nullptr));
    if (!reply)
        return {};
    const auto* const value = static_cast<const std::byte*>(xcb_get_property_value(reply.get()));
    return {reply->type,
            reply->format,
            {value, value + xcb_get_property_value_length(reply.get())},
            reply->bytes_after > 0};
}

xcb_timestamp_t XcbSession::serverTime() {
    const xcb_atom_t property = atom("_STOWPOCKET_TIME");
    xcb_change_property(connection_, XCB_PROP_MODE_APPEND, window_, property, XCB_ATOM_INTEGER, 32, 0, nullptr);
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    static_cast<void>(
        await(std::chrono::steady_clock::now() + serverTimeLimit, [&](const xcb_generic_event_t& candidate) {
            const auto* const change = eventAs<xcb_property_notify_event_t>(candidate);
            if (change == nullptr || change->atom != property)
                return false;
            time = change->time;
            return true;
        }));
    return time;
}

void XcbSession::handleEvents() {
    while (const Event event = next(Deadline::min()))
        handler_(*event);
}

XcbSession::Event XcbSession::await(Deadline deadline,
                                    const std::function<bool(const xcb_generic_event_t&)>& isWanted) {
    while (Event event = next(deadline)) {
        if (isWanted(*event))
            return event;
        handler_(*event);
    }
    return nullptr;
}

XcbSession::Event XcbSession::next(Deadline deadline) const {
    xcb_flush(connection_);
    for (;;) {
        if (Event event{xcb_poll_for_event(connection_)})
            return event;
        const auto now = std::chrono::steady_clock::now();
        if (deadline <= now || xcb_connection_has_error(connection_) != 0)
            return nullptr;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - now);
        pollfd readable{xcb_get_file_descriptor(connection_), POLLIN, 0};
        poll(&readable, 1, static_cast<int>(left.count()));
    }
}

}  // namespace stowpocket
