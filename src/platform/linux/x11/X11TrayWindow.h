// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "platform/linux/x11/SymbolPainter.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/StatusItem.h"
#include "presentation/StatusItemLayout.h"

#include <QAbstractButton>

#include <memory>

namespace stowpocket {

/// What the icon shows and who takes drops on it, whichever bar it is in.
struct StatusItemFace {
    StatusItemImage image;
    StatusItemTitle title;
    std::shared_ptr<DraggingDestination> dropView;
};

/// The window of one docking into one tray manager. A tray takes its windows with it when it goes, and the next may
/// want another visual, so none is used twice.
class X11TrayWindow : public QAbstractButton {
public:
    /// `connection` and `face` outlive the window. Made for `manager`, whose visual it takes.
    X11TrayWindow(const X11Connection& connection, xcb_window_t manager, const StatusItemFace& face,
                  const SymbolPainter& paintSymbol);

    /// Asks the manager to take the window in; it answers with an XEMBED message, perhaps never.
    void requestDock();
    /// Draws a changed face, asking for more or less room.
    void showFace();
    [[nodiscard]] xcb_window_t id() const { return static_cast<xcb_window_t>(internalWinId()); }
    Signal<> resized;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    [[nodiscard]] StatusItemMeasure measure() const;
    [[nodiscard]] QFont titleFont(double size) const;
    void answer(QDropEvent& event, DragOperation operation) const;
    [[nodiscard]] QImage paintedBackground() const;
    [[nodiscard]] QColor foregroundOn(const QImage& background) const;
    void paintCount(QPainter& painter, const StatusItemLayout& layout, const QColor& color) const;

    const X11Connection& connection_;
    const xcb_window_t manager_;
    const StatusItemFace& face_;
    const SymbolPainter& paintSymbol_;
};

}  // namespace stowpocket
