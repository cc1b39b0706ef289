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

/// When the pocket stands on the screen: always where there is no tray, else during drags and until the drop has
/// arrived.
class PocketPresence {
public:
    void setResident(bool isResident) { isResident_ = isResident; }
    void dragBegan();
    void dragEnded(DragEnd end);
    /// A drag is over the pocket, or has left it.
    void setHovered(bool isHovered) { isHovered_ = isHovered; }
    /// On the pocket, so that the drag is over whatever else is known of it.
    void dropped() { isDragOn_ = isHovered_ = false; }

    [[nodiscard]] bool isShown() const { return isResident_ || isDragOn_ || isHovered_; }

private:
    bool isResident_ = false;
    bool isDragOn_ = false;
    bool isHovered_ = false;
};

/// One showing of the pocket: above all windows, known to no window manager and no panel, so that drags reach it
/// whatever the desktop does.
class PocketWindow : public StatusItemWindow {
public:
    /// The icon on a small panel of its own. All of it outlives the window.
    PocketWindow(const X11Connection& connection, const StatusItemContent& content, const SymbolPainter& paintSymbol,
                 IncomingDrops& drops);
    /// Looks as what it covers did.
    void cover(const QRect& place);

    void showContent() override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    const SymbolPainter& paintSymbol_;
    QPixmap covered_;
};

/// A place to drop files that depends on no panel. During a drag it lies exactly over the icon, for panels that keep
/// drops to themselves, or in the corner of the screen when the icon's place is unknown or its picture cannot be had;
/// where there is no tray at all it stays there as the icon.
class Pocket {
public:
    /// All references outlive it.
    Pocket(const X11Connection& connection, const StatusItemContent& content, const SymbolPainter& paintSymbol,
           IncomingDrops& drops, std::function<void()> onClick);
    ~Pocket();

    void setResident(bool isResident);
    /// `icon` is the place of the icon on the screen, where that is known.
    void dragBegan(const std::optional<QRect>& icon);
    void dragEnded(DragEnd end);
    void showContent();

    /// None while it is not on the screen.
    [[nodiscard]] std::optional<QRect> rectOnScreen() const;
    /// Emitted when it appears, goes or moves.
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
