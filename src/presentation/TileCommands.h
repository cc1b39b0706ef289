// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Geometry.h"
#include "presentation/Selection.h"
#include "services/Opening.h"
#include "shelf/ShelfViewModel.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace stowpocket {

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

    /// What a drag that begins on the tile carries; nothing if the file is missing.
    [[nodiscard]] std::vector<ShelfItem> itemsOfDrag(const UUID& id);
    /// What a drag of everything carries.
    [[nodiscard]] std::vector<ShelfItem> itemsOfWholeDrag();

    /// Asks the user whether to open so many files. `open` does it.
    std::function<void(std::size_t fileCount, std::function<void()> open)> confirmOpening =
        [](std::size_t, const std::function<void()>& open) { open(); };

private:
    void open(const std::vector<FileURL>& files);
    /// Those whose file is there. The shelf checks all again if one has gone since its last check.
    [[nodiscard]] std::vector<ShelfItem> present(std::vector<ShelfItem> items);

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
