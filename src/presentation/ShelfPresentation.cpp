// SPDX-License-Identifier: MIT
#include "presentation/ShelfPresentation.h"

#include "presentation/Texts.h"
#include "services/Preferences.h"
#include "shelf/PersistedShelf.h"
#include "shelf/ShelfViewModel.h"

#include <algorithm>

namespace stowpocket {

ShelfPresentation shelfPresentation(const ShelfViewModel& viewModel) {
    const ShelfManager& shelf = viewModel.shelfManager();
    const auto count = static_cast<std::int64_t>(shelf.items().size());
    const std::int64_t capacity = shelf.capacity();

    ShelfPresentation shown;
    shown.badge = std::to_string(count) + "/" + std::to_string(capacity);
    shown.banner = viewModel.capacityMessage();
    if (const std::optional<std::string> problem = shelf.preferences().saveProblem())
        shown.saveBanner = "Changes are not saved: " + *problem;
    shown.content = count == 0 ? ShelfPresentation::Content::dropZone : ShelfPresentation::Content::grid;
    shown.acceptsDrops = count < capacity;
    if (shown.acceptsDrops)
        shown.belowGrid = ShelfPresentation::BelowGrid::compactDropZone;
    else  // the banner says it already
        shown.belowGrid =
            shown.banner ? ShelfPresentation::BelowGrid::nothing : ShelfPresentation::BelowGrid::fullNotice;
    shown.showsProgress = shelf.isLoading();
    shown.showsClearButton = count > 0;
    return shown;
}

std::string TilePresentation::accessibleName() const {
    return name + ", " + size + (isMissing ? ", Missing" : "");
}

TilePresentation tilePresentation(const ShelfItem& item, const ByteCountText& byteCountText) {
    return {displayName(item.filename), byteCountText(item.fileSize), !item.isAvailable};
}

std::vector<StatusItemMenuEntry> iconMenu(const ShelfManager& shelf) {
    const auto entry = [](IconCommand command, const char* title) {
        return StatusItemMenuEntry{.id = static_cast<int>(command), .title = title};
    };
    std::vector<StatusItemMenuEntry> menu{entry(IconCommand::openShelf, "Open Shelf"),
                                          entry(IconCommand::quickDrop, "Quick Drop"),
                                          entry(IconCommand::paste, "Paste")};
    menu.back().isEnabled = static_cast<std::int64_t>(shelf.items().size()) < shelf.capacity();
    if (const std::optional<Undoable> undoable = shelf.undoable())
        menu.push_back(entry(IconCommand::undo, *undoable == Undoable::clear ? "Undo Clear" : "Undo Remove"));
    menu.push_back(entry(IconCommand::clear, "Clear All\u2026"));
    menu.back().isEnabled = !shelf.items().empty();
    menu.push_back(entry(IconCommand::settings, "Settings\u2026"));
    menu.back().beginsGroup = true;
    menu.push_back(entry(IconCommand::quit, "Quit stowpocket"));
    return menu;
}

std::optional<IconCommand> iconCommand(int id, const ShelfManager& shelf) {
    const std::vector<StatusItemMenuEntry> menu = iconMenu(shelf);
    const auto chosen = std::ranges::find(menu, id, &StatusItemMenuEntry::id);
    if (chosen == menu.end() || !chosen->isEnabled)
        return std::nullopt;
    return static_cast<IconCommand>(id);
}

}  // namespace stowpocket
