// SPDX-License-Identifier: MIT
#pragma once

#include "shelf/ShelfManager.h"
#include "shelf/ShelfViewModel.h"
#include "views/shelf/ShelfItemView.h"

#include <QTimer>
#include <QWidget>

#include <vector>

namespace stowpocket {

/// The tiles of the shelf, one for each item. A change of the list only touches the tiles concerned. Many new tiles
/// are created over several turns of the event loop, the first ones immediately; their room is reserved from the
/// beginning. Tab reaches one tile, the arrow keys, Home and End the others, and Delete removes a tile.
class ShelfGridView : public QWidget {
public:
    ShelfGridView(std::shared_ptr<ShelfViewModel> viewModel, TileServices tileServices, int width);

    /// Applies a change that the shelf has just announced.
    void apply(const ShelfChange& change);
    void updatePicture(const UUID& id);

    /// In the order of the items. The last items may not have a tile yet.
    [[nodiscard]] const std::vector<ShelfItemView*>& tiles() const { return tiles_; }
    [[nodiscard]] QSize sizeHint() const override;

    /// Called when the focus has moved to a tile that may be out of sight.
    std::function<void(QWidget& tile)> onTileFocused = [](QWidget&) {};

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] ShelfItemView* makeTile(const ShelfItem& item);
    void insertTiles(const std::vector<std::size_t>& indexes);
    void removeTiles(const std::vector<std::size_t>& indexes);
    void updateTiles(const std::vector<std::size_t>& indexes);
    void resetTiles();
    void makeMoreTiles();
    void layOut();
    void setTabStop(std::size_t index);
    void focusTile(std::size_t index);
    void focusItem(const UUID& id);
    [[nodiscard]] std::optional<std::size_t> indexOf(const UUID& id) const;
    [[nodiscard]] std::optional<std::size_t> focusedIndex() const;

    const std::shared_ptr<ShelfViewModel> viewModel_;
    const TileServices tileServices_;
    const int width_;
    std::vector<ShelfItemView*> tiles_;
    /// Active while items wait for their tiles.
    QTimer making_;
};

}  // namespace stowpocket
