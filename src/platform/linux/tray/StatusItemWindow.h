// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "platform/linux/tray/StatusItemPainter.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/qt/QtDrops.h"

#include <QAbstractButton>

namespace stowpocket {

/// Opens the icon's menu at that place on the screen. It closes by itself.
void showStatusItemMenu(const StatusItemMenu& menu, const QPoint& place);

/// The base of all windows of the icon. It takes clicks and drops, describes itself to assistive technology and never
/// takes the keyboard. Window managers ignore it.
class StatusItemWindow : public QAbstractButton {
public:
    /// All references outlive the window.
    StatusItemWindow(const StatusItemContent& content, IncomingDrops& drops);

    /// Shows changed content, which may need another size.
    virtual void showContent();
    /// Emitted when a drag has entered the window or left it.
    Signal<bool> hovered;
    Signal<> dropped;

protected:
    [[nodiscard]] const StatusItemContent& content() const { return content_; }
    void showEvent(QShowEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void describe();

    const StatusItemContent& content_;
    IncomingDrops& drops_;
};

/// The window for one docking into one tray. A tray destroys its windows when it goes, and the next tray may want
/// another visual, so no window is used twice.
class TrayWindow : public StatusItemWindow {
public:
    /// All references outlive the window. It is made for `manager` and takes its visual.
    TrayWindow(const X11Connection& connection, xcb_window_t manager, const StatusItemContent& content,
               const SymbolPainter& paintSymbol, IncomingDrops& drops);

    /// Asks the manager to embed the window. The answer is an XEMBED message, which may never arrive.
    void requestDock();
    void showContent() override;
    /// Follows a bar that may have another direction now.
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
    /// Updated by `followBar()`, so that no change of the content asks the server.
    BarDirection direction_;
};

}  // namespace stowpocket
