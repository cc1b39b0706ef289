// SPDX-License-Identifier: MIT
#include "platform/linux/input/ClipboardReader.h"

#include <xcb/xfixes.h>

namespace stowpocket {
namespace {

/// The version in which selections can be watched.
constexpr std::uint32_t fixesVersion = 5;
/// A list of targets is a few dozen atoms.
constexpr std::size_t longestTargetList = 4096;

}  // namespace

ClipboardReader::ClipboardReader(XcbSession& session)
    : session_(session), clipboard_(session.atom("CLIPBOARD")), property_(session.atom("_STOWPOCKET_CLIPBOARD")) {
    const xcb_query_extension_reply_t* const fixes = xcb_get_extension_data(session_.raw(), &xcb_xfixes_id);
    if (fixes == nullptr || fixes->present == 0)
        return;
    const auto cookie = xcb_xfixes_query_version(session_.raw(), fixesVersion, 0);
    const XcbAnswer<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(session_.raw(), cookie, nullptr));
    if (version)
        fixesEvent_ = static_cast<std::uint8_t>(fixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
}

xcb_window_t ClipboardReader::owner() const {
    const XcbAnswer<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(session_.raw(), xcb_get_selection_owner(session_.raw(), clipboard_), nullptr));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

void ClipboardReader::watchOwner(bool isWatched) {
    if (fixesEvent_ == 0)
        return;
    xcb_xfixes_select_selection_input(session_.raw(), session_.window(), clipboard_,
                                      isWatched ? XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER : 0);
    xcb_flush(session_.raw());
}

xcb_window_t ClipboardReader::newOwnerIn(const xcb_generic_event_t& event) const {
    if (fixesEvent_ == 0 || typeOf(event) != fixesEvent_)
        return XCB_WINDOW_NONE;
    return reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event).owner;
}

std::optional<std::vector<std::string>> ClipboardReader::targets(Deadline deadline) {
    const Received received = convert("TARGETS", deadline, longestTargetList);
    if (received.failure)
        return std::nullopt;
    return session_.namesOf(received.property.words());
}

ClipboardAnswer ClipboardReader::read(const std::string& target, Deadline deadline, std::size_t mostBytes) {
    Received received = convert(target, deadline, mostBytes);
    if (received.failure)
        return {received.failure, {}};
    const std::vector<std::string> type = session_.namesOf({received.property.type});
    if (type.empty() || received.property.format == 0)
        return {ClipboardFailure::refused, {}};
    return {std::nullopt, {target, type.front(), received.property.format, std::move(received.property.bytes)}};
}

/// Each question has a window of its own: an answer that comes too late finds it gone, and cannot be taken for the
/// answer to the next.
ClipboardReader::Received ClipboardReader::convert(const std::string& target, Deadline deadline,
                                                   std::size_t mostBytes) {
    const xcb_window_t requestor = session_.newWindow();
    const xcb_atom_t targetAtom = session_.atom(target);
    xcb_convert_selection(session_.raw(), requestor, clipboard_, targetAtom, property_, XCB_CURRENT_TIME);
    Received received = receive(requestor, targetAtom, deadline, mostBytes);
    xcb_destroy_window(session_.raw(), requestor);
    return received;
}

ClipboardReader::Received ClipboardReader::receive(xcb_window_t requestor, xcb_atom_t target, Deadline deadline,
                                                   std::size_t mostBytes) {
    const XcbSession::Event event = session_.await(deadline, [&](const xcb_generic_event_t& candidate) {
        const auto& notify = reinterpret_cast<const xcb_selection_notify_event_t&>(candidate);
        return typeOf(candidate) == XCB_SELECTION_NOTIFY && notify.requestor == requestor && notify.target == target;
    });
    if (!event)
        return {ClipboardFailure::late, {}};
    if (reinterpret_cast<const xcb_selection_notify_event_t&>(*event).property == XCB_ATOM_NONE)
        return {ClipboardFailure::refused, {}};
    X11Property property = session_.property(requestor, property_, mostBytes);
    if (property.type == session_.atom("INCR"))
        return receiveInPieces(requestor, deadline, mostBytes);
    if (property.type == XCB_ATOM_NONE)
        return {ClipboardFailure::refused, {}};
    if (property.isCut)
        return {ClipboardFailure::tooBig, {}};
    return {std::nullopt, std::move(property)};
}

/// Deleting the property asks for the next piece (ICCCM 2.7.2); an empty piece is the end.
ClipboardReader::Received ClipboardReader::receiveInPieces(xcb_window_t requestor, Deadline deadline,
                                                           std::size_t mostBytes) {
    Received received;
    xcb_delete_property(session_.raw(), requestor, property_);
    for (;;) {
        const XcbSession::Event event = session_.await(deadline, [&](const xcb_generic_event_t& candidate) {
            const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(candidate);
            return typeOf(candidate) == XCB_PROPERTY_NOTIFY && notify.window == requestor &&
                   notify.atom == property_ && notify.state == XCB_PROPERTY_NEW_VALUE;
        });
        if (!event)
            return {ClipboardFailure::late, {}};
        const std::size_t left = mostBytes - received.property.bytes.size();
        X11Property piece = session_.property(requestor, property_, left, true);
        if (piece.isCut || piece.bytes.size() > left)
            return {ClipboardFailure::tooBig, {}};
        if (piece.bytes.empty())
            return received.property.bytes.empty() ? Received{std::nullopt, std::move(piece)} : received;
        received.property.type = piece.type;
        received.property.format = piece.format;
        received.property.bytes.insert(received.property.bytes.end(), piece.bytes.begin(), piece.bytes.end());
    }
}

}  // namespace stowpocket
