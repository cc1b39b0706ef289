// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "presentation/ShelfPresentation.h"

#include <QImage>
#include <QPixmap>
#include <QPointer>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <optional>

namespace stowpocket {

struct ShelfItem;

/// Starts dragging a file out of `source`, with a picture and the point in it that the pointer holds.
using StartFileDrag =
    std::function<void(QWidget& source, const FileURL& url, const QPixmap& picture, QPoint hotSpot)>;

/// What tiles need from the desktop.
struct TileServices {
    StartFileDrag startFileDrag;
    ByteCountText byteCountText;
};

/// What a tile needs from the view that contains it.
struct TileActions {
    std::function<void()> onRemove;
    /// Returns the thumbnail of the item or its icon. Called whenever the tile paints.
    std::function<QImage()> picture;
    /// Gives the tile the keyboard focus.
    std::function<void()> onFocusWanted;
    TileServices services;
};

/// One file on the shelf: picture, name and size, and a remove button while the pointer is over it. It can be dragged
/// as long as the file exists.
class ShelfItemView : public QWidget {
public:
    ShelfItemView(const ShelfItem& item, TileActions actions, QWidget* parent);

    /// Shows the item as it is now.
    void setItem(const ShelfItem& item);
    void remove() const { actions_.onRemove(); }
    void takeFocus() const { actions_.onFocusWanted(); }
    /// Null unless the pointer is over the tile.
    [[nodiscard]] QWidget* removeButton() const { return removeButton_; }

    [[nodiscard]] QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void setHovered(bool isHovered);
    [[nodiscard]] bool isHovered() const { return removeButton_ != nullptr; }
    void showWholeName(QPoint place);
    void startDrag();
    [[nodiscard]] QImage framedPicture() const;
    void paintDecoration(QPainter& painter) const;
    void paintPicture(QPainter& painter) const;
    void paintName(QPainter& painter);
    void paintDetails(QPainter& painter) const;

    FileURL fileURL_;
    TilePresentation shown_;
    TileActions actions_;
    QPointer<QWidget> removeButton_;
    /// Computed when the tile is first painted.
    QStringList nameLines_;
    std::optional<QPoint> pressedAt_;
};

}  // namespace stowpocket
