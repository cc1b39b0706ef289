// SPDX-License-Identifier: MIT
#include "views/controls/TraySymbol.h"

#include <QPainter>
#include <QPainterPath>

namespace stowpocket {
namespace {

/// The edge of the tray, from left to right.
constexpr QPointF leftEdge{2, 14.4};
constexpr QPointF rightEdge{22, 14.4};
/// The circles that round the corners at the bottom and at the top.
constexpr QRectF bottomLeft{2, 16, 5, 5};
constexpr QRectF bottomRight{17, 16, 5, 5};
constexpr QRectF topLeft{5.1, 6.6, 4, 4};
constexpr QRectF topRight{14.9, 6.6, 4, 4};
/// How far a side leans, in degrees.
constexpr double lean = 20;

QPainterPath box() {
    QPainterPath path({8, 6.6});
    path.arcTo(topLeft, 90, 90 - lean);
    path.lineTo(leftEdge);
    path.arcTo(bottomLeft, 180, 90);
    path.arcTo(bottomRight, 270, 90);
    path.lineTo(rightEdge);
    path.arcTo(topRight, lean, 90 - lean);
    path.lineTo(16, 6.6);
    return path;
}

QPainterPath edge() {
    QPainterPath path(leftEdge);
    path.lineTo(7.4, leftEdge.y());
    path.cubicTo({7.9, 16.4}, {9.6, 17.6}, {12, 17.6});
    path.cubicTo({14.4, 17.6}, {16.1, 16.4}, {16.6, rightEdge.y()});
    path.lineTo(rightEdge);
    return path;
}

QPainterPath bottom() {
    QPainterPath path = edge();
    path.arcTo(bottomRight, 0, -90);
    path.arcTo(bottomLeft, 270, -90);
    path.closeSubpath();
    return path;
}

QPainterPath arrow() {
    QPainterPath path({12, 2});
    path.lineTo(12, 12.2);
    path.moveTo(8.6, 9);
    path.lineTo(12, 12.4);
    path.lineTo(15.4, 9);
    return path;
}

}  // namespace

bool paintTraySymbol(QPainter& painter, std::string_view name, double strokeWidth, const QColor& color) {
    const bool isFilled = name == "tray.and.arrow.down.fill";
    if (!isFilled && name != "tray.and.arrow.down")
        return false;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, strokeWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(box());
    painter.drawPath(arrow());
    painter.setBrush(isFilled ? QBrush(color) : QBrush());
    painter.drawPath(isFilled ? bottom() : edge());
    return true;
}

}  // namespace stowpocket
