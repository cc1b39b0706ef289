// SPDX-License-Identifier: MIT
#include "views/controls/DesktopLook.h"

#include "platform/qt/QtImages.h"

#include <QBuffer>
#include <QFile>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

// Desktops without symbols and colours of their own: the program's drawings, and the colours of the toolkit's
// palette.
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
/// The slant of the sides, in degrees.
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

/// Paints the tray with an arrow into it, or the same tray filled, into a rectangle of 24 by 24 units. Returns false
/// if `name` is neither. Every start paints this icon: as an SVG file it would need the SVG library, which nothing
/// else in an idle program does.
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

/// The placeholders in the drawings: the stroke of the regular weight and the two colours.
constexpr QByteArrayView strokeInDrawing = "stroke-width=\"1.8\"";
constexpr QByteArrayView primaryInDrawing = "currentColor";
constexpr QByteArrayView secondaryInDrawing = "#ff0000";

/// The side of the square that all are drawn in.
constexpr double sideInDrawing = 24;

double strokeOf(FontWeight weight) {
    switch (weight) {
    case FontWeight::regular:
        return 1.8;
    case FontWeight::medium:
        return 2.1;
    case FontWeight::semibold:
        return 2.4;
    case FontWeight::bold:
        return 2.8;
    }
    return 1.8;
}

QByteArray drawing(std::string_view name) {
    QFile file(QStringLiteral(":/symbols/%1.svg").arg(QLatin1String(name.data(), qsizetype(name.size()))));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Null if there is no drawing of that name.
QImage rendered(std::string_view name, int pixels, FontWeight weight, const SymbolColors& colors) {
    QByteArray svg = drawing(name);
    svg.replace(strokeInDrawing, "stroke-width=\"" + QByteArray::number(strokeOf(weight)) + '"');
    svg.replace(secondaryInDrawing, colors.secondary.name().toLatin1());
    svg.replace(primaryInDrawing, colors.primary.name().toLatin1());
    QBuffer file(&svg);
    return svg.isEmpty() ? QImage() : svgImage(file, QSize(pixels, pixels));
}

/// In one colour: the primary part is cut out of the disc. Null if there is no disc.
QImage cutOut(std::string_view name, int pixels, FontWeight weight, const QColor& color) {
    if (!drawing(name).contains(secondaryInDrawing.toByteArray()))
        return {};
    QImage image = rendered(name, pixels, weight, {.primary = Qt::black, .secondary = Qt::white});
    image.convertTo(QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::transform(line, line + image.width(), line, [](QRgb pixel) { return qRgba(0, 0, 0, qRed(pixel)); });
    }
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color.rgb());
    return image;
}

/// Null if `name` is not that of the program's icon.
QImage icon(std::string_view name, int pixels, FontWeight weight, const SymbolColors& colors) {
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(pixels / sideInDrawing, pixels / sideInDrawing);
    return paintTraySymbol(painter, name, strokeOf(weight), colors.primary.rgb()) ? image : QImage();
}

}  // namespace

std::optional<QColor> systemColor(ColorRole, Appearance) {
    return std::nullopt;
}

/// Transparency is applied to the finished drawing; otherwise crossing lines would be darker.
QImage drawnSymbol(std::string_view name, int pixels, double /*fontSize*/, FontWeight weight,
                   const SymbolColors& colors) {
    QImage image = icon(name, pixels, weight, colors);
    if (image.isNull() && colors.primary == colors.secondary)
        image = cutOut(name, pixels, weight, colors.primary);
    if (image.isNull())
        image = rendered(name, pixels, weight, colors);
    if (image.isNull())
        return {};
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(image.rect(), QColor(0, 0, 0, colors.primary.alpha()));
    return image;
}

}  // namespace stowpocket
