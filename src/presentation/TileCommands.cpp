// SPDX-License-Identifier: MIT
#include "presentation/TileCommands.h"

#include <algorithm>
#include <utility>

namespace stowpocket {
namespace {

/// More windows could swamp the desktop.
constexpr std::size_t mostOpenedUnasked = 10;

/// How far each picture lies from the one before it, to the right and downwards.
constexpr double pictureStep = 5;
constexpr double badgeHeight = 18;
constexpr double badgePadding = 6;

std::vector<FileURL> urlsOf(const std::vector<ShelfItem>& items) {
    std::vector<FileURL> urls;
    std::ranges::transform(items, std::back_inserter(urls), &ShelfItem::fileURL);
    return urls;
}

std::vector<UUID> idsOf(const std::vector<ShelfItem>& items) {
    std::vector<UUID> ids;
    std::ranges::transform(items, std::back_inserter(ids), &ShelfItem::id);
    return ids;
}

}  // namespace

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

TileCommands::TileCommands(std::shared_ptr<ShelfViewModel> viewModel, FileOpener& opener)
    : viewModel_(std::move(viewModel)), opener_(opener), selection_(viewModel_->shelfManager()) {}

std::vector<TileMenuEntry> TileCommands::menu(const UUID& id) {
    if (!selection_.isSelected(id))
        selection_.select(id, Selecting::alone);
    const std::vector<ShelfItem> items = selection_.itemsWith(id);
    const auto title = [number = std::to_string(items.size())](const char* one, const char* verb, const char* rest) {
        return number == "1" ? one : verb + number + rest;
    };
    const bool isAnyThere = std::ranges::any_of(items, &ShelfItem::isAvailable);
    return {
        {TileCommand::open, title("Open", "Open ", " Files"), isAnyThere},
        {TileCommand::showInFolder, title("Show in Folder", "Show ", " Files in Folder"), isAnyThere},
        {TileCommand::copy, title("Copy", "Copy ", " Files"), isAnyThere, true},
        {TileCommand::copyPath, title("Copy Path", "Copy ", " Paths"), isAnyThere},
        {TileCommand::remove, title("Remove from Shelf", "Remove ", " Files from Shelf"), true, true},
    };
}

void TileCommands::perform(TileCommand command, const UUID& id) {
    const std::vector<ShelfItem> items = selection_.itemsWith(id);
    switch (command) {
    case TileCommand::open:
        if (const std::vector<FileURL> files = urlsOf(viewModel_->presentItems(items));
            files.size() > mostOpenedUnasked)
            confirmOpening(files.size(), [this, files] { open(files); });
        else if (!files.empty())
            open(files);
        break;
    case TileCommand::showInFolder:
        if (const std::vector<FileURL> files = urlsOf(viewModel_->presentItems(items)); !files.empty())
            opener_.showInFolder(files);
        break;
    case TileCommand::copy:
        viewModel_->copyFiles(idsOf(viewModel_->presentItems(items)));
        break;
    case TileCommand::copyPath:
        viewModel_->copyPaths(idsOf(viewModel_->presentItems(items)));
        break;
    case TileCommand::remove:
        viewModel_->removeItems(idsOf(items));
        break;
    }
}

void TileCommands::open(const std::vector<FileURL>& files) {
    opener_.open(files, [model = std::weak_ptr(viewModel_), count = files.size()](bool areAllOpened) {
        if (const auto viewModel = model.lock(); viewModel && !areAllOpened)
            viewModel->setCapacityMessage(count == 1 ? "No application opens this file."
                                                     : "No application opens some of these files.");
    });
}

void TileCommands::preview(const UUID& id) {
    const auto& items = viewModel_->shelfManager().items();
    const auto item = std::ranges::find(items, id, &ShelfItem::id);
    if (item != items.end() && item->isAvailable)
        opener_.preview(item->fileURL);
}

std::vector<ShelfItem> TileCommands::itemsOfDrag(const UUID& id) {
    const auto& items = viewModel_->shelfManager().items();
    const auto held = std::ranges::find(items, id, &ShelfItem::id);
    if (held == items.end() || !held->isAvailable)
        return {};
    return viewModel_->presentItems(selection_.itemsWith(id));
}

std::vector<ShelfItem> TileCommands::itemsOfWholeDrag() {
    return viewModel_->presentItems(viewModel_->shelfManager().items());
}

DragPictureLayout layOutDragPicture(std::size_t fileCount, double side,
                                    const std::function<double(const std::string&)>& textWidth) {
    DragPictureLayout layout;
    if (fileCount > 1) {
        layout.badgeText = std::to_string(fileCount);
        const double width = std::max(badgeHeight, textWidth(layout.badgeText) + 2 * badgePadding);
        layout.badge = {side - width / 2, 0, width, badgeHeight};
    }
    const double top = layout.badge.height / 3;
    const std::size_t count = std::clamp<std::size_t>(fileCount, 1, mostDragPictures);
    for (std::size_t index = 0; index < count; ++index) {
        const double step = pictureStep * static_cast<double>(index);
        layout.pictures.push_back({step, top + step});
    }
    const Point& last = layout.pictures.back();
    layout.size = {std::max(last.x + side, layout.badge.right()), last.y + side};
    return layout;
}

}  // namespace stowpocket
