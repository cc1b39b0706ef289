// SPDX-License-Identifier: MIT
#include "views/controls/Picture.h"

#include <QPainter>

namespace stowpocket {

const QImage& Picture::image(double devicePixelRatio, const QColor& color) {
    if (!image_.isNull() && image_.devicePixelRatio() == devicePixelRatio && color_ == color)
        return image_;
    color_ = color;
    image_ = QImage((QSizeF(size_) * devicePixelRatio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image_.setDevicePixelRatio(devicePixelRatio);
    image_.fill(Qt::transparent);
    QPainter painter(&image_);
    painter.setRenderHint(QPainter::Antialiasing);
    paint_(painter);
    return image_;
}

}  // namespace stowpocket
