// SPDX-License-Identifier: MIT
#pragma once

#include "shelf/ShelfManager.h"
#include "shelf/ShelfViewModel.h"
#include "views/shelf/ShelfItemView.h"
#include "views/shelf/TilePicture.h"

#include <QTimer>
#include <QWidget>

#include <functional>
#include <vector>

namespace stowpocket {

/// Starts dragging files out of `source`, with a picture and the point in it that the pointer holds.
using StartFileDrag =
    std::function<void(QWidget& source, const std::vector<FileURL>& files, const QPixmap& picture, QPoint hotSpot)>;

/// What tiles need from the desktop.
struct TileServices {
    StartFileDrag startFileDrag;
    ByteCountText byteCountText;
    FileOpener& opener;
    FileCount fileCount = FileCount::drawn;
};

/// The tiles of the shelf, one for each item. A change of the list only touches the tiles concerned. Many new tiles
/// are created over several turns of the event loop, the first ones immediately; their room is reserved from the
/// beginning. Tab reaches one tile, the arrow keys, Home and End the others. Clicks and keys select tiles as in a
/// file manager, and Return, Space and Delete act on them.
class ShelfGridView : public QWidget, private TileHost {
public:
    ShelfGridView(std::shared_ptr<ShelfViewModel> viewModel, TileServices tileServices, int width);

    /// Applies a change that the shelf has just announced.
    void apply(const ShelfChange& change);
    void updatePicture(const UUID& id);

    /// Whether the key was one of the grid's. Some are, though no tile has the keyboard.
    bool handleKey(const QKeyEvent& event);
    [[nodiscard]] TileCommands& commands() { return commands_; }
    /// Called while the main button is held over `source`.
    void startDragOfAll(QWidget& source);

    /// In the order of the items. The last items may not have a tile yet.
    [[nodiscard]] const std::vector<ShelfItemView*>& tiles() const { return tiles_; }
    [[nodiscard]] QSize sizeHint() const override;

    /// Called when the focus has moved to a tile that may be out of sight.
    std::function<void(QWidget& tile)> onTileFocused = [](QWidget&) {};

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] QImage pictureOf(const ShelfItemView& tile) override;
    void click(ShelfItemView& tile, Selecting how) override;
    void select(ShelfItemView& tile, Selecting how) override;
    void startDrag(ShelfItemView& tile, QPoint held) override;
    void perform(ShelfItemView& tile, TileCommand command) override;
    void remove(ShelfItemView& tile) override;
    void openMenu(ShelfItemView& tile, QPoint point) override;
    void takeFocus(ShelfItemView& tile) override;

    void startDrag(QWidget& source, const std::vector<ShelfItem>& items, const UUID& front, QPoint held);
    bool handleKey(const QKeyEvent& event, const UUID& id);
    bool takeStep(GridStep step, Qt::KeyboardModifiers modifiers);
    [[nodiscard]] ShelfItemView* makeTile(const ShelfItem& item);
    void insertTiles(const std::vector<std::size_t>& indexes);
    void removeTiles(const std::vector<std::size_t>& indexes);
    void updateTiles(const std::vector<std::size_t>& indexes);
    void resetTiles();
    void makeMoreTiles();
    void layOut();
    void setTabStop(std::size_t index);
    void focusTile(std::size_t index, Qt::FocusReason reason);
    [[nodiscard]] std::optional<std::size_t> indexOf(const UUID& id) const;
    [[nodiscard]] std::optional<std::size_t> focusedIndex() const;

    const std::shared_ptr<ShelfViewModel> viewModel_;
    const TileServices tileServices_;
    TileCommands commands_;
    Subscription selectionChanged_;
    const int width_;
    std::vector<ShelfItemView*> tiles_;
    /// Active while items wait for their tiles.
    QTimer making_;
};

}  // namespace stowpocket
