// SPDX-License-Identifier: MIT
#include "presentation/TileCommands.h"

#include "services/Files.h"

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
        if (const std::vector<FileURL> files = urlsOf(present(items)); files.size() > mostOpenedUnasked)
            confirmOpening(files.size(), [this, files] { open(files); });
        else if (!files.empty())
            open(files);
        break;
    case TileCommand::showInFolder:
        if (const std::vector<FileURL> files = urlsOf(present(items)); !files.empty())
            opener_.showInFolder(files);
        break;
    case TileCommand::copy:
        viewModel_->copyFiles(idsOf(present(items)));
        break;
    case TileCommand::copyPath:
        viewModel_->copyPaths(idsOf(present(items)));
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
    return present(selection_.itemsWith(id));
}

std::vector<ShelfItem> TileCommands::itemsOfWholeDrag() {
    return present(viewModel_->shelfManager().items());
}

std::vector<ShelfItem> TileCommands::present(std::vector<ShelfItem> items) {
    std::erase_if(items, [](const ShelfItem& item) { return !item.isAvailable; });
    FileManager& files = viewModel_->fileManager();
    if (std::erase_if(items, [&](const ShelfItem& item) { return !files.fileExists(item.fileURL); }) > 0)
        viewModel_->shelfManager().refreshAvailability();
    return items;
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
