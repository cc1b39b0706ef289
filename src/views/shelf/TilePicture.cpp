// SPDX-License-Identifier: MIT
#include "views/shelf/TilePicture.h"

#include "presentation/TileCommands.h"
#include "views/controls/Drawing.h"
#include "views/controls/Theme.h"

#include <QCache>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace stowpocket {
namespace {

constexpr double pictureRadius = 6;
constexpr double edgeWidth = 1;
constexpr int edgeStrength = 40;  // of 255
constexpr int badgePointSize = 11;

/// Adds a faint dark outline to the picture's content, so that white paper is visible on a light window.
QImage withEdge(const QImage& picture) {
    QImage shade = picture;
    QPainter shading(&shade);
    shading.setCompositionMode(QPainter::CompositionMode_SourceIn);
    shading.fillRect(QRectF(QPointF(), shade.deviceIndependentSize()), QColor(0, 0, 0, edgeStrength));
    shading.end();
    QImage edged = picture;
    QPainter painter(&edged);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
    for (const QPointF offset :
         {QPointF(0, edgeWidth), QPointF(edgeWidth, 0), QPointF(-edgeWidth, 0), QPointF(0, -edgeWidth)})
        painter.drawImage(offset, shade);
    return edged;
}

QImage blank(const QSize& size, double ratio) {
    QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    return image;
}

/// Fits the picture into its frame. It is painted into the frame's shape, since clipping leaves jagged corners.
QImage framed(const QImage& picture, double ratio) {
    constexpr QSize size(tilePictureSide, tilePictureSide);
    QImage framed = blank(size, ratio);
    if (picture.isNull())
        return framed;

    const QRectF frame(QPointF(), size);
    QRectF place(QPointF(), QSizeF(picture.size()).scaled(size, Qt::KeepAspectRatio));
    place.moveCenter(frame.center());
    QPainter painter(&framed);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    QPainterPath shape;
    shape.addRect(place);
    painter.fillPath(shape.intersected(continuousRoundedRect(frame, pictureRadius)), Qt::black);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.drawImage(place, picture);
    painter.end();
    return withEdge(framed);
}

void paintBadge(QPainter& painter, const DragPictureLayout& layout, const QFont& font, const QPalette& palette) {
    const QRectF badge(layout.badge.x, layout.badge.y, layout.badge.width, layout.badge.height);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::color(ColorRole::accentFill, palette));
    painter.drawRoundedRect(badge, badge.height() / 2, badge.height() / 2);
    painter.setFont(font);
    painter.setPen(Theme::color(ColorRole::onBanner, palette));
    painter.drawText(badge, Qt::AlignCenter, QString::fromStdString(layout.badgeText));
}

}  // namespace

QImage tilePicture(const QImage& picture, double devicePixelRatio) {
    // As many as a tall popover shows at a time; each takes 9 KB on a screen of single density.
    constexpr int keptPictures = 48;
    static QCache<std::pair<qint64, double>, QImage> cache(keptPictures);
    const std::pair key(picture.cacheKey(), devicePixelRatio);
    if (const QImage* const kept = cache.object(key))
        return *kept;
    QImage image = framed(picture, devicePixelRatio);
    cache.insert(key, new QImage(image));
    return image;
}

DragPicture dragPicture(std::size_t fileCount, const std::vector<QImage>& pictures, FileCount count,
                        const QPalette& palette, double devicePixelRatio) {
    const QFont font = Theme::font(badgePointSize, FontWeight::semibold);
    const DragPictureLayout layout = layOutDragPicture(fileCount, tilePictureSide, [&](const std::string& text) {
        return QFontMetricsF(font).horizontalAdvance(QString::fromStdString(text));
    });
    const QSize size(int(std::ceil(layout.size.width)), int(std::ceil(layout.size.height)));
    QImage image = blank(size, devicePixelRatio);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    for (std::size_t index = std::min(pictures.size(), layout.pictures.size()); index-- > 0;)
        painter.drawImage(QPointF(layout.pictures[index].x, layout.pictures[index].y), pictures[index]);
    if (fileCount > 1 && count == FileCount::drawn)
        paintBadge(painter, layout, font, palette);
    painter.end();
    const Point& front = layout.pictures.front();
    return {QPixmap::fromImage(image), QPoint(int(front.x), int(front.y))};
}

}  // namespace stowpocket
