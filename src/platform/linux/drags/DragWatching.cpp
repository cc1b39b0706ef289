// SPDX-License-Identifier: MIT
#include "platform/linux/drags/DragWatching.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

/// Nobody announces the end of a drag, and Qt sources keep the selection, so the buttons are watched.
constexpr auto buttonInterval = 100ms;
/// Drops arrive a few milliseconds after the release of the button.
constexpr auto settlingTime = 300ms;
/// Enough to bring a file to the pocket.
constexpr auto longestUnseen = 10s;
/// Who has been over one of our windows may come back.
constexpr auto timeAfterLeaving = 3s;
constexpr auto askingInterval = 1s;

}  // namespace

DragOffer judgeDrag(std::optional<std::span<const std::uint32_t>> targets, std::span<const std::uint32_t> typeList,
                    std::uint32_t uriList, std::uint32_t directSave) {
    if (!targets && typeList.empty())
        return DragOffer::unknown;
    const std::span<const std::uint32_t> types = targets.value_or(typeList);
    const auto has = [&](std::uint32_t type) { return std::ranges::find(types, type) != types.end(); };
    if (has(uriList))
        return DragOffer::files;
    return has(directSave) ? DragOffer::promise : DragOffer::nothing;
}

DragWatching::Step DragWatching::ownerChanged(Owner owner, bool isButtonHeld) {
    if (owner == Owner::another && isButtonHeld) {
        state_ = State::asking;
        ending_ = DragEnd::released;
        return Step::ask;
    }
    if (owner != Owner::another)
        ending_ = DragEnd::sourceGone;
    if (state_ == State::resting && std::exchange(mayStillDrop_, false)) {
        ending_ = DragEnd::sourceGone;
        return Step::end;
    }
    if (state_ != State::asking && state_ != State::dragging)
        return Step::none;
    state_ = State::settling;
    return Step::settle;
}

DragWatching::Step DragWatching::answered(DragOffer offer) {
    if (state_ != State::asking)
        return Step::none;
    if (offer == DragOffer::nothing)
        return finishDrag();
    state_ = State::dragging;
    // Receivers may have seen the drop of an earlier drag, and this may be another one.
    isAnnounced_ = true;
    return Step::announce;
}

DragWatching::Step DragWatching::buttonsSeen(bool isButtonHeld) {
    if (isButtonHeld || (state_ != State::asking && state_ != State::dragging))
        return Step::none;
    state_ = State::settling;
    return Step::settle;
}

DragWatching::Step DragWatching::settled() {
    return state_ == State::settling ? finishDrag() : Step::none;
}

DragWatching::Step DragWatching::finishDrag() {
    state_ = State::resting;
    if (isAnnounced_)
        mayStillDrop_ = ending_ == DragEnd::released;
    return std::exchange(isAnnounced_, false) ? Step::end : Step::rest;
}

void WaylandDrag::begin(Time now, Pointer pointer, Types types) {
    isOn_ = true;
    pointer_ = pointer;
    types_ = types;
    lastTime_ = now + longestUnseen;
    answeredAt_ = now;
}

void WaylandDrag::answered(bool hasTypes, Time now) {
    if (types_ == Types::toldAtTimes)
        return;
    answeredAt_ = now;
    lastTime_ = std::max(lastTime_, now + longestUnseen);
    if (!hasTypes)
        end();
}

void WaylandDrag::seen(DragSign sign, Time now) {
    if (sign == DragSign::dropped)
        end();
    else if (sign == DragSign::entered)
        lastTime_ = Time::max();
    else
        lastTime_ = now + (types_ == Types::toldThroughout ? longestUnseen : timeAfterLeaving);
}

bool WaylandDrag::isOn(Time now, Pointer pointer) const {
    return isOn_ && pointer == pointer_ && now < lastTime_;
}

bool WaylandDrag::isWorthAsking(Time now) const {
    return isOn_ && types_ == Types::toldThroughout && now >= answeredAt_ + askingInterval;
}

X11DragWatch::X11DragWatch(const X11Connection& connection) : connection_(connection), requestor_(connection) {
    xcb_connection_t* const server = connection_.raw();
    const xcb_query_extension_reply_t* const extension = xcb_get_extension_data(server, &xcb_xfixes_id);
    if (extension == nullptr || extension->present == 0) {
        qCWarning(dragsLog, "the X server does not tell of drags; drop files onto the icon or the shelf itself");
        return;
    }
    ownerEvent_ = static_cast<std::uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    constexpr std::uint32_t version = 4;
    xcb_discard_reply(server, xcb_xfixes_query_version(server, version, 0).sequence);
    xcb_xfixes_select_selection_input(server, requestor_.window(), connection_.atom(X11Atom::dragSelection),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    xcb_flush(server);
    settling_.setSingleShot(true);
    QObject::connect(&buttons_, &QTimer::timeout, [this] { lookAtButtons(); });
    QObject::connect(&settling_, &QTimer::timeout, [this] { takeStep(watching_.settled()); });
}

bool X11DragWatch::handleEvent(const xcb_generic_event_t& event) {
    if (const auto* const change = eventAs<xcb_xfixes_selection_notify_event_t>(event, ownerEvent_)) {
        if (change->window == requestor_.window())
            later([this, owner = change->owner, time = change->selection_timestamp] { ownerChanged(owner, time); });
    } else if (const auto* const answer = eventAs<xcb_selection_notify_event_t>(event)) {
        if (answer->requestor == requestor_.window())
            later([this, answer = *answer] { answered(answer); });
    } else if (const auto* const message = eventAs<xcb_client_message_event_t>(event)) {
        if (isWaylandDrag_)
            handleMessage(*message);
    }
    return false;
}

/// The compositor speaks to our windows as an X11 source would.
void X11DragWatch::handleMessage(const xcb_client_message_event_t& message) {
    if (message.type == connection_.atom(X11Atom::dragEnter)) {
        note(DragSign::entered);
    } else if (message.type == connection_.atom(X11Atom::dragLeave)) {
        note(DragSign::left);
    } else if (message.type == connection_.atom(X11Atom::dragDrop)) {
        note(DragSign::dropped);
        waylandDropped.emit(message.window);
    }
}

void X11DragWatch::note(DragSign sign) {
    if (sign == DragSign::entered && !buttons_.isActive()) {
        beginWaylandDrag();
        takeStep(watching_.ownerChanged(DragWatching::Owner::another, true));
    }
    waylandDrag_.seen(sign, now());
}

void X11DragWatch::beginWaylandDrag() {
    isWaylandDrag_ = true;
    waylandDrag_.begin(now(), pointer(),
                       connection_.windowManagerName() == "GNOME Shell" ? WaylandDrag::Types::toldThroughout
                                                                        : WaylandDrag::Types::toldAtTimes);
}

void X11DragWatch::ownerChanged(xcb_window_t owner, xcb_timestamp_t time) {
    using Owner = DragWatching::Owner;
    Owner who = Owner::another;
    if (owner == x11None)
        who = Owner::nobody;
    else if (connection_.isOwn(owner))
        who = Owner::ourselves;
    waylandDrag_.end();
    if (who == Owner::another)
        isWaylandDrag_ = connection_.isWindowManagers(owner);
    if (who == Owner::another && isWaylandDrag_)
        beginWaylandDrag();
    takeStep(watching_.ownerChanged(who, isButtonHeld()), time);
}

bool X11DragWatch::isButtonHeld() const {
    return waylandDrag_.isOn(now(), pointer()) || connection_.isButtonHeld();
}

bool X11DragWatch::isWaylandDragOn() const {
    return buttons_.isActive() && waylandDrag_.isOn(now(), pointer());
}

WaylandDrag::Pointer X11DragWatch::pointer() const {
    xcb_connection_t* const server = connection_.raw();
    const XcbAnswer<xcb_query_pointer_reply_t> answer(
        xcb_query_pointer_reply(server, xcb_query_pointer(server, connection_.root()), nullptr));
    return answer ? WaylandDrag::Pointer{answer->root_x, answer->root_y} : WaylandDrag::Pointer{};
}

WaylandDrag::Time X11DragWatch::now() const {
    return std::chrono::duration_cast<WaylandDrag::Time>(std::chrono::steady_clock::now().time_since_epoch());
}

void X11DragWatch::lookAtButtons() {
    if (isWaylandDrag_ && waylandDrag_.isWorthAsking(now()))
        static_cast<void>(requestor_.ask(X11Atom::dragSelection, X11Atom::targets, XCB_CURRENT_TIME));
    takeStep(watching_.buttonsSeen(isButtonHeld()));
}

void X11DragWatch::answered(const xcb_selection_notify_event_t& answer) {
    const auto targets = requestor_.takeValues(answer);
    if (isWaylandDrag_)
        waylandDrag_.answered(targets.has_value(), now());
    std::vector<std::uint32_t> typeList;
    if (!targets)
        typeList = connection_.property(connection_.selectionOwner(X11Atom::dragSelection), X11Atom::dragTypeList);
    takeStep(watching_.answered(
        judgeDrag(targets, typeList, connection_.atom(X11Atom::uriList), connection_.atom(X11Atom::directSave))));
}

void X11DragWatch::takeStep(DragWatching::Step step, xcb_timestamp_t time) {
    using Step = DragWatching::Step;
    if (step == Step::none)
        return;
    if (step == Step::ask) {
        static_cast<void>(requestor_.ask(X11Atom::dragSelection, X11Atom::targets, time));
        settling_.stop();
        buttons_.start(buttonInterval);
        return;
    }
    if (step == Step::announce)
        return began.emit(isWaylandDrag_ ? DragOrigin::wayland : DragOrigin::x11);
    buttons_.stop();
    if (step == Step::settle)
        return settling_.start(settlingTime);
    if (step == Step::end)
        ended.emit(watching_.ending());
    if (std::exchange(isWaylandDrag_, false))
        waylandDragEnded.emit();
}

}  // namespace stowpocket
