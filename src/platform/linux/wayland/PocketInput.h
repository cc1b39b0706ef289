// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/wayland/LayerPocket.h"
#include "platform/linux/wayland/WaylandDisplay.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <wayland-cursor.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

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

/// The pointer over the surfaces: its arrow, and what its buttons and its wheel are for.
class PocketPointer {
public:
    struct Events {
        /// Which part that surface is; none if it is gone.
        std::function<std::optional<LayerPart>(const wl_surface* surface)> part;
        /// The pointer is there on the part now; nothing when it has left.
        std::function<void(LayerPart part, const std::optional<QPointF>& point)> pointedAt;
        std::function<void(LayerPart part)> pressed;
        std::function<void(LayerPart part)> clicked;
        std::function<void()> menuAsked;
        std::function<void(LayerPart part, double steps, double points)> scrolled;
        /// The button that was pressed at that point is held, and the pointer moves. `serial` stands for the press.
        std::function<void(LayerPart part, const QPointF& pressed, std::uint32_t serial)> dragBegan;
        /// In points.
        std::function<QSizeF(LayerPart part)> size;
        /// Pixels a point, where the part is.
        std::function<double(LayerPart part)> scale;
    };

    /// `display` outlives it, and its seat has a pointer.
    PocketPointer(WaylandDisplay& display, Events events);
    PocketPointer(const PocketPointer&) = delete;
    PocketPointer& operator=(const PocketPointer&) = delete;

    /// The part is gone, and the pointer so elsewhere. Returns whether it was there.
    bool left(LayerPart part);

private:
    struct CursorEnd {
        void operator()(wl_cursor_theme* theme) const { wl_cursor_theme_destroy(theme); }
    };

    void listen();
    void entered(std::uint32_t serial, const wl_surface* surface, const QPointF& point);
    void left();
    void showArrow(std::uint32_t serial, int scale);
    void button(std::uint32_t serial, std::uint32_t code, bool isPressed);
    void moved(const QPointF& point);
    void turned(double points);
    void act(PressGesture::Outcome outcome);

    WaylandDisplay& display_;
    const Events events_;
    PressGesture gesture_;
    /// Where the pointer is; none if it is elsewhere.
    std::optional<LayerPart> part_;
    QPointF point_;
    std::uint32_t pressSerial_ = 0;
    /// Whether the wheel itself has told its steps, which then count instead of points.
    bool hasSteps_ = false;
    std::unique_ptr<wl_cursor_theme, CursorEnd> theme_;
    int themeScale_ = 0;
    const Owned<wl_surface> arrow_;
    const Owned<wl_pointer> pointer_;
};

/// A finger on the surfaces: it taps, or it drags. Fingers that come while one is there do nothing.
class PocketTouch {
public:
    struct Events {
        /// Which part that surface is; none if it is gone.
        std::function<std::optional<LayerPart>(const wl_surface* surface)> part;
        /// The finger is there on the part now; nothing when it was lifted.
        std::function<void(LayerPart part, const std::optional<QPointF>& point)> touched;
        /// It was there for a short time only.
        std::function<void(LayerPart part)> tapped;
        /// The finger that came down at that point moves. `serial` stands for its coming.
        std::function<void(LayerPart part, const QPointF& pressed, std::uint32_t serial)> dragBegan;
        /// In points.
        std::function<QSizeF(LayerPart part)> size;
    };

    /// `display` has a seat that has touch.
    PocketTouch(const WaylandDisplay& display, Events events);
    PocketTouch(const PocketTouch&) = delete;
    PocketTouch& operator=(const PocketTouch&) = delete;

    /// The part is gone.
    void left(LayerPart part);

private:
    /// The finger that counts.
    struct Finger {
        std::int32_t id;
        LayerPart part;
        QPointF point;
        std::uint32_t serial;
        /// In milliseconds of the compositor's clock.
        std::uint32_t since;
    };

    void listen();
    void down(const Finger& finger);
    void moved(std::int32_t id, const QPointF& point);
    void up(std::int32_t id, std::uint32_t time);
    void end();

    const Events events_;
    PressGesture gesture_;
    std::optional<Finger> finger_;
    const Owned<wl_touch> touch_;
};

}  // namespace stowpocket
