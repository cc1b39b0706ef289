// SPDX-License-Identifier: MIT
#include "platform/linux/appearance/X11ThemeWatch.h"

#include "platform/linux/appearance/XSettings.h"

#include <QCoreApplication>

namespace stowpocket {
namespace {

constexpr std::uint8_t sentEventBit = 0x80;

}  // namespace

X11ThemeWatch::X11ThemeWatch(const X11Connection& connection, std::function<void(bool)> onAnswer)
    : connection_(connection), onAnswer_(std::move(onAnswer)) {
    looking_.setSingleShot(true);
    looking_.setInterval(0);
    QObject::connect(&looking_, &QTimer::timeout, [this] { look(); });
    QCoreApplication::instance()->installNativeEventFilter(this);
    looking_.start();
}

bool X11ThemeWatch::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto type =
        static_cast<std::uint8_t>(static_cast<const xcb_generic_event_t*>(message)->response_type & ~sentEventBit);
    bool isOurs = false;
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto& change = *static_cast<const xcb_property_notify_event_t*>(message);
        isOurs = change.window == owner_ && change.atom == connection_.atom(X11Atom::settings);
    } else if (type == XCB_DESTROY_NOTIFY) {
        isOurs = static_cast<const xcb_destroy_notify_event_t*>(message)->window == owner_;
    } else if (type == XCB_CLIENT_MESSAGE) {
        const auto& announced = *static_cast<const xcb_client_message_event_t*>(message);
        isOurs = announced.type == connection_.atom(X11Atom::manager) &&
                 announced.data.data32[1] == connection_.atom(X11Atom::settingsOwner);
    }
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
