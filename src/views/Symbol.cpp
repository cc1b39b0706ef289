// SPDX-License-Identifier: MIT
#include "views/Symbol.h"

#include <QCache>
#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

#include <cmath>

namespace stowpocket::Symbol {
namespace {

/// A symbol is a little larger than the text that it stands beside, so that both look equally large.
constexpr double sidePerPoint = 1.25;
constexpr int keptImages = 64;

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

QString cacheKey(std::string_view name, int pixels, FontWeight weight, const SymbolColors& colors, double ratio) {
    return QStringLiteral("%1 %2 %3 %4 %5 %6")
        .arg(QLatin1String(name.data(), qsizetype(name.size())))
        .arg(pixels)
        .arg(int(weight))
        .arg(colors.primary.rgba())
        .arg(colors.secondary.rgba())
        .arg(ratio);
}

}  // namespace

int side(double pointSize) {
    return static_cast<int>(std::lround(pointSize * sidePerPoint));
}

QImage image(std::string_view name, double pointSize, FontWeight weight, const SymbolColors& colors,
             double devicePixelRatio) {
    static QCache<QString, QImage> cache(keptImages);
    const int pixels = static_cast<int>(std::lround(side(pointSize) * devicePixelRatio));
    const QString key = cacheKey(name, pixels, weight, colors, devicePixelRatio);
    if (const QImage* const kept = cache.object(key))
        return *kept;

    QByteArray svg = drawing(name);
    if (svg.isEmpty() || pixels < 1)
        return {};
    svg.replace(strokeInDrawing, "stroke-width=\"" + strokeOf(weight) + '"');
    QImage image = rendered(svg, pixels, colors);
    image.setDevicePixelRatio(devicePixelRatio);
    cache.insert(key, new QImage(image));
    return image;
}

}  // namespace stowpocket::Symbol
