// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/tray/X11FaceWindow.h"
#include "platform/linux/x11/X11Connection.h"

namespace stowpocket {

/// The window of one docking into one tray manager. A tray takes its windows with it when it goes, and the next may
/// want another visual, so none is used twice.
class X11TrayWindow : public X11FaceWindow {
public:
    /// `connection` and `face` outlive the window. Made for `manager`, whose visual it takes.
    X11TrayWindow(const X11Connection& connection, xcb_window_t manager, const StatusItemFace& face,
                  const SymbolPainter& paintSymbol, IncomingDrops& drops);

    /// Asks the manager to take the window in; it answers with an XEMBED message, perhaps never.
    void requestDock();
    void showFace() override;
    /// The same, for a bar that may have another direction now.
    void followBar();
    [[nodiscard]] xcb_window_t id() const { return static_cast<xcb_window_t>(internalWinId()); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] BarDirection barDirection() const;
    [[nodiscard]] QSize wish() const;
    [[nodiscard]] QImage paintedBackground() const;
    [[nodiscard]] QColor foregroundOn(const QImage& background) const;

    const X11Connection& connection_;
    const xcb_window_t manager_;
    const SymbolPainter& paintSymbol_;
    /// Told by `followBar()`, as the server is not to be asked at each change of the face.
    BarDirection direction_;
};

}  // namespace stowpocket
