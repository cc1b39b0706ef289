// SPDX-License-Identifier: MIT
#include "FakeDragSource.h"

#include "platform/linux/x11/X11Connection.h"

#include <xcb/xtest.h>

namespace stowpocket {

FakeDragSource::FakeDragSource(std::vector<std::string> types, bool refuses)
    : connection_(xcb_connect(nullptr, nullptr)), types_(std::move(types)), refuses_(refuses) {
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    window_ = xcb_generate_id(connection_);
    xcb_create_window(connection_, 0, window_, root_, -10, -10, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
}

FakeDragSource::~FakeDragSource() {
    release();
    xcb_disconnect(connection_);
}

xcb_atom_t FakeDragSource::atom(const std::string& name) {
    const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    return XcbReply<xcb_intern_atom_reply_t>(xcb_intern_atom_reply(connection_, cookie, nullptr))->atom;
}

std::vector<xcb_atom_t> FakeDragSource::typeAtoms() {
    std::vector<xcb_atom_t> atoms;
    for (const std::string& type : types_)
        atoms.push_back(atom(type));
    return atoms;
}

void FakeDragSource::sync() {
    const auto cookie = xcb_get_input_focus(connection_);
    const XcbReply<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(connection_, cookie, nullptr));
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
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, atom("XdndTypeList"), XCB_ATOM_ATOM, 32,
                            static_cast<std::uint32_t>(atoms.size()), atoms.data());
    xcb_set_selection_owner(connection_, window_, atom("XdndSelection"), XCB_CURRENT_TIME);
    sync();
}

void FakeDragSource::propose(const std::string& name) {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, atom("XdndDirectSave0"), atom("text/plain"), 8,
                        static_cast<std::uint32_t>(name.size()), name.data());
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
    event.type = atom(type);
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
    send(window, "XdndPosition", {window_, 0, place, XCB_CURRENT_TIME, atom("XdndActionCopy")});
}

void FakeDragSource::drop(xcb_window_t window, xcb_timestamp_t time) {
    send(window, "XdndDrop", {window_, 0, time, 0, 0});
}

void FakeDragSource::vanish() {
    xcb_destroy_window(connection_, window_);
    sync();
}

void FakeDragSource::work() {
    while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
        if ((event->response_type & 0x7F) == XCB_SELECTION_REQUEST)
            answer(reinterpret_cast<const xcb_selection_request_event_t&>(*event));
    }
}

void FakeDragSource::workUntilDropped() {
    const xcb_atom_t finished = atom("XdndFinished");
    while (const XcbReply<xcb_generic_event_t> event{xcb_wait_for_event(connection_)}) {
        const int type = event->response_type & 0x7F;
        if (type == XCB_SELECTION_REQUEST)
            answer(reinterpret_cast<const xcb_selection_request_event_t&>(*event));
        if (type == XCB_CLIENT_MESSAGE &&
            reinterpret_cast<const xcb_client_message_event_t&>(*event).type == finished)
            return;
    }
}

void FakeDragSource::answer(const xcb_selection_request_event_t& request) {
    const bool isSave = request.target == atom("XdndDirectSave0");
    if (isSave && !save(request))
        return;
    xcb_selection_notify_event_t notify{};
    notify.response_type = XCB_SELECTION_NOTIFY;
    notify.time = request.time;
    notify.requestor = request.requestor;
    notify.selection = request.selection;
    notify.target = request.target;
    notify.property = isSave || convert(request) ? request.property : x11None;
    xcb_send_event(connection_, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&notify));
    xcb_flush(connection_);
}

bool FakeDragSource::convert(const xcb_selection_request_event_t& request) {
    if (request.target == atom("TARGETS") && !refuses_) {
        const std::vector<xcb_atom_t> atoms = typeAtoms();
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, request.requestor, request.property, XCB_ATOM_ATOM,
                            32, static_cast<std::uint32_t>(atoms.size()), atoms.data());
        return true;
    }
    if (request.target != atom("text/uri-list"))
        return false;
    constexpr std::string_view files = "file:///dragged\r\n";
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, request.requestor, request.property, request.target, 8,
                        files.size(), files.data());
    return true;
}

bool FakeDragSource::save(const xcb_selection_request_event_t& request) {
    wasSaveWanted_ = true;
    savedAt_ = request.time;
    const auto cookie = xcb_get_property(connection_, 0, window_, request.target, XCB_ATOM_ANY, 0, 1024);
    const XcbReply<xcb_get_property_reply_t> place(xcb_get_property_reply(connection_, cookie, nullptr));
    if (onSave_)
        onSave_({static_cast<const char*>(xcb_get_property_value(place.get())), place->value_len});
    if (reply_.empty())
        return false;
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, request.requestor, request.property, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(reply_.size()), reply_.data());
    return true;
}

}  // namespace stowpocket
