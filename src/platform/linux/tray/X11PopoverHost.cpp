// SPDX-License-Identifier: MIT
#include "platform/linux/tray/X11PopoverHost.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <iterator>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

/// A quick drop finds its files well within this. A later window has another reason.
constexpr auto longestWait = 5s;
/// Launchers write less than 200.
constexpr std::size_t longestId = 1024;

/// Server time wraps around every 49 days.
bool isLater(xcb_timestamp_t time, xcb_timestamp_t other) {
    return static_cast<std::int32_t>(time - other) > 0;
}

}  // namespace

std::optional<std::uint32_t> startupTime(std::string_view id) {
    constexpr std::string_view mark = "_TIME";
    const std::size_t at = id.rfind(mark);
    if (at == std::string_view::npos)
        return std::nullopt;
    const std::string_view digits = id.substr(at + mark.size());
    std::uint32_t time = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), time);
    const bool isTime = error == std::errc() && end == digits.data() + digits.size() && time != 0;
    return isTime ? std::optional(time) : std::nullopt;
}

std::string startupCompleteMessage(std::string_view id) {
    std::string message = "remove: ID=";
    for (const char letter : id) {
        if (letter == ' ' || letter == '"' || letter == '\\')
            message += '\\';
        message += letter;
    }
    return message;
}

void X11Startup::begin(std::string id) {
    if (id.empty() || id.size() > longestId)
        return;
    id_ = std::move(id);
    outdated_.setRemainingTime(longestWait);
    QMetaObject::invokeMethod(
        &context_, [this, started = id_] { tellLauncher(started); }, Qt::QueuedConnection);
}

void X11Startup::markWindow(xcb_window_t window) const {
    if (isUnderWay())
        connection_.setText(window, X11Atom::startupId, X11Atom::utf8, id_);
}

xcb_timestamp_t X11Startup::takeTime(xcb_window_t window) {
    const std::optional<xcb_timestamp_t> time = isUnderWay() ? startupTime(id_) : std::nullopt;
    id_.clear();
    if (!time)
        return XCB_CURRENT_TIME;
    // Qt sets the time on another window when the window manager reads it from there.
    const std::vector<std::uint32_t> keeper = connection_.property(window, X11Atom::userTimeWindow);
    const xcb_window_t place = keeper.empty() ? window : keeper.front();
    const std::vector<std::uint32_t> known = connection_.property(place, X11Atom::userTime);
    if (known.empty() || isLater(*time, known.front()))
        connection_.setProperty(place, connection_.atom(X11Atom::userTime), XCB_ATOM_CARDINAL, {*time});
    return *time;
}

/// Sends the message in pieces, the last of which ends with a zero, to all listeners on the root window. The window
/// in the event tells them which pieces belong together.
void X11Startup::tellLauncher(const std::string& id) const {
    xcb_connection_t* const server = connection_.raw();
    const std::string message = startupCompleteMessage(id);
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = xcb_generate_id(server);
    event.type = connection_.atom(X11Atom::startupInfoBegin);
    xcb_create_window(server, 0, event.window, connection_.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    constexpr std::size_t pieceSize = sizeof event.data.data8;
    for (std::size_t at = 0; at <= message.size(); at += pieceSize) {
        std::fill(std::begin(event.data.data8), std::end(event.data.data8), 0);
        message.copy(reinterpret_cast<char*>(event.data.data8), pieceSize, at);
        sendEvent(server, connection_.root(), XCB_EVENT_MASK_PROPERTY_CHANGE, event);
        event.type = connection_.atom(X11Atom::startupInfo);
    }
    xcb_destroy_window(server, event.window);
    xcb_flush(server);
}

bool X11PopoverHost::blendsWindows() const {
    return connection_.selectionOwner(X11Atom::compositorOwner) != x11None;
}

/// Window managers drop these requests of a window when it is hidden.
void X11PopoverHost::willShow(QWidget& window) {
    const auto shown = static_cast<xcb_window_t>(window.winId());
    connection_.keepAboveUnlisted(shown);
    // Cinnamon's window manager has dialogs listed in the panel whatever they ask for, and awesome gives them a title
    // bar. It is asked for once: each question would delay the first frame.
    if (!changesDialogs_) {
        const std::string manager = connection_.windowManagerName();
        changesDialogs_ = manager == "Mutter (Muffin)" || manager == "awesome";
    }
    if (*changesDialogs_)
        connection_.setProperty(shown, connection_.atom(X11Atom::windowType), XCB_ATOM_ATOM,
                                {connection_.atom(X11Atom::windowTypeUtility)});
    startup_.markWindow(shown);
}

/// Asks as a pager would. A window manager may refuse the request of a program when the user has typed elsewhere
/// since, but here the user has just clicked the icon, dragged onto it or pressed the shortcut.
void X11PopoverHost::focus(QWidget& window) {
    constexpr std::uint32_t fromPager = 2;
    constexpr std::uint32_t managers = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    const auto shown = static_cast<xcb_window_t>(window.winId());
    window.activateWindow();
    const xcb_timestamp_t time = startup_.takeTime(shown);
    connection_.sendMessage(connection_.root(), managers, shown, X11Atom::activeWindow, {fromPager, time, 0, 0, 0});
}

}  // namespace stowpocket
