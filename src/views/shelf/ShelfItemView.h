// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/UUID.h"
#include "presentation/ShelfPresentation.h"
#include "presentation/TileCommands.h"

#include <QBasicTimer>
#include <QImage>
#include <QPointer>
#include <QStringList>
#include <QWidget>

#include <optional>

namespace stowpocket {

class ShelfItemView;

/// What tiles ask of the view that contains them.
class TileHost {
public:
    virtual ~TileHost() = default;
    /// The thumbnail of the tile's item, or its icon. Called whenever the tile paints.
    [[nodiscard]] virtual QImage pictureOf(const ShelfItemView& tile) = 0;
    /// Selects the tile and gives it the keyboard.
    virtual void click(ShelfItemView& tile, Selecting how) = 0;
    virtual void select(ShelfItemView& tile, Selecting how) = 0;
    /// Called while the main button is held over the tile; `held` is where, in the tile's picture or beside it.
    virtual void startDrag(ShelfItemView& tile, QPoint held) = 0;
    virtual void perform(ShelfItemView& tile, TileCommand command) = 0;
    /// Removes the item of this tile alone.
    virtual void remove(ShelfItemView& tile) = 0;
    /// `point` is a place on the screen.
    virtual void openMenu(ShelfItemView& tile, QPoint point) = 0;
    /// Gives the tile the keyboard focus.
    virtual void takeFocus(ShelfItemView& tile) = 0;
};

/// One file on the shelf: picture, name and size, and a remove button while the pointer is over it. It can be dragged
/// as long as the file exists.
class ShelfItemView : public QWidget {
public:
    /// `host` outlives it.
    ShelfItemView(const UUID& id, TilePresentation shown, TileHost& host, QWidget* parent);

    void setPresentation(TilePresentation shown);
    void setSelected(bool isSelected);
    /// Hovered tiles have a remove button. During a drag no tile is hovered.
    void setHovered(bool isHovered);
    [[nodiscard]] const UUID& id() const { return id_; }
    [[nodiscard]] TileHost& host() const { return host_; }
    [[nodiscard]] bool isSelected() const { return isSelected_; }
    /// Null unless the pointer is over the tile.
    [[nodiscard]] QWidget* removeButton() const { return removeButton_; }

    [[nodiscard]] QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] bool isHovered() const { return removeButton_ != nullptr; }
    void showWholeName(QPoint place);
    void letGo();
    void paintDecoration(QPainter& painter) const;
    void paintPicture(QPainter& painter) const;
    void paintName(QPainter& painter);
    void paintDetails(QPainter& painter) const;

    const UUID id_;
    TilePresentation shown_;
    TileHost& host_;
    QPointer<QWidget> removeButton_;
    /// Computed when the tile is first painted.
    QStringList nameLines_;
    std::optional<QPoint> pressedAt_;
    /// Active while a finger rests on the tile.
    QBasicTimer longPress_;
    bool isSelected_ = false;
    /// Whether the keyboard brought the focus here. A click needs no ring.
    bool showsFocus_ = false;
};

}  // namespace stowpocket
