// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/tray/PocketPresence.h"
#include "platform/linux/tray/X11PocketWindow.h"

#include <functional>
#include <memory>
#include <optional>

namespace stowpocket {

/// A place to drop files that depends on no panel. During a drag it lies exactly over the icon, for panels that keep
/// drops to themselves, or in the corner of the screen when the icon's place is unknown or its picture cannot be had;
/// where there is no tray at all it stays there as the icon.
class X11Pocket {
public:
    /// All references outlive it.
    X11Pocket(const X11Connection& connection, const StatusItemFace& face, const SymbolPainter& paintSymbol,
              IncomingDrops& drops, std::function<void()> onClick);
    ~X11Pocket();

    void setResident(bool isResident);
    /// `icon` is the place of the icon on the screen, where that is known.
    void dragBegan(const std::optional<QRect>& icon);
    void dragEnded(DragEnd end);
    void showFace();

    /// None while it is not on the screen.
    [[nodiscard]] std::optional<QRect> rectOnScreen() const;
    /// Emitted when it appears, goes or moves.
    Signal<> changed;

private:
    void follow();
    void makeWindow();
    void standInCorner();
    void close();

    const X11Connection& connection_;
    const StatusItemFace& face_;
    const SymbolPainter& paintSymbol_;
    IncomingDrops& drops_;
    const std::function<void()> onClick_;
    PocketPresence presence_;
    std::optional<QRect> icon_;
    std::unique_ptr<X11PocketWindow> window_;
    Subscription hovered_;
    Subscription dropped_;
};

}  // namespace stowpocket
