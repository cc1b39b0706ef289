// SPDX-License-Identifier: MIT
#include "platform/linux/drags/X11Requestor.h"

namespace stowpocket {

Q_LOGGING_CATEGORY(dragsLog, "stowpocket.drags")

X11Requestor::X11Requestor(const X11Connection& connection)
    : connection_(connection), window_(xcb_generate_id(connection.raw())) {
    xcb_create_window(connection_.raw(), 0, window_, connection_.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
}

X11Requestor::~X11Requestor() {
    xcb_destroy_window(connection_.raw(), window_);
    xcb_flush(connection_.raw());
}

unsigned X11Requestor::ask(X11Atom selection, X11Atom target, xcb_timestamp_t time) const {
    const xcb_void_cookie_t request =
        xcb_convert_selection(connection_.raw(), window_, connection_.atom(selection), connection_.atom(target),
                              connection_.atom(X11Atom::transfer), time);
    xcb_flush(connection_.raw());
    return request.sequence;
}

std::optional<std::vector<std::uint32_t>> X11Requestor::takeValues(const xcb_selection_notify_event_t& event) const {
    if (event.property == x11None)
        return std::nullopt;
    std::vector<std::uint32_t> values = connection_.property(window_, X11Atom::transfer);
    deleteData();
    return values;
}

std::optional<std::string> X11Requestor::takeText(const xcb_selection_notify_event_t& event) const {
    if (event.property == x11None)
        return std::nullopt;
    std::optional<std::string> text = connection_.text(window_, X11Atom::transfer);
    deleteData();
    return text;
}

void X11Requestor::deleteData() const {
    xcb_delete_property(connection_.raw(), window_, connection_.atom(X11Atom::transfer));
}

}  // namespace stowpocket
