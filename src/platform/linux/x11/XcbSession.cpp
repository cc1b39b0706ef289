// SPDX-License-Identifier: MIT
#include "platform/linux/x11/XcbSession.h"

#include <algorithm>
#include <poll.h>

namespace stowpocket {
namespace {

constexpr std::chrono::milliseconds serverTimeLimit(250);

}  // namespace

std::unique_ptr<XcbSession> XcbSession::open() {
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<XcbSession>(new XcbSession(connection));
}

XcbSession::XcbSession(xcb_connection_t* connection) : X11Connection(connection), window_(newWindow()) {}

XcbSession::~XcbSession() {
    xcb_disconnect(raw());
}

xcb_window_t XcbSession::newWindow() const {
    const xcb_window_t window = xcb_generate_id(raw());
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(raw(), XCB_COPY_FROM_PARENT, window, root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    return window;
}

xcb_atom_t XcbSession::atom(const std::string& name) {
    const auto known = atoms_.find(name);
    if (known != atoms_.end())
        return known->second;
    const auto cookie = xcb_intern_atom(raw(), 0, static_cast<std::uint16_t>(name.size()), name.data());
    const XcbAnswer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(raw(), cookie, nullptr));
    return reply ? atoms_.emplace(name, reply->atom).first->second : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

std::vector<std::string> XcbSession::namesOf(const std::vector<xcb_atom_t>& atoms) const {
    std::vector<xcb_get_atom_name_cookie_t> cookies;
    cookies.reserve(atoms.size());
    for (const xcb_atom_t atom : atoms)
        cookies.push_back(xcb_get_atom_name(raw(), atom));
    std::vector<std::string> names;
    for (const xcb_get_atom_name_cookie_t cookie : cookies) {
        const XcbAnswer<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(raw(), cookie, nullptr));
        if (reply)
            names.emplace_back(xcb_get_atom_name_name(reply.get()), reply->name_len);
    }
    return names;
}

xcb_timestamp_t XcbSession::serverTime() {
    const xcb_atom_t property = atom(X11Atom::serverTime);
    xcb_change_property(raw(), XCB_PROP_MODE_APPEND, window_, property, XCB_ATOM_INTEGER, 32, 0, nullptr);
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
    xcb_flush(raw());
    for (;;) {
        if (Event event{xcb_poll_for_event(raw())})
            return event;
        const auto now = std::chrono::steady_clock::now();
        if (deadline <= now || xcb_connection_has_error(raw()) != 0)
            return nullptr;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - now);
        pollfd readable{xcb_get_file_descriptor(raw()), POLLIN, 0};
        poll(&readable, 1, static_cast<int>(left.count()));
    }
}

}  // namespace stowpocket
