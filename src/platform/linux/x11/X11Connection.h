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

/// The names that this program exchanges with other X11 programs. Each stands in `x11AtomNames` at the same place.
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
    windowStateAbove,
    windowStateSkipTaskbar,
    windowStateSkipPager,
    windowStateSkipSwitcher,
    frameExtents,
    compositorOwner,
    settingsOwner,
    settings,
    dragSelection,
    dragEnter,
    dragDrop,
    dragTypeList,
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

/// The X server as this program talks to it beside Qt. Questions wait for the server's answer, and return nothing
/// when the window asked about is gone. Used by one thread at a time.
class X11Connection {
public:
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    /// Why this program cannot reach the display that its environment names; Qt would end the process over it.
    [[nodiscard]] static std::optional<std::string> displayProblem();
    /// Qt's own connection, for the main thread. None when the desktop is not reached through X11.
    [[nodiscard]] static std::unique_ptr<X11Connection> ofApplication();

    [[nodiscard]] xcb_connection_t* raw() const { return connection_; }
    [[nodiscard]] xcb_window_t root() const { return screen_->root; }
    [[nodiscard]] xcb_atom_t atom(X11Atom name) const { return atoms_.at(static_cast<std::size_t>(name)); }

    /// 0 when nobody owns it.
    [[nodiscard]] xcb_window_t selectionOwner(X11Atom selection) const;
    [[nodiscard]] xcb_window_t selectionOwner(xcb_atom_t selection) const;
    /// The units of a property; empty when there is none.
    template <class Unit = std::uint32_t>
    [[nodiscard]] std::vector<Unit> property(xcb_window_t window, X11Atom name) const {
        return property(window, atom(name)).as<Unit>();
    }
    /// More than any property holds that this program reads whole. The longest are a desktop's shared settings.
    static constexpr std::size_t longestProperty = 64u << 10;
    /// From the byte `offset` on, a multiple of four. It is deleted only when nothing is left after this.
    [[nodiscard]] X11Property property(xcb_window_t window, xcb_atom_t name, std::size_t mostBytes = longestProperty,
                                       bool thenDelete = false, std::size_t offset = 0) const;
    void setProperty(xcb_window_t window, xcb_atom_t name, xcb_atom_t type,
                     const std::vector<std::uint32_t>& values) const;
    /// The bytes of a property of 8-bit items; none when there is none.
    [[nodiscard]] std::optional<std::string> text(xcb_window_t window, X11Atom name) const;
    void setText(xcb_window_t window, X11Atom name, X11Atom type, std::string_view text) const;
    /// Whether this program made the window.
    [[nodiscard]] bool isOwn(xcb_window_t window) const;
    /// Whether the window manager made the window.
    [[nodiscard]] bool isWindowManagers(xcb_window_t window) const;
    /// As it calls itself; empty when it does not.
    [[nodiscard]] std::string windowManagerName() const;
    /// Whether any of the three buttons that can drag is down, in whatever program.
    [[nodiscard]] bool isButtonHeld() const;
    /// In pixels, on the root window. What Qt believes of an embedded window is wrong in several panels.
    [[nodiscard]] std::optional<QRect> geometryOnRoot(xcb_window_t window) const;
    /// Whether it and all that it stands in are mapped.
    [[nodiscard]] bool isViewable(xcb_window_t window) const;
    /// 0 when the window is gone.
    [[nodiscard]] xcb_window_t parentOf(xcb_window_t window) const;
    [[nodiscard]] std::optional<std::uint8_t> depthOfVisual(xcb_visualid_t visual) const;

    /// Asks the window manager to keep a window that is not shown yet above the others and out of lists of windows.
    void keepAboveUnlisted(xcb_window_t window) const;
    /// Also hears the events of `mask` that concern `window`, beside what is heard already.
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

/// Whether the X server, if there is one, only stands in for a Wayland compositor. Such a server learns of keys,
/// buttons and the pointer only while they concern X11 windows.
[[nodiscard]] bool isWaylandSession();

/// The part of a screen that no panel covers, as far as can be known, in points.
[[nodiscard]] QRect usableArea(const QScreen& screen);

/// What the server shows in a part of a window, in pixels. Null when it does not say, as for parts off the screen.
[[nodiscard]] QImage x11Pixels(const X11Connection& connection, xcb_window_t window, const QRect& part);

/// What lies behind a window that has no transparency: has the server paint the parent's background into it and
/// reads that back. The window is left so. `size` is how large it is believed to be; where that is more than it is,
/// the server is asked a second time.
[[nodiscard]] QImage x11ParentBackground(const X11Connection& connection, xcb_window_t window, const QSize& size);

}  // namespace stowpocket
