// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/wayland/LayerPocket.h"
#include "platform/linux/wayland/PocketPointer.h"
#include "platform/linux/wayland/WaylandDisplay.h"

#include <QPointF>
#include <QSizeF>

#include <cstdint>
#include <functional>
#include <optional>

namespace stowpocket {

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
