// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "platform/linux/tray/StatusItemPainter.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/qt/QtDrops.h"

#include <QAbstractButton>

namespace stowpocket {

/// What every window of the icon shares: it takes clicks and drops, tells assistive technology what it is, and never
/// takes the keyboard. Window managers leave it alone.
class StatusItemWindow : public QAbstractButton {
public:
    /// All of it outlives the window.
    StatusItemWindow(const StatusItemContent& content, IncomingDrops& drops);

    /// Shows a changed face, wishing for more or less room.
    virtual void showContent();
    /// A drag came over the window, or has left it.
    Signal<bool> hovered;
    Signal<> dropped;

protected:
    [[nodiscard]] const StatusItemContent& content() const { return content_; }
    void showEvent(QShowEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void describe();

    const StatusItemContent& content_;
    IncomingDrops& drops_;
};

/// The window of one docking into one tray manager. A tray takes its windows with it when it goes, and the next may
/// want another visual, so none is used twice.
class TrayWindow : public StatusItemWindow {
public:
    /// `connection` and `face` outlive the window. Made for `manager`, whose visual it takes.
    TrayWindow(const X11Connection& connection, xcb_window_t manager, const StatusItemContent& content,
               const SymbolPainter& paintSymbol, IncomingDrops& drops);

    /// Asks the manager to take the window in; it answers with an XEMBED message, perhaps never.
    void requestDock();
    void showContent() override;
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
