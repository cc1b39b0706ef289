// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "foundation/Values.h"
#include "services/OtherPrograms.h"
#include "shelf/ShelfManager.h"
#include "shelf/ShelfViewModel.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
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

enum class TileCommand { open, showInFolder, copy, copyPath, remove };

struct TileMenuEntry {
    TileCommand command;
    std::string title;
    bool isEnabled = true;
    /// Whether a line separates it from the entry before.
    bool beginsGroup = false;

    friend bool operator==(const TileMenuEntry&, const TileMenuEntry&) = default;
};

/// What can be done to the files of the shelf by pointer, keyboard, menu and assistive technology: always to the
/// selection if the tile at hand is part of it, otherwise to that tile's file alone. Files are looked at when
/// something is done to them; those that are gone by then are left out. Main thread.
class TileCommands {
public:
    /// `opener` outlives it.
    TileCommands(std::shared_ptr<ShelfViewModel> viewModel, FileOpener& opener);

    [[nodiscard]] ShelfSelection& selection() { return selection_; }

    /// The menu on a tile, which becomes the selection if it is not part of it.
    [[nodiscard]] std::vector<TileMenuEntry> menu(const UUID& id);
    void perform(TileCommand command, const UUID& id);
    /// Shows the content of this file alone.
    void preview(const UUID& id);

    /// What a drag that begins on the tile carries; nothing if the tile is shown as missing.
    [[nodiscard]] std::vector<ShelfItem> itemsOfDrag(const UUID& id);
    /// What a drag of everything carries.
    [[nodiscard]] std::vector<ShelfItem> itemsOfWholeDrag();

    /// Asks the user whether to open so many files. `open` does it.
    std::function<void(std::size_t fileCount, std::function<void()> open)> confirmOpening =
        [](std::size_t, const std::function<void()>& open) { open(); };

private:
    void open(const std::vector<FileURL>& files);

    const std::shared_ptr<ShelfViewModel> viewModel_;
    FileOpener& opener_;
    ShelfSelection selection_;
};

/// How many pictures a drag shows at most.
inline constexpr std::size_t mostDragPictures = 3;

/// The picture of a drag: that of the file in hand in front, those of others behind it, and the number of files on a
/// badge.
struct DragPictureLayout {
    Size size;
    /// The top left corners of the pictures, the one in front first.
    std::vector<Point> pictures;
    /// Empty for a single file.
    Rect badge;
    std::string badgeText;
};

/// For at least one file and square pictures of that side. `textWidth` measures the text of the badge.
[[nodiscard]] DragPictureLayout layOutDragPicture(std::size_t fileCount, double side,
                                                  const std::function<double(const std::string&)>& textWidth);

}  // namespace stowpocket
