// SPDX-License-Identifier: MIT
#include "platform/linux/tray/WaylandPocketList.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/qt/QtPopover.h"

#include <QGuiApplication>
#include <QScreen>

#include <cmath>
#include <utility>

namespace stowpocket {
namespace {

Point pointOf(const QPointF& point) {
    return {point.x(), point.y()};
}

}  // namespace

WaylandPocketList::WaylandPocketList(Dispatch& dispatch, const IconDragSource& source, PocketListPainter paint,
                                     Surface surface)
    : source_(source),
      paint_(std::move(paint)),
      surface_(std::move(surface)),
      folding_(dispatch, [this](bool isUnfolded) { becomeUnfolded(isUnfolded); }) {}

void WaylandPocketList::setAllowed(bool isAllowed) {
    isAllowed_ = isAllowed;
    if (!isAllowed)
        fold();
}

void WaylandPocketList::pocketMoved(const LayerPlace& place) {
    if (std::exchange(pocket_, place) != place && folding_.isUnfolded())
        update();
}

void WaylandPocketList::pointAt(LayerPart part, const std::optional<QPointF>& point, PocketFolding::By by) {
    folding_.setPointedAt(point.has_value() && isAllowed_, by);
    if (part == LayerPart::list && list_.pointAt(point ? std::optional(pointOf(*point)) : std::nullopt))
        surface_.repaint();
}

void WaylandPocketList::scroll(double steps, double points) {
    if (list_.scroll(steps * PocketList::wheelStep + points))
        surface_.repaint();
}

void WaylandPocketList::becomeUnfolded(bool isUnfolded) {
    if (isUnfolded) {
        if (source_.watch)
            changes_ = source_.watch([this] { update(); });
        return update();
    }
    changes_.clear();
    list_.clear();
    surface_.hide();
}

void WaylandPocketList::update() {
    std::vector<WaitingFile> files = source_.list ? source_.list() : std::vector<WaitingFile>();
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (files.empty() || screen == nullptr)
        return fold();
    const QRect whole = screen->geometry();
    const QRect pocket(QPoint(whole.width() - pocket_.fromRight - pocket_.size.width(), pocket_.fromTop),
                       pocket_.size);
    list_.lay(std::move(files), rectOf(pocket), rectOf(usableArea(*screen).translated(-whole.topLeft())));
    const Rect& frame = list_.frame();
    surface_.show({.size = QSizeF(frame.width, frame.height).toSize(),
                   .fromTop = static_cast<int>(frame.y),
                   .fromRight = whole.width() - static_cast<int>(frame.right()),
                   .output = pocket_.output});
    surface_.repaint();
}

QImage WaylandPocketList::picture(double scale, const QPalette& palette) const {
    const QSizeF size(list_.frame().width, list_.frame().height);
    QImage picture((size * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paintPanel(painter, size, palette, true);
    paint_(painter, list_, palette);
    return picture;
}

std::vector<FileURL> WaylandPocketList::filesAt(const QPointF& point) const {
    const std::optional<PocketList::Row> row = list_.draggableAt(pointOf(point));
    if (!row)
        return {};
    return row->file != nullptr ? source_.file(row->file->id) : source_.files(IconDrag::everything);
}

}  // namespace stowpocket
