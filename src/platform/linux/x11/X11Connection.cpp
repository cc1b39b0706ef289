// SPDX-License-Identifier: MIT
#include "platform/linux/x11/X11Connection.h"

#include <QGuiApplication>
#include <QImage>
#include <QScreen>

#include <span>

namespace stowpocket {
namespace {

constexpr std::size_t atomCount = static_cast<std::size_t>(X11Atom::count);

constexpr std::array<std::string_view, atomCount> x11AtomNames{
    "MANAGER",
    "_NET_SYSTEM_TRAY_S0",
    "_NET_SYSTEM_TRAY_OPCODE",
    "_NET_SYSTEM_TRAY_VISUAL",
    "_NET_SYSTEM_TRAY_COLORS",
    "_NET_SYSTEM_TRAY_ORIENTATION",
    "_XEMBED",
    "_XEMBED_INFO",
    "_NET_ACTIVE_WINDOW",
    "_NET_SUPPORTING_WM_CHECK",
    "_NET_WM_NAME",
    "_NET_WM_STATE",
    "WM_STATE",
    "_NET_WM_STATE_ABOVE",
    "_NET_WM_STATE_SKIP_TASKBAR",
    "_NET_WM_STATE_SKIP_PAGER",
    "_KDE_NET_WM_STATE_SKIP_SWITCHER",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_UTILITY",
    "_NET_FRAME_EXTENTS",
    "_NET_WM_CM_S0",
    "_XSETTINGS_S0",
    "_XSETTINGS_SETTINGS",
    "XdndSelection",
    "XdndEnter",
    "XdndPosition",
    "XdndStatus",
    "XdndLeave",
    "XdndDrop",
    "XdndTypeList",
    "XdndActionMove",
    "XdndDirectSave0",
    "_STOWPOCKET_TRANSFER",
    "_STOWPOCKET_SELECTION",
    "INCR",
    "_STOWPOCKET_TIME",
    "TARGETS",
    "text/uri-list",
    "text/plain",
    "UTF8_STRING",
    "_NET_STARTUP_ID",
    "_NET_STARTUP_INFO",
    "_NET_STARTUP_INFO_BEGIN",
    "_NET_WM_USER_TIME",
    "_NET_WM_USER_TIME_WINDOW",
};

constexpr std::size_t wordSize = sizeof(std::uint32_t);

}  // namespace

std::optional<std::string> X11Connection::displayProblem() {
    const std::string display = qEnvironmentVariable("DISPLAY").toStdString();
    if (display.empty() && isWaylandSession())
        return "there is no X11 display; in a Wayland session the program needs XWayland";
    if (display.empty())
        return "there is no X11 display, as DISPLAY is not set";
    xcb_connection_t* const trial = xcb_connect(nullptr, nullptr);
    const bool isReached = xcb_connection_has_error(trial) == 0;
    xcb_disconnect(trial);
    if (isReached)
        return std::nullopt;
    return "the X11 display \"" + display + "\" is not there or refuses this program";
}

std::unique_ptr<X11Connection> X11Connection::ofApplication() {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || x11->connection() == nullptr)
        return nullptr;
    return std::unique_ptr<X11Connection>(new X11Connection(x11->connection()));
}

X11Connection::X11Connection(xcb_connection_t* connection)
    : connection_(connection), screen_(xcb_setup_roots_iterator(xcb_get_setup(connection)).data) {
    std::array<xcb_intern_atom_cookie_t, atomCount> cookies{};
    for (std::size_t at = 0; at < atomCount; ++at) {
        const std::string_view name = x11AtomNames.at(at);
        cookies.at(at) = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    }
    for (std::size_t at = 0; at < atomCount; ++at) {
        const XcbAnswer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookies.at(at), nullptr));
        atoms_.at(at) = reply ? reply->atom : x11None;
    }
}

xcb_window_t X11Connection::selectionOwner(X11Atom selection) const {
    return selectionOwner(atom(selection));
}

xcb_window_t X11Connection::selectionOwner(xcb_atom_t selection) const {
    const XcbAnswer<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection_, xcb_get_selection_owner(connection_, selection), nullptr));
    return reply ? reply->owner : x11None;
}

X11Property X11Connection::property(xcb_window_t window, xcb_atom_t name, std::size_t mostBytes, bool thenDelete,
                                    std::size_t offset) const {
    const auto cookie = xcb_get_property(connection_, thenDelete ? 1 : 0, window, name, XCB_GET_PROPERTY_TYPE_ANY,
                                         static_cast<std::uint32_t>(offset / wordSize),
                                         static_cast<std::uint32_t>((mostBytes + wordSize - 1) / wordSize));
    const XcbAnswer<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_, cookie, nullptr));
    if (!reply)
        return {};
    const auto* const value = static_cast<const std::byte*>(xcb_get_property_value(reply.get()));
    return {reply->type,
            reply->format,
            {value, value + xcb_get_property_value_length(reply.get())},
            reply->bytes_after > 0};
}

void X11Connection::setProperty(xcb_window_t window, xcb_atom_t name, xcb_atom_t type,
                                const std::vector<std::uint32_t>& values) const {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, name, type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
}

std::optional<std::string> X11Connection::text(xcb_window_t window, X11Atom name) const {
    const X11Property read = property(window, atom(name));
    if (read.type == XCB_ATOM_NONE || read.format != 8)
        return std::nullopt;
    const std::vector<char> letters = read.as<char>();
    return std::string(letters.begin(), letters.end());
}

void X11Connection::setText(xcb_window_t window, X11Atom name, X11Atom type, std::string_view text) const {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom(name), atom(type), 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
}

bool X11Connection::isOwn(xcb_window_t window) const {
    const xcb_setup_t* const setup = xcb_get_setup(connection_);
    return (window & ~setup->resource_id_mask) == setup->resource_id_base;
}

bool X11Connection::isWindowManagers(xcb_window_t window) const {
    const std::vector<std::uint32_t> manager = property(root(), X11Atom::windowManager);
    // All programs get ranges of the same size for the numbers of their windows.
    const std::uint32_t ranges = ~xcb_get_setup(connection_)->resource_id_mask;
    return !manager.empty() && (manager.front() & ranges) == (window & ranges);
}

std::string X11Connection::windowManagerName() const {
    const std::vector<std::uint32_t> manager = property(root(), X11Atom::windowManager);
    return manager.empty() ? std::string() : text(manager.front(), X11Atom::windowName).value_or(std::string());
}

bool X11Connection::isButtonHeld() const {
    constexpr unsigned dragging = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    const XcbAnswer<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(connection_, xcb_query_pointer(connection_, root()), nullptr));
    return pointer && (pointer->mask & dragging) != 0;
}

std::optional<QPoint> X11Connection::pointer() const {
    const XcbAnswer<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(connection_, xcb_query_pointer(connection_, root()), nullptr));
    return pointer ? std::optional(QPoint(pointer->root_x, pointer->root_y)) : std::nullopt;
}

std::optional<QRect> X11Connection::geometryOnRoot(xcb_window_t window) const {
    const auto sizeCookie = xcb_get_geometry(connection_, window);
    const auto placeCookie = xcb_translate_coordinates(connection_, window, root(), 0, 0);
    const XcbAnswer<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(connection_, sizeCookie, nullptr));
    const XcbAnswer<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(connection_, placeCookie, nullptr));
    if (!size || !place)
        return std::nullopt;
    return QRect(place->dst_x, place->dst_y, size->width, size->height);
}

bool X11Connection::isOverlay(xcb_window_t window) const {
    const XcbAnswer<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection_, xcb_query_tree(connection_, root()), nullptr));
    if (!tree || window == x11None)
        return false;
    const std::span<const xcb_window_t> listed(xcb_query_tree_children(tree.get()), tree->children_len);
    return std::ranges::find(listed, window) == listed.end();
}

bool X11Connection::isUnderOverlay(xcb_window_t window) const {
    const std::optional<QRect> place = geometryOnRoot(window);
    if (!place)
        return false;
    const QPoint middle = place->center();
    const XcbAnswer<xcb_translate_coordinates_reply_t> met(xcb_translate_coordinates_reply(
        connection_,
        xcb_translate_coordinates(connection_, root(), root(), static_cast<std::int16_t>(middle.x()),
                                  static_cast<std::int16_t>(middle.y())),
        nullptr));
    return met && isOverlay(met->child);
}

bool X11Connection::isViewable(xcb_window_t window) const {
    const XcbAnswer<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(connection_, xcb_get_window_attributes(connection_, window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

xcb_window_t X11Connection::parentOf(xcb_window_t window) const {
    const XcbAnswer<xcb_query_tree_reply_t> reply(
        xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), nullptr));
    return reply ? reply->parent : x11None;
}

std::optional<std::uint8_t> X11Connection::depthOfVisual(xcb_visualid_t visual) const {
    for (auto depth = xcb_screen_allowed_depths_iterator(screen_); depth.rem > 0; xcb_depth_next(&depth)) {
        for (auto type = xcb_depth_visuals_iterator(depth.data); type.rem > 0; xcb_visualtype_next(&type)) {
            if (type.data->visual_id == visual)
                return depth.data->depth;
        }
    }
    return std::nullopt;
}

void X11Connection::keepAboveUnlisted(xcb_window_t window) const {
    setProperty(window, atom(X11Atom::windowState), XCB_ATOM_ATOM,
                {atom(X11Atom::windowStateAbove), atom(X11Atom::windowStateSkipTaskbar),
                 atom(X11Atom::windowStateSkipPager), atom(X11Atom::windowStateSkipSwitcher)});
}

void X11Connection::hearAlso(xcb_window_t window, std::uint32_t mask) const {
    const XcbAnswer<xcb_get_window_attributes_reply_t> now(
        xcb_get_window_attributes_reply(connection_, xcb_get_window_attributes(connection_, window), nullptr));
    if (!now)
        return;
    const std::uint32_t wanted = now->your_event_mask | mask;
    xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &wanted);
}

void X11Connection::sendMessage(xcb_window_t destination, std::uint32_t mask, xcb_window_t window, X11Atom type,
                                const std::array<std::uint32_t, 5>& data) const {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(type);
    std::copy(data.begin(), data.end(), std::begin(event.data.data32));
    sendEvent(connection_, destination, mask, event);
}

bool isWaylandSession() {
    return qEnvironmentVariable("XDG_SESSION_TYPE") == QStringLiteral("wayland") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

QRect usableArea(const QScreen& screen) {
    const QRect available = screen.availableGeometry();
    if (!isWaylandSession() || available != screen.geometry())
        return available;
    // Some compositors do not tell the X server of their panels. Most of these have one at the top, which is rarely
    // higher than this.
    constexpr int panelHeight = 48;
    return available.adjusted(0, panelHeight, 0, 0);
}

QImage x11Pixels(const X11Connection& connection, xcb_window_t window, const QRect& part) {
    const auto cookie =
        xcb_get_image(connection.raw(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, static_cast<std::int16_t>(part.x()),
                      static_cast<std::int16_t>(part.y()), static_cast<std::uint16_t>(part.width()),
                      static_cast<std::uint16_t>(part.height()), ~0u);
    const XcbAnswer<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection.raw(), cookie, nullptr));
    constexpr qsizetype bytesPerPixel = 4;
    if (!reply || (reply->depth != 24 && reply->depth != 32) ||
        xcb_get_image_data_length(reply.get()) < bytesPerPixel * part.width() * part.height())
        return {};
    const QImage pixels(xcb_get_image_data(reply.get()), part.width(), part.height(), part.width() * bytesPerPixel,
                        QImage::Format_RGB32);
    return pixels.copy();
}

QImage x11ParentBackground(const X11Connection& connection, xcb_window_t window, const QSize& size) {
    const std::uint32_t parentRelative = XCB_BACK_PIXMAP_PARENT_RELATIVE;
    xcb_change_window_attributes(connection.raw(), window, XCB_CW_BACK_PIXMAP, &parentRelative);
    xcb_clear_area(connection.raw(), 0, window, 0, 0, 0, 0);
    QImage background = x11Pixels(connection, window, QRect({0, 0}, size));
    if (!background.isNull())
        return background;
    const std::optional<QRect> place = connection.geometryOnRoot(window);
    return place ? x11Pixels(connection, window, QRect({0, 0}, place->size())) : QImage();
}

}  // namespace stowpocket
