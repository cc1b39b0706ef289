// SPDX-License-Identifier: MIT
#include "views/controls/Symbol.h"

#include "views/controls/DesktopLook.h"

#include <QCache>

#include <cmath>

namespace stowpocket::Symbol {
namespace {

/// A symbol is slightly larger than the text beside it, so that both look equally large.
constexpr double sidePerPoint = 1.25;
constexpr int keptImages = 64;

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

    QImage image = pixels < 1 ? QImage() : drawnSymbol(name, pixels, pointSize * devicePixelRatio, weight, colors);
    if (image.isNull())
        return {};
    image.setDevicePixelRatio(devicePixelRatio);
    cache.insert(key, new QImage(image));
    return image;
}

}  // namespace stowpocket::Symbol
