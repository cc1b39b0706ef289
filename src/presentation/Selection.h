// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "shelf/ShelfManager.h"

#include <cstddef>
#include <optional>
#include <set>
#include <vector>

namespace stowpocket {

/// What a click or a key does to the selection.
enum class Selecting {
    alone,   ///< selects this tile and no other
    toggle,  ///< adds this tile, or takes it out: with Control or Command
    range,   ///< selects all from the last tile that was selected otherwise: with Shift
};

/// Which items of the shelf are selected. Items that leave the shelf leave the selection; one that returns is
/// selected again.
class ShelfSelection {
public:
    /// `shelf` outlives it.
    explicit ShelfSelection(const ShelfManager& shelf) : shelf_(shelf) {}

    void select(const UUID& id, Selecting how);
    /// Selects a range up to `to` for a step of the keyboard, which begins a new range if it leaves a tile that is
    /// not selected.
    void extend(const UUID& from, const UUID& to);
    void selectAll();
    void clear();

    [[nodiscard]] bool isSelected(const UUID& id) const { return selected_.contains(id); }
    /// What is done to this item is done to these, in the order of the shelf: the selection if the item is part of
    /// it, otherwise the item alone.
    [[nodiscard]] std::vector<ShelfItem> itemsWith(const UUID& id) const;

    Signal<> changed;

private:
    void become(std::set<UUID> selected);

    const ShelfManager& shelf_;
    std::set<UUID> selected_;
    /// Where ranges begin.
    std::optional<UUID> anchor_;
};

/// A step of the keyboard from one tile to another.
enum class GridStep { left, right, up, down, first, last };

/// Where the step leads in a grid of so many tiles; none if it would leave the grid.
[[nodiscard]] std::optional<std::size_t> tileAfter(GridStep step, std::size_t from, std::size_t count,
                                                   std::size_t columns);

}  // namespace stowpocket
