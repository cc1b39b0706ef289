// SPDX-License-Identifier: MIT
#include "presentation/Selection.h"

#include <algorithm>
#include <utility>

namespace stowpocket {

void ShelfSelection::select(const UUID& id, Selecting how) {
    std::set<UUID> selected;
    if (how == Selecting::range) {
        const auto& items = shelf_.items();
        const auto end = std::ranges::find(items, id, &ShelfItem::id);
        const auto begin = std::ranges::find(items, anchor_.value_or(id), &ShelfItem::id);
        const auto [first, last] = std::minmax(begin == items.end() ? end : begin, end);
        for (auto item = first; item != items.end() && item <= last; ++item)
            selected.insert(item->id);
        return become(std::move(selected));
    }
    anchor_ = id;
    if (how == Selecting::toggle) {
        selected = selected_;
        if (selected.erase(id) == 0)
            selected.insert(id);
    } else {
        selected.insert(id);
    }
    become(std::move(selected));
}

void ShelfSelection::extend(const UUID& from, const UUID& to) {
    if (!isSelected(from))
        anchor_ = from;
    select(to, Selecting::range);
}

void ShelfSelection::selectAll() {
    std::set<UUID> all;
    for (const ShelfItem& item : shelf_.items())
        all.insert(item.id);
    become(std::move(all));
}

void ShelfSelection::clear() {
    anchor_.reset();
    become({});
}

std::vector<ShelfItem> ShelfSelection::itemsWith(const UUID& id) const {
    std::vector<ShelfItem> wanted;
    std::ranges::copy_if(shelf_.items(), std::back_inserter(wanted),
                         [&](const ShelfItem& item) { return isSelected(id) ? isSelected(item.id) : item.id == id; });
    return wanted;
}

void ShelfSelection::become(std::set<UUID> selected) {
    if (std::exchange(selected_, std::move(selected)) != selected_)
        changed.emit();
}

std::optional<std::size_t> tileAfter(GridStep step, std::size_t from, std::size_t count, std::size_t columns) {
    const auto forward = [&](std::size_t by) { return from + by < count ? std::optional(from + by) : std::nullopt; };
    const auto back = [&](std::size_t by) { return from >= by ? std::optional(from - by) : std::nullopt; };
    switch (step) {
    case GridStep::left:
        return back(1);
    case GridStep::right:
        return forward(1);
    case GridStep::up:
        return back(columns);
    case GridStep::down:
        return forward(columns);
    case GridStep::first:
        return 0;
    case GridStep::last:
        return count - 1;
    }
    return std::nullopt;
}

}  // namespace stowpocket
