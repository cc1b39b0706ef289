// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/drags/DragWatching.h"
#include "platform/linux/tray/StatusItemWindow.h"
#include "platform/linux/tray/WaylandPocket.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Events.h"

#include <QPixmap>

#include <functional>
#include <memory>
#include <optional>

namespace stowpocket {

/// When the pocket is on the screen: always where there is no tray, else during drags and until the drop has arrived.
class PocketPresence {
public:
    void setResident(bool isResident) { isResident_ = isResident; }
    void dragBegan();
    void dragEnded(DragEnd end);
    /// A drag has entered the pocket or left it.
    void setHovered(bool isHovered) { isHovered_ = isHovered; }
    /// The drop was on the pocket, so the drag is certainly over.
    void dropped() { isDragOn_ = isHovered_ = false; }

    /// The shelf is open where files can be dragged out to Wayland programs from the pocket alone.
    void setBesideShelf(bool isBeside) { isBesideShelf_ = isBeside; }
    /// Files are being dragged out of it.
    void setDragsOut(bool dragsOut) { dragsOut_ = dragsOut; }

    [[nodiscard]] bool isShown() const { return isResident_ || isInDrag() || isBesideShelf_ || dragsOut_; }
    /// Whether a drag is under way, or over the pocket, as far as is known.
    [[nodiscard]] bool isInDrag() const { return isDragOn_ || isHovered_; }

private:
    bool isResident_ = false;
    bool isDragOn_ = false;
    bool isHovered_ = false;
    bool isBesideShelf_ = false;
    bool dragsOut_ = false;
};

/// The window of the pocket, made each time that it appears. It is above all other windows, and no window manager or
/// panel knows of it, so drags reach it on every desktop.
class PocketWindow : public StatusItemWindow {
public:
    /// Shows the icon on a small panel of its own. All references outlive the window.
    PocketWindow(const X11Connection& connection, const StatusItemContent& content, const SymbolPainter& paintSymbol,
                 IncomingDrops& drops);
    /// Looks like what it covers.
    void cover(const QRect& place);

    void showContent() override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    const SymbolPainter& paintSymbol_;
    QPixmap covered_;
};

/// Has compositors made with wlroots tell the X server of drags, which they do once they have shown an X11 window.
/// This one has the keyboard, and when it is destroyed the window that had it has it again.
class DragTelling : private X11EventFilter {
public:
    /// Shows it. `onShown` is called when the X server has; the compositor has it to show then.
    DragTelling(const X11Connection& connection, std::function<void()> onShown);
    ~DragTelling() override;

private:
    bool handleEvent(const xcb_generic_event_t& event) override;

    xcb_connection_t* const server_;
    const xcb_window_t window_;
    const std::function<void()> onShown_;
};

/// A place for drops that depends on no panel. During a drag it lies exactly over the icon, for panels that keep
/// drops to themselves, or beside the panel where that is part of the compositor, which is above all windows
/// (Cinnamon). If the position of the icon is unknown, or its picture cannot be read, it is in the corner of
/// the screen. Where there is no tray at all, it stays there as the icon. On Wayland compositors that can show it
/// themselves it is a surface of theirs, but not while an X11 program drags: some pass such a drag to X11 windows
/// alone.
class Pocket {
public:
    /// All references outlive it.
    Pocket(const X11Connection& connection, const StatusItemContent& content, const SymbolPainter& paintSymbol,
           IncomingDrops& drops, const WaylandSupport& wayland, const std::function<void()>& onClick);
    ~Pocket();

    void setResident(bool isResident);
    /// `icon` is the position of the icon on the screen, if that is known.
    void dragBegan(DragOrigin origin, const std::optional<QRect>& icon);
    void dragEnded(DragEnd end);
    void setShelfOpen(bool isOpen);
    void showContent();

    /// Returns nothing while it is not on the screen.
    [[nodiscard]] std::optional<QRect> rectOnScreen() const;
    /// Whether it is on the screen in the place of an icon that takes no drops.
    [[nodiscard]] bool isBesideBar() const { return window_ && beside_; }
    /// Emitted when it appears, disappears or moves.
    Signal<> changed;
    /// What it has seen of a drag as a surface of the compositor, a drag out of it included.
    Signal<DragSign> surfaceSaw;

private:
    void haveDragsTold();
    void hover(bool isHovered);
    void finishDrop();
    void showOrHide();
    [[nodiscard]] bool wantsSurface() const;
    void makeWindow();
    void leaveIcon();
    [[nodiscard]] QRect place() const;
    void moveToPlace();
    void closeWindow();

    const X11Connection& connection_;
    const StatusItemContent& content_;
    const SymbolPainter& paintSymbol_;
    IncomingDrops& drops_;
    const std::function<void()> onClick_;
    PocketPresence presence_;
    /// The icon that it covers.
    std::optional<QRect> icon_;
    /// The icon that it cannot cover.
    std::optional<QRect> beside_;
    bool isX11Drag_ = false;
    std::unique_ptr<PocketWindow> window_;
    Subscription hovered_;
    Subscription dropped_;
    WaylandPocket surface_;
    bool isSurfaceShown_ = false;
    std::unique_ptr<DragTelling> dragTelling_;
    Subscription surfaceReady_;
    Subscription surfaceHovered_;
    Subscription surfaceDropped_;
    Subscription surfaceDragsOut_;
    /// Ends the connections to the screens.
    QObject context_;
};

}  // namespace stowpocket
