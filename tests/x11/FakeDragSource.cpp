// SPDX-License-Identifier: MIT
#include "FakeDragSource.h"

#include <xcb/xtest.h>

namespace stowpocket {

FakeDragSource::FakeDragSource(std::vector<std::string> types, bool refuses)
    : types_(std::move(types)), refuses_(refuses) {}

FakeDragSource::~FakeDragSource() {
    release();
}

std::vector<xcb_atom_t> FakeDragSource::typeAtoms() {
    std::vector<xcb_atom_t> atoms;
    for (const std::string& type : types_)
        atoms.push_back(session_->atom(type));
    return atoms;
}

void FakeDragSource::sync() {
    const auto cookie = xcb_get_input_focus(connection_);
    const XcbAnswer<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(connection_, cookie, nullptr));
}

void FakeDragSource::press(std::int16_t x, std::int16_t y) {
    xcb_test_fake_input(connection_, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, root_, x, y, 0);
    xcb_test_fake_input(connection_, XCB_BUTTON_PRESS, 1, XCB_CURRENT_TIME, root_, 0, 0, 0);
    sync();
}

void FakeDragSource::release() {
    xcb_test_fake_input(connection_, XCB_BUTTON_RELEASE, 1, XCB_CURRENT_TIME, root_, 0, 0, 0);
    sync();
}

void FakeDragSource::begin() {
    const std::vector<xcb_atom_t> atoms = typeAtoms();
    if (refuses_)
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, session_->atom("XdndTypeList"),
                            XCB_ATOM_ATOM, 32, static_cast<std::uint32_t>(atoms.size()), atoms.data());
    xcb_set_selection_owner(connection_, window_, session_->atom("XdndSelection"), XCB_CURRENT_TIME);
    sync();
}

void FakeDragSource::propose(const std::string& name) {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, session_->atom("XdndDirectSave0"),
                        session_->atom("text/plain"), 8, static_cast<std::uint32_t>(name.size()), name.data());
    sync();
}

void FakeDragSource::replyWith(std::string reply, std::function<void(const std::string&)> onSave) {
    reply_ = std::move(reply);
    onSave_ = std::move(onSave);
}

void FakeDragSource::send(xcb_window_t window, const std::string& type, std::array<std::uint32_t, 5> data) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = session_->atom(type);
    std::copy(data.begin(), data.end(), std::begin(event.data.data32));
    xcb_send_event(connection_, 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&event));
    xcb_flush(connection_);
}

void FakeDragSource::enter(xcb_window_t window, std::int16_t x, std::int16_t y) {
    constexpr std::uint32_t version = 5;
    std::vector<xcb_atom_t> atoms = typeAtoms();
    atoms.resize(3);
    send(window, "XdndEnter", {window_, version << 24U, atoms[0], atoms[1], atoms[2]});
    const auto place = static_cast<std::uint32_t>(x) << 16U | static_cast<std::uint32_t>(y);
    send(window, "XdndPosition", {window_, 0, place, XCB_CURRENT_TIME, session_->atom("XdndActionCopy")});
}

void FakeDragSource::drop(xcb_window_t window, xcb_timestamp_t time) {
    send(window, "XdndDrop", {window_, 0, time, 0, 0});
}

void FakeDragSource::vanish() {
    xcb_destroy_window(connection_, window_);
    sync();
}

void FakeDragSource::work() {
    while (const XcbSession::Event event{xcb_poll_for_event(connection_)}) {
        if (typeOf(*event) == XCB_SELECTION_REQUEST)
            answer(reinterpret_cast<const xcb_selection_request_event_t&>(*event));
    }
}

void FakeDragSource::answer(const xcb_selection_request_event_t& request) {
    const bool isSave = request.target == session_->atom("XdndDirectSave0");
    if (isSave && !save(request))
        return;
    xcb_selection_notify_event_t notify{};
    notify.response_type = XCB_SELECTION_NOTIFY;
    notify.time = request.time;
    notify.requestor = request.requestor;
    notify.selection = request.selection;
    notify.target = request.target;
    if (isSave || convert(request))
        notify.property = request.property;
    xcb_send_event(connection_, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&notify));
    xcb_flush(connection_);
}

bool FakeDragSource::convert(const xcb_selection_request_event_t& request) {
    if (request.target != session_->atom("TARGETS") || refuses_)
        return false;
    const std::vector<xcb_atom_t> atoms = typeAtoms();
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, request.requestor, request.property, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(atoms.size()), atoms.data());
    return true;
}

bool FakeDragSource::save(const xcb_selection_request_event_t& request) {
    wasSaveWanted_ = true;
    savedAt_ = request.time;
    const X11Property place = session_->property(window_, request.target, 4096);
    if (onSave_)
        onSave_({reinterpret_cast<const char*>(place.bytes.data()), place.bytes.size()});
    if (reply_.empty())
        return false;
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, request.requestor, request.property, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(reply_.size()), reply_.data());
    return true;
}

}  // namespace stowpocket
