// SPDX-License-Identifier: MIT
#include "presentation/IconMenu.h"

#include <algorithm>

namespace stowpocket {

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
