// SPDX-License-Identifier: MIT
#include "views/shelf/PocketRows.h"

#include "platform/qt/QtImages.h"
#include "platform/qt/QtPopover.h"
#include "presentation/TileCommands.h"
#include "views/controls/Drawing.h"
#include "views/controls/Theme.h"
#include "views/shelf/TilePicture.h"

#include <QFontMetrics>
#include <QPainter>

#include <vector>

namespace stowpocket {
namespace {

constexpr double pictureSide = 28;
constexpr double pictureMargin = 6;
constexpr double textMargin = 8;
constexpr int namePointSize = 12;
constexpr int missingPointSize = 10;
constexpr double pointedRadius = 6;
constexpr double pointedOpacity = 0.09;
constexpr double markOpacity = 0.35;

/// Fits the picture into the place at the row's left end.
void paintPicture(QPainter& painter, const QRectF& row, const QImage& picture) {
    QRectF place(QPointF(), picture.deviceIndependentSize().scaled(pictureSide, pictureSide, Qt::KeepAspectRatio));
    place.moveCenter({row.left() + pictureMargin + pictureSide / 2, row.center().y()});
    painter.drawImage(place, picture);
}

/// What is left of a row for its text.
QRectF besidePicture(const QRectF& row) {
    return row.adjusted(pictureMargin + pictureSide + textMargin, 0, -textMargin, 0);
}

void paintText(QPainter& painter, const QRectF& room, const QString& text, const QFont& font, const QColor& color) {
    painter.setFont(font);
    painter.setPen(color);
    const QString shown = QFontMetrics(font).elidedText(text, Qt::ElideMiddle, static_cast<int>(room.width()));
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
}

void paintPointed(QPainter& painter, const QRectF& row, const QPalette& palette) {
    painter.fillPath(continuousRoundedRect(row, pointedRadius),
                     Theme::color(ColorRole::primary, palette, pointedOpacity));
}

void paintFile(QPainter& painter, const PocketList::Row& row, const QPalette& palette) {
    const WaitingFile& file = *row.file;
    const QRectF place = exactRect(row.place);
    if (row.isPointedAt && !file.isMissing)
        paintPointed(painter, place, palette);
    paintPicture(painter, place, tilePicture(qtImage(file.picture), painter.device()->devicePixelRatioF()));
    QRectF room = besidePicture(place);
    if (file.isMissing) {
        const QFont font = Theme::font(missingPointSize, FontWeight::medium);
        const QString text = QStringLiteral("Missing");
        const double width = QFontMetricsF(font).horizontalAdvance(text);
        paintText(painter, {room.right() - width, room.y(), width + 1, room.height()}, text, font,
                  Theme::color(ColorRole::red, palette));
        room.adjust(0, 0, -width - textMargin, 0);
    }
    paintText(painter, room, QString::fromStdString(file.name), Theme::font(namePointSize),
              Theme::color(file.isMissing ? ColorRole::secondary : ColorRole::primary, palette));
}

void paintAll(QPainter& painter, const PocketList& list, const PocketList::Row& row, const QPalette& palette) {
    const QRectF place = exactRect(row.place);
    if (row.isPointedAt)
        paintPointed(painter, place, palette);
    const double ratio = painter.device()->devicePixelRatioF();
    std::vector<QImage> pictures;
    for (const WaitingFile& file : list.files())
        if (!file.isMissing && pictures.size() < mostDragPictures)
            pictures.push_back(tilePicture(qtImage(file.picture), ratio));
    const DragPicture stack = dragPicture(pictures.size(), pictures, FileCount::bySystem, palette, ratio);
    paintPicture(painter, place, stack.pixmap.toImage());
    paintText(painter, besidePicture(place), QString::fromStdString(list.textForAll()),
              Theme::font(namePointSize, FontWeight::semibold), Theme::color(ColorRole::primary, palette));
    const double middle = (place.bottom() + list.view().y) / 2;
    painter.fillRect(QRectF(place.x(), middle - 0.5, place.width(), 1), Theme::color(ColorRole::separator, palette));
}

}  // namespace

void paintPocketRows(QPainter& painter, const PocketList& list, const QPalette& palette) {
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (const std::optional<PocketList::Row> row = list.rowForAll())
        paintAll(painter, list, *row, palette);
    if (const std::optional<Rect> mark = list.scrollMark()) {
        const QRectF place = exactRect(*mark);
        painter.fillPath(continuousRoundedRect(place, place.width() / 2),
                         Theme::color(ColorRole::primary, palette, markOpacity));
    }
    painter.setClipRect(exactRect(list.view()));
    for (const PocketList::Row& row : list.rows())
        paintFile(painter, row, palette);
}

}  // namespace stowpocket
