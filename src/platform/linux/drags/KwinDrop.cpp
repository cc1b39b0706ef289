// SPDX-License-Identifier: MIT
#include "platform/linux/drags/KwinDrop.h"

#include <QCoreApplication>

#include <array>
#include <chrono>
#include <utility>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

/// Targets ask within some 20 ms. Those that know the data already do not ask again, and wait for nothing either.
constexpr auto longestDelay = 200ms;

/// Windows of this depth may be transparent.
constexpr std::uint8_t blendingDepth = 32;

/// Returns 0 when the server has none.
xcb_visualid_t blendingVisual(const xcb_screen_t& screen) {
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0; xcb_depth_next(&depth)) {
        if (depth.data->depth == blendingDepth && depth.data->visuals_len > 0)
            return xcb_depth_visuals(depth.data)->visual_id;
    }
    return 0;
}

}  // namespace

void ReleaseCatcher::show() {
    xcb_connection_t* const server = connection_.raw();
    const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(server)).data;
    const xcb_visualid_t visual = blendingVisual(screen);
    if (visual == 0)
        return;
    colors_ = xcb_generate_id(server);
    xcb_create_colormap(server, XCB_COLORMAP_ALLOC_NONE, colors_, screen.root, visual);
    window_ = xcb_generate_id(server);
    // The server paints the background, as KWin passes over a window that nothing was painted into.
    const std::array<std::uint32_t, 4> values{0, 0, 1, colors_};
    xcb_create_window(server, blendingDepth, window_, screen.root, 0, 0, screen.width_in_pixels,
                      screen.height_in_pixels, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP,
                      values.data());
    constexpr std::uint32_t below = XCB_STACK_MODE_BELOW;
    xcb_configure_window(server, window_, XCB_CONFIG_WINDOW_STACK_MODE, &below);
    xcb_map_window(server, window_);
    xcb_flush(server);
}

void ReleaseCatcher::hide() {
    if (window_ == x11None)
        return;
    xcb_destroy_window(connection_.raw(), std::exchange(window_, x11None));
    xcb_free_colormap(connection_.raw(), colors_);
    xcb_flush(connection_.raw());
}

KwinDrop::KwinDrop(const X11Connection& connection) : connection_(connection), catcher_(connection) {
    limit_.setSingleShot(true);
    connect(&limit_, &QTimer::timeout, this, &KwinDrop::releaseNow);
}

KwinDrop::~KwinDrop() {
    catcher_.hide();
}

void KwinDrop::begin() {
    if (!isWaylandSession() || connection_.windowManagerName() != "KWin")
        return;
    catcher_.show();
    // The filter that was installed last sees an event first, and Qt installs its own when the drag starts.
    isOn_ = true;
    QTimer::singleShot(0, this, [this] {
        if (isOn_)
            QCoreApplication::instance()->installEventFilter(this);
    });
}

void KwinDrop::asked() {
    if (release_)
        limit_.start(0ms);
}

void KwinDrop::end() {
    isOn_ = false;
    catcher_.hide();
    QCoreApplication::instance()->removeEventFilter(this);
    limit_.stop();
    release_.reset();
}

/// Movements after the release must not move the drop either.
bool KwinDrop::eventFilter(QObject* receiver, QEvent* event) {
    if (release_)
        return event->type() == QEvent::MouseMove;
    if (event->type() != QEvent::MouseButtonRelease)
        return false;
    catcher_.hide();  // takes clicks as well
    receiver_ = receiver;
    release_.reset(event->clone());
    limit_.start(longestDelay);
    return true;
}

void KwinDrop::releaseNow() {
    QCoreApplication::instance()->removeEventFilter(this);
    const std::unique_ptr<QEvent> release = std::move(release_);
    if (release && receiver_)
        QCoreApplication::sendEvent(receiver_, release.get());
}

}  // namespace stowpocket
