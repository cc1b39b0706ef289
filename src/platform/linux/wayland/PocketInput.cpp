// SPDX-License-Identifier: MIT
#include "platform/linux/wayland/PocketInput.h"

#include <QGuiApplication>
#include <QStyleHints>

#include <linux/input-event-codes.h>

#include <array>
#include <cmath>
#include <utility>

namespace stowpocket {
namespace {

PressGesture::Button buttonOf(std::uint32_t code) {
    if (code == BTN_LEFT)
        return PressGesture::Button::main;
    return code == BTN_RIGHT ? PressGesture::Button::menu : PressGesture::Button::other;
}

/// What toolkits take where nothing else is said.
constexpr int usualCursorSize = 24;
/// By the names of the freedesktop cursor specification and of the X server.
constexpr std::array arrowNames{"default", "left_ptr"};

int cursorSize() {
    bool isNumber = false;
    const int size = qEnvironmentVariableIntValue("XCURSOR_SIZE", &isNumber);
    return isNumber && size > 0 ? size : usualCursorSize;
}

/// In milliseconds. A finger that stays longer does not tap.
constexpr std::uint32_t longestTap = 250;

QPointF pointOf(wl_fixed_t x, wl_fixed_t y) {
    return {wl_fixed_to_double(x), wl_fixed_to_double(y)};
}

}  // namespace

PocketPointer::PocketPointer(WaylandDisplay& display, Events events)
    : display_(display),
      events_(std::move(events)),
      gesture_(QGuiApplication::styleHints()->startDragDistance()),
      arrow_(wl_compositor_create_surface(display.compositor.get())),
      pointer_(wl_seat_get_pointer(display.seat.get())) {
    listen();
}

void PocketPointer::listen() {
    static constexpr wl_pointer_listener listener{
        .enter =
            [](void* self, wl_pointer*, std::uint32_t serial, wl_surface* surface, wl_fixed_t x, wl_fixed_t y) {
                static_cast<PocketPointer*>(self)->entered(serial, surface,
                                                           {wl_fixed_to_double(x), wl_fixed_to_double(y)});
            },
        .leave = [](void* self, wl_pointer*, std::uint32_t,
                    wl_surface*) { static_cast<PocketPointer*>(self)->left(); },
        .motion =
            [](void* self, wl_pointer*, std::uint32_t, wl_fixed_t x, wl_fixed_t y) {
                static_cast<PocketPointer*>(self)->moved({wl_fixed_to_double(x), wl_fixed_to_double(y)});
            },
        .button =
            [](void* self, wl_pointer*, std::uint32_t serial, std::uint32_t, std::uint32_t code,
               std::uint32_t state) {
                static_cast<PocketPointer*>(self)->button(serial, code, state == WL_POINTER_BUTTON_STATE_PRESSED);
            },
        .axis =
            [](void* self, wl_pointer*, std::uint32_t, std::uint32_t axis, wl_fixed_t points) {
                if (axis == WL_POINTER_AXIS_VERTICAL_SCROLL)
                    static_cast<PocketPointer*>(self)->turned(wl_fixed_to_double(points));
            },
        .frame = [](void* self, wl_pointer*) { static_cast<PocketPointer*>(self)->hasSteps_ = false; },
        .axis_source = [](void*, wl_pointer*, std::uint32_t) {},
        .axis_stop = [](void*, wl_pointer*, std::uint32_t, std::uint32_t) {},
        .axis_discrete =
            [](void* data, wl_pointer*, std::uint32_t axis, std::int32_t steps) {
                auto* const self = static_cast<PocketPointer*>(data);
                if (axis != WL_POINTER_AXIS_VERTICAL_SCROLL || !self->part_)
                    return;
                self->hasSteps_ = true;
                self->events_.scrolled(*self->part_, steps, 0);
            }};
    wl_pointer_add_listener(pointer_.get(), &listener, this);
}

void PocketPointer::entered(std::uint32_t serial, const wl_surface* surface, const QPointF& point) {
    part_ = events_.part(surface);
    point_ = point;
    if (!part_)
        return;
    showArrow(serial, static_cast<int>(std::ceil(events_.scale(*part_))));
    events_.pointedAt(*part_, point);
}

/// The pointer has no look of its own over a surface until it is given one.
void PocketPointer::showArrow(std::uint32_t serial, int scale) {
    if (!theme_ || scale != themeScale_) {
        const QByteArray name = qgetenv("XCURSOR_THEME");
        theme_.reset(wl_cursor_theme_load(name.isEmpty() ? nullptr : name.constData(), cursorSize() * scale,
                                          display_.memory.get()));
        themeScale_ = scale;
    }
    wl_cursor* cursor = nullptr;
    for (const char* const name : arrowNames)
        if (theme_ && cursor == nullptr)
            cursor = wl_cursor_theme_get_cursor(theme_.get(), name);
    if (cursor == nullptr || cursor->image_count == 0)
        return;
    wl_cursor_image* const image = cursor->images[0];
    // A buffer must have a whole number of points.
    const bool isWhole = image->width % static_cast<std::uint32_t>(scale) == 0 &&
                         image->height % static_cast<std::uint32_t>(scale) == 0;
    const int points = isWhole ? scale : 1;
    wl_surface_set_buffer_scale(arrow_.get(), points);
    wl_surface_attach(arrow_.get(), wl_cursor_image_get_buffer(image), 0, 0);
    wl_surface_damage(arrow_.get(), 0, 0, static_cast<std::int32_t>(image->width),
                      static_cast<std::int32_t>(image->height));
    wl_surface_commit(arrow_.get());
    wl_pointer_set_cursor(pointer_.get(), serial, arrow_.get(), static_cast<std::int32_t>(image->hotspot_x) / points,
                          static_cast<std::int32_t>(image->hotspot_y) / points);
}

/// The theme has all looks of the pointer, most of which are never used here.
void PocketPointer::left() {
    const std::optional<LayerPart> part = std::exchange(part_, std::nullopt);
    gesture_.left();
    theme_.reset();
    if (part)
        events_.pointedAt(*part, std::nullopt);
}

bool PocketPointer::left(LayerPart part) {
    if (part_ != part)
        return false;
    part_.reset();
    left();
    return true;
}

void PocketPointer::button(std::uint32_t serial, std::uint32_t code, bool isPressed) {
    if (!part_)
        return;
    if (!isPressed)
        return act(gesture_.released(buttonOf(code), point_, events_.size(*part_)));
    pressSerial_ = serial;
    const PressGesture::Outcome outcome = gesture_.pressed(buttonOf(code), point_);
    events_.pressed(*part_);
    act(outcome);
}

void PocketPointer::moved(const QPointF& point) {
    point_ = point;
    if (!part_)
        return;
    events_.pointedAt(*part_, point);
    act(gesture_.moved(point));
}

void PocketPointer::turned(double points) {
    if (part_ && !hasSteps_)
        events_.scrolled(*part_, 0, points);
}

void PocketPointer::act(PressGesture::Outcome outcome) {
    if (!part_)
        return;
    switch (outcome) {
    case PressGesture::Outcome::nothing:
        return;
    case PressGesture::Outcome::click:
        return events_.clicked(*part_);
    case PressGesture::Outcome::menu:
        return events_.menuAsked();
    case PressGesture::Outcome::drag:
        return events_.dragBegan(*part_, gesture_.start(), pressSerial_);
    }
}

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
