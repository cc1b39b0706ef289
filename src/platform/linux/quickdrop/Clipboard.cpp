// SPDX-License-Identifier: MIT
#include "platform/linux/quickdrop/Clipboard.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>
#include <xcb/xfixes.h>

namespace stowpocket {
namespace {

/// Targets that are a request to the owner rather than a format of its data (ICCCM 2.6).
constexpr std::array<std::string_view, 7> questions{"TARGETS", "MULTIPLE",         "TIMESTAMP",      "SAVE_TARGETS",
                                                    "DELETE",  "INSERT_SELECTION", "INSERT_PROPERTY"};
constexpr std::string_view imagePrefix = "image/";
constexpr std::string_view bestImage = "image/png";
/// A picture format with an unusual name, which GTK offers beside the others.
constexpr std::string_view iconImage = "application/ico";

bool isImage(std::string_view target) {
    return target.starts_with(imagePrefix) || target == iconImage;
}

bool contains(const auto& range, std::string_view value) {
    return std::ranges::find(range, value) != range.end();
}

/// The first version that reports new owners of a selection.
constexpr std::uint32_t fixesVersion = 5;
/// A list of targets is a few dozen atoms.
constexpr std::size_t longestTargetList = 4096;

/// The header of a request that changes a property fits into this.
constexpr std::size_t requestHead = 64;

void setProperty(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t name, xcb_atom_t type,
                 std::uint8_t format, std::size_t byteCount, const void* bytes) {
    const auto units = static_cast<std::uint32_t>(byteCount / (format / 8u));
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, name, type, format, units, bytes);
}

}  // namespace

std::vector<std::string> targetsToKeep(const std::vector<std::string>& offered) {
    const bool hasBestImage = contains(offered, bestImage);
    std::vector<std::string> kept;
    for (const std::string& target : offered) {
        const bool isWorseImage = hasBestImage && isImage(target) && target != bestImage;
        if (!contains(questions, target) && !isWorseImage && !contains(kept, target))
            kept.push_back(target);
    }
    return kept;
}

SnapshotBuilder::SnapshotBuilder(const std::optional<std::vector<std::string>>& offered, std::size_t budget)
    : targets_(targetsToKeep(offered.value_or(std::vector<std::string>()))), budget_(budget) {
    snapshot_.isComplete = !targets_.empty();
}

std::optional<std::string> SnapshotBuilder::wanted() const {
    return snapshot_.isComplete && next_ < targets_.size() ? std::optional(targets_.at(next_)) : std::nullopt;
}

void SnapshotBuilder::take(ClipboardAnswer answer) {
    ++next_;
    if (answer.failure == SelectionFailure::refused)
        return;
    snapshot_.isComplete = !answer.failure && answer.item.bytes.size() <= budget_;
    if (!snapshot_.isComplete)
        return;
    budget_ -= answer.item.bytes.size();
    snapshot_.items.push_back(std::move(answer.item));
}

ClipboardSnapshot SnapshotBuilder::finished() && {
    const bool isDone = !wanted() && !snapshot_.items.empty();
    snapshot_.isComplete = snapshot_.isComplete && isDone;
    if (!snapshot_.isComplete)
        snapshot_.items.clear();
    return std::move(snapshot_);
}

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
    const auto* const change = eventAs<xcb_xfixes_selection_notify_event_t>(event, fixesEvent_);
    return change == nullptr ? static_cast<xcb_window_t>(XCB_WINDOW_NONE) : change->owner;
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

ClipboardOwner::ClipboardOwner(XcbSession& session) : session_(session), clipboard_(session.atom("CLIPBOARD")) {}

std::size_t ClipboardOwner::mostBytes() const {
    return std::size_t{xcb_get_maximum_request_length(session_.raw())} * 4 - requestHead;
}

void ClipboardOwner::offer(std::vector<ClipboardItem> items) {
    since_ = session_.serverTime();
    xcb_set_selection_owner(session_.raw(), session_.window(), clipboard_, since_);
    if (items.empty())
        xcb_set_selection_owner(session_.raw(), XCB_WINDOW_NONE, clipboard_, since_);
    items_ = std::move(items);
    xcb_flush(session_.raw());
}

void ClipboardOwner::handleEvent(const xcb_generic_event_t& event) {
    if (const auto* const request = eventAs<xcb_selection_request_event_t>(event))
        answer(*request);
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
        handOver(request.requestor, property, request.target) ? property : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    sendEvent(session_.raw(), request.requestor, XCB_EVENT_MASK_NO_EVENT, notify);
}

bool ClipboardOwner::handOver(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t target) {
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
