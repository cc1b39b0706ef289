// SPDX-License-Identifier: MIT
#include "views/controls/Drawing.h"

#include "views/controls/Compose.h"

#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <array>

namespace stowpocket {
namespace {

/// In radii from the corner: where the bend begins, and where its control points are. With these values the curve
/// passes through the middle of the circular arc.
constexpr double bendBegins = 1.2;
constexpr double controlPoint = 0.25;

}  // namespace

QPainterPath continuousRoundedRect(const QRectF& rect, double radius) {
    const double bend = std::min({radius * bendBegins, rect.width() / 2, rect.height() / 2});
    const double control = bend * controlPoint / bendBegins;
    struct Corner {
        QPointF tip;
        QPointF before;  ///< unit vector back along the edge that leads here
        QPointF after;   ///< unit vector along the edge that leads on
    };
    const std::array<Corner, 4> corners{{
        {rect.topRight(), {-1, 0}, {0, 1}},
        {rect.bottomRight(), {0, -1}, {-1, 0}},
        {rect.bottomLeft(), {1, 0}, {0, -1}},
        {rect.topLeft(), {0, 1}, {1, 0}},
    }};
    QPainterPath path(rect.topLeft() + QPointF(bend, 0));
    for (const Corner& corner : corners) {
        path.lineTo(corner.tip + corner.before * bend);
        path.cubicTo(corner.tip + corner.before * control, corner.tip + corner.after * control,
                     corner.tip + corner.after * bend);
    }
    path.closeSubpath();
    return path;
}

QColor mixedColor(const QColor& from, const QColor& to, double share) {
    const auto mixed = [share = static_cast<float>(share)](float one, float other) {
        return std::clamp(one + (other - one) * share, 0.F, 1.F);
    };
    return QColor::fromRgbF(mixed(from.redF(), to.redF()), mixed(from.greenF(), to.greenF()),
                            mixed(from.blueF(), to.blueF()), mixed(from.alphaF(), to.alphaF()));
}

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

FadingView::FadingView(QLayout* stack) {
    compose(*this, stack);
}

void FadingView::setOpacity(double opacity) {
    if (opacity_ == opacity)
        return;
    opacity_ = opacity;
    update();
}

void FadingView::applyOpacity(QPainter& painter, const QWidget& view) {
    double product = 1;
    for (const QWidget* around = &view; around != nullptr && !around->isWindow(); around = around->parentWidget()) {
        if (const auto* const fading = dynamic_cast<const FadingView*>(around))
            product *= fading->opacity_;
    }
    painter.setOpacity(product);
}

FadingView* fading(QWidget* view) {
    return new FadingView(vstack(0, view));
}

}  // namespace stowpocket
