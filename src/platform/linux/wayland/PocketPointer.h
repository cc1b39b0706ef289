// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/wayland/WaylandDisplay.h"

#include <QPointF>
#include <QRectF>

#include <wayland-cursor.h>

#include <functional>
#include <memory>

namespace stowpocket {

/// Tells what a press of a button on the pocket becomes: a click where it is released there, a drag where the pointer
/// moves away with it.
class PressGesture {
public:
    enum class Button { main, menu, other };
    enum class Outcome { nothing, click, menu, drag };

    explicit PressGesture(double dragDistance) : dragDistance_(dragDistance) {}

    [[nodiscard]] Outcome pressed(Button button, const QPointF& point) {
        isHeld_ = button == Button::main;
        start_ = point;
        return button == Button::menu ? Outcome::menu : Outcome::nothing;
    }
    [[nodiscard]] Outcome moved(const QPointF& point) {
        if (!isHeld_ || (point - start_).manhattanLength() < dragDistance_)
            return Outcome::nothing;
        isHeld_ = false;
        return Outcome::drag;
    }
    [[nodiscard]] Outcome released(Button button, const QPointF& point, const QSizeF& size) {
        const bool isClick = isHeld_ && button == Button::main && QRectF({}, size).contains(point);
        isHeld_ = isHeld_ && button != Button::main;
        return isClick ? Outcome::click : Outcome::nothing;
    }
    /// The pointer is elsewhere, so the release will not be heard of.
    void left() { isHeld_ = false; }

    /// Where the last press was.
    [[nodiscard]] const QPointF& start() const { return start_; }

private:
    const double dragDistance_;
    bool isHeld_ = false;
    QPointF start_;
};

/// The pointer over the pocket: its arrow, and what its buttons are for.
class PocketPointer {
public:
    struct Events {
        std::function<void()> clicked;
        std::function<void()> menuAsked;
        /// The button that was pressed at that point is held, and the pointer moves. `serial` stands for the press.
        std::function<void(const QPointF& pressed, std::uint32_t serial)> dragBegan;
        /// Of the pocket, in points.
        std::function<QSizeF()> size;
        /// Pixels a point, where the pocket is.
        std::function<double()> scale;
    };

    /// `display` outlives it, and its seat has a pointer.
    PocketPointer(WaylandDisplay& display, Events events);
    PocketPointer(const PocketPointer&) = delete;
    PocketPointer& operator=(const PocketPointer&) = delete;

    /// The pocket is gone, and the pointer so elsewhere.
    void left();

private:
    struct CursorEnd {
        void operator()(wl_cursor_theme* theme) const { wl_cursor_theme_destroy(theme); }
    };

    void listen();
    void entered(std::uint32_t serial);
    void button(std::uint32_t serial, std::uint32_t code, bool isPressed);
    void moved(const QPointF& point);
    void act(PressGesture::Outcome outcome);

    WaylandDisplay& display_;
    const Events events_;
    PressGesture gesture_;
    QPointF point_;
    std::uint32_t pressSerial_ = 0;
    std::unique_ptr<wl_cursor_theme, CursorEnd> theme_;
    int themeScale_ = 0;
    const Owned<wl_surface> arrow_;
    const Owned<wl_pointer> pointer_;
};

}  // namespace stowpocket
