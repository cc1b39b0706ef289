// SPDX-License-Identifier: MIT
#include "platform/linux/quickdrop/ClipboardOwner.h"

#include <algorithm>
#include <limits>

namespace stowpocket {
namespace {

/// Room for the head of a request that changes a property.
constexpr std::size_t requestHead = 64;

void setProperty(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t name, xcb_atom_t type,
                 std::uint8_t format, std::size_t byteCount, const void* bytes) {
    const auto units = static_cast<std::uint32_t>(byteCount / (format / 8u));
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, name, type, format, units, bytes);
}

}  // namespace

ClipboardOwner::ClipboardOwner(XcbSession& session) : session_(session), clipboard_(session.atom("CLIPBOARD")) {}

std::size_t ClipboardOwner::mostBytes() const {
    return std::size_t{xcb_get_maximum_request_length(session_.raw())} * 4 - requestHead;
}

void ClipboardOwner::put(std::vector<ClipboardItem> items) {
    since_ = session_.serverTime();
    xcb_set_selection_owner(session_.raw(), session_.window(), clipboard_, since_);
    if (items.empty())
        xcb_set_selection_owner(session_.raw(), XCB_WINDOW_NONE, clipboard_, since_);
    items_ = std::move(items);
    xcb_flush(session_.raw());
}

void ClipboardOwner::handle(const xcb_generic_event_t& event) {
    if (typeOf(event) == XCB_SELECTION_REQUEST)
        answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
    else if (typeOf(event) == XCB_SELECTION_CLEAR)
        std::vector<ClipboardItem>().swap(items_);
}

void ClipboardOwner::answer(const xcb_selection_request_event_t& request) {
    // Clients from before the ICCCM name no property (2.2).
    const xcb_atom_t property = request.property == XCB_ATOM_NONE ? request.target : request.property;
    xcb_selection_notify_event_t notify{};
    notify.response_type = XCB_SELECTION_NOTIFY;
    notify.time = request.time;
    notify.requestor = request.requestor;
    notify.selection = request.selection;
    notify.target = request.target;
    notify.property =
        hand(request.requestor, property, request.target) ? property : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    xcb_send_event(session_.raw(), 0, request.requestor, 0, reinterpret_cast<const char*>(&notify));
    xcb_flush(session_.raw());
}

bool ClipboardOwner::hand(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t target) {
    if (target == session_.atom("TARGETS")) {
        std::vector<xcb_atom_t> targets{target, session_.atom("TIMESTAMP")};
        for (const ClipboardItem& item : items_)
            targets.push_back(session_.atom(item.target));
        setProperty(session_.raw(), requestor, property, XCB_ATOM_ATOM, 32, targets.size() * sizeof(xcb_atom_t),
                    targets.data());
        return true;
    }
    if (target == session_.atom("TIMESTAMP")) {
        setProperty(session_.raw(), requestor, property, XCB_ATOM_INTEGER, 32, sizeof since_, &since_);
        return true;
    }
    const auto item = std::ranges::find_if(
        items_, [&](const ClipboardItem& candidate) { return session_.atom(candidate.target) == target; });
    if (item == items_.end())
        return false;
    setProperty(session_.raw(), requestor, property, session_.atom(item->type), item->format, item->bytes.size(),
                item->bytes.data());
    return true;
}

}  // namespace stowpocket
