// SPDX-License-Identifier: MIT
// The program's own drawings, for desktops that have no such symbols themselves.
#include "platform/qt/QtImages.h"
#include "views/controls/SymbolDrawing.h"
#include "views/controls/TraySymbol.h"

#include <QBuffer>
#include <QFile>
#include <QPainter>

#include <algorithm>

namespace stowpocket {
namespace {

/// How the drawings write what is filled in here: the stroke of the regular weight and the two colours.
constexpr QByteArrayView strokeInDrawing = "stroke-width=\"1.8\"";
constexpr QByteArrayView primaryInDrawing = "currentColor";
constexpr QByteArrayView secondaryInDrawing = "#ff0000";

/// All are drawn in a square of that side.
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

/// Null where there is no drawing of that name.
QImage rendered(std::string_view name, int pixels, FontWeight weight, const SymbolColors& colors) {
    QByteArray svg = drawing(name);
    svg.replace(strokeInDrawing, "stroke-width=\"" + QByteArray::number(strokeOf(weight)) + '"');
    svg.replace(secondaryInDrawing, colors.secondary.name().toLatin1());
    svg.replace(primaryInDrawing, colors.primary.name().toLatin1());
    QBuffer file(&svg);
    return svg.isEmpty() ? QImage() : svgImage(file, QSize(pixels, pixels));
}

/// In one colour: what would lie on the disc in the primary colour is cut out of it. Null where there is no disc.
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

/// Null where `name` is not that of the program's icon.
QImage icon(std::string_view name, int pixels, FontWeight weight, const SymbolColors& colors) {
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(pixels / sideInDrawing, pixels / sideInDrawing);
    return paintTraySymbol(painter, name, strokeOf(weight), colors.primary.rgb()) ? image : QImage();
}

}  // namespace

/// The primary colour's transparency is laid over the finished drawing: lines that cross would show twice otherwise.
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
