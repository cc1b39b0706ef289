// SPDX-License-Identifier: MIT
#include "platform/linux/x11/X11Pixels.h"

namespace stowpocket {

QImage x11Pixels(const X11Connection& connection, xcb_window_t window, const QRect& part) {
    const auto cookie =
        xcb_get_image(connection.raw(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, static_cast<std::int16_t>(part.x()),
                      static_cast<std::int16_t>(part.y()), static_cast<std::uint16_t>(part.width()),
                      static_cast<std::uint16_t>(part.height()), ~0u);
    const XcbAnswer<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection.raw(), cookie, nullptr));
    constexpr qsizetype bytesPerPixel = 4;
    if (!reply || (reply->depth != 24 && reply->depth != 32) ||
        xcb_get_image_data_length(reply.get()) < bytesPerPixel * part.width() * part.height())
        return {};
    const QImage pixels(xcb_get_image_data(reply.get()), part.width(), part.height(), part.width() * bytesPerPixel,
                        QImage::Format_RGB32);
    return pixels.copy();
}

QImage x11ParentBackground(const X11Connection& connection, xcb_window_t window, const QSize& size) {
    const std::uint32_t parentRelative = XCB_BACK_PIXMAP_PARENT_RELATIVE;
    xcb_change_window_attributes(connection.raw(), window, XCB_CW_BACK_PIXMAP, &parentRelative);
    xcb_clear_area(connection.raw(), 0, window, 0, 0, 0, 0);
    const QImage background = x11Pixels(connection, window, QRect({0, 0}, size));
    if (!background.isNull())
        return background;
    const std::optional<QRect> place = connection.geometryOnRoot(window);
    return place ? x11Pixels(connection, window, QRect({0, 0}, place->size())) : QImage();
}

}  // namespace stowpocket
