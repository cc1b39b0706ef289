// SPDX-License-Identifier: MIT
#include "platform/linux/wayland/PocketTouch.h"

#include <QGuiApplication>
#include <QStyleHints>

#include <utility>

namespace stowpocket {
namespace {

/// In milliseconds. A finger that stays longer does not tap.
constexpr std::uint32_t longestTap = 250;

QPointF pointOf(wl_fixed_t x, wl_fixed_t y) {
    return {wl_fixed_to_double(x), wl_fixed_to_double(y)};
}

}  // namespace

PocketTouch::PocketTouch(const WaylandDisplay& display, Events events)
    : events_(std::move(events)),
      gesture_(QGuiApplication::styleHints()->startDragDistance()),
      touch_(wl_seat_get_touch(display.seat.get())) {
    listen();
}

void PocketTouch::listen() {
    static constexpr wl_touch_listener listener{
        .down =
            [](void* data, wl_touch*, std::uint32_t serial, std::uint32_t time, wl_surface* surface, std::int32_t id,
               wl_fixed_t x, wl_fixed_t y) {
                auto* const self = static_cast<PocketTouch*>(data);
                if (const std::optional<LayerPart> part = self->events_.part(surface); part && !self->finger_)
                    self->down({id, *part, pointOf(x, y), serial, time});
            },
        .up = [](void* self, wl_touch*, std::uint32_t, std::uint32_t time,
                 std::int32_t id) { static_cast<PocketTouch*>(self)->up(id, time); },
        .motion = [](void* self, wl_touch*, std::uint32_t, std::int32_t id, wl_fixed_t x,
                     wl_fixed_t y) { static_cast<PocketTouch*>(self)->moved(id, pointOf(x, y)); },
        .frame = [](void*, wl_touch*) {},
        .cancel = [](void* self, wl_touch*) { static_cast<PocketTouch*>(self)->end(); },
        .shape = [](void*, wl_touch*, std::int32_t, wl_fixed_t, wl_fixed_t) {},
        .orientation = [](void*, wl_touch*, std::int32_t, wl_fixed_t) {}};
    wl_touch_add_listener(touch_.get(), &listener, this);
}

void PocketTouch::down(const Finger& finger) {
    finger_ = finger;
    static_cast<void>(gesture_.pressed(PressGesture::Button::main, finger.point));
    events_.touched(finger.part, finger.point);
}

void PocketTouch::moved(std::int32_t id, const QPointF& point) {
    if (!finger_ || finger_->id != id)
        return;
    finger_->point = point;
    if (gesture_.moved(point) != PressGesture::Outcome::drag)
        return;
    // Not every compositor tells of this finger again once it drags.
    const Finger dragging = *finger_;
    end();
    events_.dragBegan(dragging.part, gesture_.start(), dragging.serial);
}

void PocketTouch::up(std::int32_t id, std::uint32_t time) {
    if (!finger_ || finger_->id != id)
        return;
    const Finger lifted = *finger_;
    const bool isTap = gesture_.released(PressGesture::Button::main, lifted.point, events_.size(lifted.part)) ==
                           PressGesture::Outcome::click &&
                       time - lifted.since < longestTap;
    end();
    if (isTap)
        events_.tapped(lifted.part);
}

/// The finger was lifted, has begun a drag, or means something to the compositor alone.
void PocketTouch::end() {
    gesture_.left();
    if (const std::optional<Finger> gone = std::exchange(finger_, std::nullopt))
        events_.touched(gone->part, std::nullopt);
}

void PocketTouch::left(LayerPart part) {
    if (finger_ && finger_->part == part)
        end();
}

}  // namespace stowpocket
