// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/TrayDocking.h"
#include "platform/linux/x11/X11StatusItemButton.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

namespace stowpocket {

/// The place in the tray: listens to the server for trays that come and go, and has the icon follow them.
class X11StatusItem : public StatusItem, private QAbstractNativeEventFilter {
public:
    X11StatusItem(const X11Connection& connection, SymbolPainter paintSymbol);

    [[nodiscard]] std::shared_ptr<StatusItemButton> button() override { return button_; }

private:
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    void handleMessage(const xcb_client_message_event_t& message);
    void later(std::function<void()> work);
    void managerAppeared(xcb_window_t manager);
    void embedded(xcb_window_t window);
    void checkForProxy();
    void take(TrayDocking::Step step, xcb_window_t manager);

    const X11Connection& connection_;
    const std::shared_ptr<X11StatusItemButton> button_;
    TrayDocking docking_;
    /// Everything posted for later is dropped with it.
    QObject context_;
};

/// The tray of an X11 desktop.
class X11StatusBar : public StatusBar {
public:
    /// `connection` outlives every item.
    X11StatusBar(const X11Connection& connection, SymbolPainter paintSymbol)
        : connection_(connection), paintSymbol_(std::move(paintSymbol)) {}

    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override {
        return std::make_unique<X11StatusItem>(connection_, paintSymbol_);
    }

private:
    const X11Connection& connection_;
    const SymbolPainter paintSymbol_;
};

}  // namespace stowpocket
