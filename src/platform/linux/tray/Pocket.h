// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/drags/DragWatching.h"
#include "platform/linux/tray/StatusItemWindow.h"
#include "platform/linux/x11/X11Connection.h"

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

    [[nodiscard]] bool isShown() const { return isResident_ || isDragOn_ || isHovered_; }

private:
    bool isResident_ = false;
    bool isDragOn_ = false;
    bool isHovered_ = false;
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

/// A place for drops that depends on no panel. During a drag it lies exactly over the icon, for panels that keep
/// drops to themselves. If the position of the icon is unknown, or its picture cannot be read, it is in the corner of
/// the screen. Where there is no tray at all, it stays there as the icon.
class Pocket {
public:
    /// All references outlive it.
    Pocket(const X11Connection& connection, const StatusItemContent& content, const SymbolPainter& paintSymbol,
           IncomingDrops& drops, std::function<void()> onClick);
    ~Pocket();

    void setResident(bool isResident);
    /// `icon` is the position of the icon on the screen, if that is known.
    void dragBegan(const std::optional<QRect>& icon);
    void dragEnded(DragEnd end);
    void showContent();

    /// Returns nothing while it is not on the screen.
    [[nodiscard]] std::optional<QRect> rectOnScreen() const;
    /// Emitted when it appears, disappears or moves.
    Signal<> changed;

private:
    void showOrHide();
    void makeWindow();
    void moveToCorner();
    void closeWindow();

    const X11Connection& connection_;
    const StatusItemContent& content_;
    const SymbolPainter& paintSymbol_;
    IncomingDrops& drops_;
    const std::function<void()> onClick_;
    PocketPresence presence_;
    std::optional<QRect> icon_;
    std::unique_ptr<PocketWindow> window_;
    Subscription hovered_;
    Subscription dropped_;
};

}  // namespace stowpocket
