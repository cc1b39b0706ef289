// SPDX-License-Identifier: MIT
// The program's own drawings, for desktops that have no such symbols themselves.
#include "views/SymbolDrawing.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace stowpocket {
namespace {

/// How the drawings write what is filled in here: the stroke of the regular weight and the two colours.
constexpr QByteArrayView strokeInDrawing = "stroke-width=\"1.8\"";
constexpr QByteArrayView primaryInDrawing = "currentColor";
constexpr QByteArrayView secondaryInDrawing = "#ff0000";

QByteArray strokeOf(FontWeight weight) {
    switch (weight) {
    case FontWeight::regular:
        return "1.8";
    case FontWeight::medium:
        return "2.1";
    case FontWeight::semibold:
        return "2.4";
    case FontWeight::bold:
        return "2.8";
    }
    return "1.8";
}

QByteArray drawing(std::string_view name) {
    QFile file(QStringLiteral(":/symbols/%1.svg").arg(QLatin1String(name.data(), qsizetype(name.size()))));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The primary colour's transparency is laid over the finished drawing: lines that cross would show twice otherwise.
QImage rendered(QByteArray svg, int pixels, const SymbolColors& colors) {
    svg.replace(secondaryInDrawing, colors.secondary.name().toLatin1());
    svg.replace(primaryInDrawing, colors.primary.name().toLatin1());
    QSvgRenderer renderer(svg);
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(image.rect(), QColor(0, 0, 0, colors.primary.alpha()));
    return image;
}

}  // namespace

QImage drawnSymbol(std::string_view name, int pixels, double /*fontSize*/, FontWeight weight,
                   const SymbolColors& colors) {
    QByteArray svg = drawing(name);
    if (svg.isEmpty())
        return {};
    svg.replace(strokeInDrawing, "stroke-width=\"" + strokeOf(weight) + '"');
    return rendered(svg, pixels, colors);
}

}  // namespace stowpocket
