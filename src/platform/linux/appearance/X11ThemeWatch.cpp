// SPDX-License-Identifier: MIT
#include "platform/linux/appearance/X11ThemeWatch.h"

#include "platform/linux/appearance/XSettings.h"

namespace stowpocket {

X11ThemeWatch::X11ThemeWatch(const X11Connection& connection, std::function<void(bool)> onAnswer)
    : connection_(connection), onAnswer_(std::move(onAnswer)) {
    looking_.setSingleShot(true);
    looking_.setInterval(0);
    QObject::connect(&looking_, &QTimer::timeout, [this] { look(); });
    looking_.start();
}

bool X11ThemeWatch::handleEvent(const xcb_generic_event_t& event) {
    bool isOurs = false;
    if (const auto* const change = eventAs<xcb_property_notify_event_t>(event))
        isOurs = change->window == owner_ && change->atom == connection_.atom(X11Atom::settings);
    else if (const auto* const gone = eventAs<xcb_destroy_notify_event_t>(event))
        isOurs = gone->window == owner_;
    else if (const auto* const announced = eventAs<xcb_client_message_event_t>(event))
        isOurs = announced->type == connection_.atom(X11Atom::manager) &&
                 announced->data.data32[1] == connection_.atom(X11Atom::settingsOwner);
    if (isOurs)
        looking_.start();
    return false;
}

void X11ThemeWatch::look() {
    // Where a new manager announces itself.
    connection_.hearAlso(connection_.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    owner_ = connection_.selectionOwner(X11Atom::settingsOwner);
    if (owner_ == x11None)
        return onAnswer_(false);
    connection_.hearAlso(owner_, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    const std::string settings = connection_.text(owner_, X11Atom::settings).value_or("");
    onAnswer_(isDarkThemeName(textXSetting(settings, "Net/ThemeName").value_or("")));
}

}  // namespace stowpocket
