// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/X11Events.h"

#include <QRect>

#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class QImage;
class QScreen;

namespace stowpocket {

/// No window, no atom.
inline constexpr std::uint32_t x11None = 0;

/// The names that this program exchanges with other X11 programs, in the order of `x11AtomNames`.
enum class X11Atom : std::size_t {
    manager,
    trayOwner,
    trayOpcode,
    trayVisual,
    trayColors,
    trayOrientation,
    xembed,
    xembedInfo,
    activeWindow,
    windowManager,
    windowName,
    windowState,
    windowManaged,
    windowStateAbove,
    windowStateSkipTaskbar,
    windowStateSkipPager,
    windowStateSkipSwitcher,
    windowType,
    windowTypeUtility,
    frameExtents,
    compositorOwner,
    settingsOwner,
    settings,
    dragSelection,
    dragEnter,
    dragPosition,
    dragStatus,
    dragLeave,
    dragDrop,
    dragTypeList,
    dragMove,
    directSave,
    transfer,
    selectionData,
    inPieces,
    serverTime,
    targets,
    uriList,
    plainText,
    utf8,
    startupId,
    startupInfo,
    startupInfoBegin,
    userTime,
    userTimeWindow,
    count
};

/// A property of a window as the server keeps it.
struct X11Property {
    xcb_atom_t type = XCB_ATOM_NONE;
    std::uint8_t format = 8;
    std::vector<std::byte> bytes;
    bool isCut = false;  ///< there is more than was asked for

    /// Empty when the units have another size.
    template <class Unit>
    [[nodiscard]] std::vector<Unit> as() const {
        std::vector<Unit> units(format == 8 * sizeof(Unit) ? bytes.size() / sizeof(Unit) : 0);
        if (!units.empty())
            std::memcpy(units.data(), bytes.data(), units.size() * sizeof(Unit));
        return units;
    }
    [[nodiscard]] std::vector<std::uint32_t> words() const { return as<std::uint32_t>(); }
};

/// A connection to the X server, beside what Qt does there. Questions wait for the answer of the server, and return
/// nothing when the window is gone. Used by one thread at a time.
class X11Connection {
public:
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    /// Why this program cannot reach the display that its environment names; Qt would end the process over it.
    [[nodiscard]] static std::optional<std::string> displayProblem();
    /// Qt's own connection, for the main thread. Null when the desktop is not reached through X11.
    [[nodiscard]] static std::unique_ptr<X11Connection> ofApplication();

    [[nodiscard]] xcb_connection_t* raw() const { return connection_; }
    [[nodiscard]] xcb_window_t root() const { return screen_->root; }
    [[nodiscard]] xcb_atom_t atom(X11Atom name) const { return atoms_.at(static_cast<std::size_t>(name)); }

    /// Returns 0 when the selection has no owner.
    [[nodiscard]] xcb_window_t selectionOwner(X11Atom selection) const;
    [[nodiscard]] xcb_window_t selectionOwner(xcb_atom_t selection) const;
    /// The units of a property. Empty when there is none.
    template <class Unit = std::uint32_t>
    [[nodiscard]] std::vector<Unit> property(xcb_window_t window, X11Atom name) const {
        return property(window, atom(name)).as<Unit>();
    }
    /// Longer than any property that this program reads whole. The longest are the settings that a desktop shares.
    static constexpr std::size_t longestProperty = 64u << 10;
    /// Reads from the byte `offset` on, a multiple of four. Deletes the property only when nothing is left after this
    /// part.
    [[nodiscard]] X11Property property(xcb_window_t window, xcb_atom_t name, std::size_t mostBytes = longestProperty,
                                       bool thenDelete = false, std::size_t offset = 0) const;
    void setProperty(xcb_window_t window, xcb_atom_t name, xcb_atom_t type,
                     const std::vector<std::uint32_t>& values) const;
    /// The bytes of a property of 8-bit units. Nothing when there is no such property.
    [[nodiscard]] std::optional<std::string> text(xcb_window_t window, X11Atom name) const;
    void setText(xcb_window_t window, X11Atom name, X11Atom type, std::string_view text) const;
    /// Whether this program made the window.
    [[nodiscard]] bool isOwn(xcb_window_t window) const;
    /// Whether the window manager made the window.
    [[nodiscard]] bool isWindowManagers(xcb_window_t window) const;
    /// The name that it gives itself. Empty when it gives none.
    [[nodiscard]] std::string windowManagerName() const;
    /// Whether any of the three buttons that can drag is down, in any program.
    [[nodiscard]] bool isButtonHeld() const;
    /// In pixels, on the root window.
    [[nodiscard]] std::optional<QPoint> pointer() const;
    /// In pixels, on the root window. For embedded windows Qt is wrong about this in several panels.
    [[nodiscard]] std::optional<QRect> geometryOnRoot(xcb_window_t window) const;
    /// Whether it is the window that a compositor draws into. It is above all others, and the server lists it
    /// nowhere. Cinnamon's panel is a part of it.
    [[nodiscard]] bool isOverlay(xcb_window_t window) const;
    /// Whether the pointer would meet that window at the middle of this one.
    [[nodiscard]] bool isUnderOverlay(xcb_window_t window) const;
    /// Whether the window and all windows around it are mapped.
    [[nodiscard]] bool isViewable(xcb_window_t window) const;
    /// Returns 0 when the window is gone.
    [[nodiscard]] xcb_window_t parentOf(xcb_window_t window) const;
    [[nodiscard]] std::optional<std::uint8_t> depthOfVisual(xcb_visualid_t visual) const;

    /// Asks the window manager to keep a window above the others and out of lists of windows. Called before the
    /// window is shown.
    void keepAboveUnlisted(xcb_window_t window) const;
    /// Subscribes to the events of `mask` for `window`, in addition to earlier ones.
    void hearAlso(xcb_window_t window, std::uint32_t mask) const;
    /// Sends a client message about `window` to whoever selected `mask` on `destination`.
    void sendMessage(xcb_window_t destination, std::uint32_t mask, xcb_window_t window, X11Atom type,
                     const std::array<std::uint32_t, 5>& data) const;

protected:
    explicit X11Connection(xcb_connection_t* connection);

private:
    xcb_connection_t* const connection_;
    const xcb_screen_t* const screen_;
    std::array<xcb_atom_t, static_cast<std::size_t>(X11Atom::count)> atoms_{};
};

/// Whether the session is a Wayland one. The X server, if there is one, then knows of keys, buttons and the pointer
/// only while they concern X11 windows.
[[nodiscard]] bool isWaylandSession();

/// The part of a screen that no panel covers, as far as this is known, in points.
[[nodiscard]] QRect usableArea(const QScreen& screen);

/// The pixels that the server shows in a part of a window. Null when it does not say, as for parts off the screen.
[[nodiscard]] QImage x11Pixels(const X11Connection& connection, xcb_window_t window, const QRect& part);

/// The background behind a window that has no transparency. The server paints the parent's background into the
/// window, which stays so, and this reads it back. `size` is the expected size; if the window is smaller, the server
/// is asked a second time.
[[nodiscard]] QImage x11ParentBackground(const X11Connection& connection, xcb_window_t window, const QSize& size);

}  // namespace stowpocket
