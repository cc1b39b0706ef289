// SPDX-License-Identifier: MIT
#include "platform/linux/wayland/PocketPointer.h"

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
            [](void* self, wl_pointer*, std::uint32_t serial, wl_surface*, wl_fixed_t x, wl_fixed_t y) {
                static_cast<PocketPointer*>(self)->point_ = {wl_fixed_to_double(x), wl_fixed_to_double(y)};
                static_cast<PocketPointer*>(self)->entered(serial);
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
        .axis = [](void*, wl_pointer*, std::uint32_t, std::uint32_t, wl_fixed_t) {},
        .frame = [](void*, wl_pointer*) {},
        .axis_source = [](void*, wl_pointer*, std::uint32_t) {},
        .axis_stop = [](void*, wl_pointer*, std::uint32_t, std::uint32_t) {},
        .axis_discrete = [](void*, wl_pointer*, std::uint32_t, std::int32_t) {}};
    wl_pointer_add_listener(pointer_.get(), &listener, this);
}

/// The pointer has no look of its own over a surface until it is given one.
void PocketPointer::entered(std::uint32_t serial) {
    const int scale = static_cast<int>(std::ceil(events_.scale()));
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
    gesture_.left();
    theme_.reset();
}

void PocketPointer::button(std::uint32_t serial, std::uint32_t code, bool isPressed) {
    if (!isPressed)
        return act(gesture_.released(buttonOf(code), point_, events_.size()));
    pressSerial_ = serial;
    act(gesture_.pressed(buttonOf(code), point_));
}

void PocketPointer::moved(const QPointF& point) {
    point_ = point;
    act(gesture_.moved(point));
}

void PocketPointer::act(PressGesture::Outcome outcome) {
    switch (outcome) {
    case PressGesture::Outcome::nothing:
        return;
    case PressGesture::Outcome::click:
        return events_.clicked();
    case PressGesture::Outcome::menu:
        return events_.menuAsked();
    case PressGesture::Outcome::drag:
        return events_.dragBegan(gesture_.start(), pressSerial_);
    }
}

}  // namespace stowpocket
