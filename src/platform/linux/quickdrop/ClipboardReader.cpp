// SPDX-License-Identifier: MIT
#include "platform/linux/quickdrop/ClipboardReader.h"

#include <xcb/xfixes.h>

namespace stowpocket {
namespace {

/// The version in which selections can be watched.
constexpr std::uint32_t fixesVersion = 5;
/// A list of targets is a few dozen atoms.
constexpr std::size_t longestTargetList = 4096;

}  // namespace

ClipboardReader::ClipboardReader(XcbSession& session) : session_(session), reader_(session, "CLIPBOARD") {
    const xcb_query_extension_reply_t* const fixes = xcb_get_extension_data(session_.raw(), &xcb_xfixes_id);
    if (fixes == nullptr || fixes->present == 0)
        return;
    const auto cookie = xcb_xfixes_query_version(session_.raw(), fixesVersion, 0);
    const XcbAnswer<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(session_.raw(), cookie, nullptr));
    if (version)
        fixesEvent_ = static_cast<std::uint8_t>(fixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
}

void ClipboardReader::watchOwner(bool isWatched) {
    if (fixesEvent_ == 0)
        return;
    xcb_xfixes_select_selection_input(session_.raw(), session_.window(), selection(),
                                      isWatched ? XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER : 0);
    xcb_flush(session_.raw());
}

xcb_window_t ClipboardReader::newOwnerIn(const xcb_generic_event_t& event) const {
    if (fixesEvent_ == 0 || typeOf(event) != fixesEvent_)
        return XCB_WINDOW_NONE;
    return reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event).owner;
}

std::optional<std::vector<std::string>> ClipboardReader::targets(Deadline deadline) {
    X11Property list;
    const auto answer = reader_.read("TARGETS", XCB_CURRENT_TIME, {deadline}, longestTargetList, list.bytes);
    if (answer.failure)
        return std::nullopt;
    list.format = answer.format;
    return session_.namesOf(list.words());
}

ClipboardAnswer ClipboardReader::read(const std::string& target, Deadline deadline, std::size_t mostBytes) {
    std::vector<std::byte> bytes;
    const auto answer = reader_.read(target, XCB_CURRENT_TIME, {deadline}, mostBytes, bytes);
    if (answer.failure)
        return {answer.failure, {}};
    const std::vector<std::string> type = session_.namesOf({answer.type});
    if (type.empty() || answer.format == 0)
        return {SelectionFailure::refused, {}};
    return {std::nullopt, {target, type.front(), answer.format, std::move(bytes)}};
}

}  // namespace stowpocket
