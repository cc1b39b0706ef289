// SPDX-License-Identifier: MIT
// The parts of the shelf manager that wait for files: availability, thumbnails and icons.
#include "foundation/Utf8.h"
#include "platform/Dispatch.h"
#include "platform/FileManager.h"
#include "platform/MainScreen.h"
#include "platform/Thumbnails.h"
#include "platform/WorkspaceIcons.h"
#include "shelf/ShelfManager.h"

#include <algorithm>

namespace stowpocket {
namespace {

constexpr Size tilePictureSize{48, 48};
/// Drawn for a screen of double density where there is no screen to ask.
constexpr double defaultScale = 2.0;

/// Files without an extension, and applications, have icons of their own; all others share their type's.
std::string iconKey(const FileURL& url) {
    const std::string extension = uppercased(url.pathExtension());
    return extension.empty() || extension == "APP" ? url.path() : extension;
}

}  // namespace

void ShelfManager::refreshAvailability() {
    if (items_.empty())
        return;  // nothing to look for wakes nobody
    if (isRefreshing_) {
        refreshAgain_ = true;
        return;
    }
    isRefreshing_ = true;
    std::vector<std::pair<UUID, FileURL>> questions;
    questions.reserve(items_.size());
    for (const ShelfItem& item : items_)
        questions.emplace_back(item.id, item.fileURL);

    services_.dispatch.background([weak = weak_from_this(), services = services_, questions = std::move(questions)] {
        std::vector<std::pair<UUID, bool>> results;
        results.reserve(questions.size());
        for (const auto& [id, url] : questions)
            results.emplace_back(id, services.fileManager.fileExists(url));
        services.dispatch.async([weak, results = std::move(results)] {
            if (const auto self = weak.lock())
                self->applyAvailability(results);
        });
    });
}

void ShelfManager::applyAvailability(const std::vector<std::pair<UUID, bool>>& results) {
    ShelfChange change{ShelfChange::Kind::updated, {}};
    for (const auto& [id, isAvailable] : results) {
        const auto item = std::ranges::find(items_, id, &ShelfItem::id);
        if (item == items_.end() || item->isAvailable == isAvailable)
            continue;
        item->isAvailable = isAvailable;
        change.indexes.push_back(static_cast<std::size_t>(item - items_.begin()));
    }
    isRefreshing_ = false;
    if (!change.indexes.empty()) {
        save();
        itemsChanged.emit(change);
    }
    if (std::exchange(refreshAgain_, false))
        refreshAvailability();
}

void ShelfManager::requestThumbnails() {
    const double scale = services_.mainScreen.backingScaleFactor().value_or(defaultScale);
    for (const ShelfItem& item : items_) {
        if (item.isAvailable && !thumbnailCache_.contains(item.id) && !thumbnailsOnTheirWay_.contains(item.id))
            requestThumbnail(item, scale);
    }
}

void ShelfManager::requestThumbnail(const ShelfItem& item, double scale) {
    thumbnailsOnTheirWay_.insert(item.id);
    const auto deliver = [weak = weak_from_this(), &dispatch = services_.dispatch,
                          id = item.id](std::optional<Image> image) {
        dispatch.async([weak, id, image = std::move(image)] {
            const auto self = weak.lock();
            if (!self)
                return;
            self->thumbnailsOnTheirWay_.erase(id);
            if (image)
                self->storeThumbnail(id, *image);
        });
    };
    services_.thumbnails.generate({item.fileURL, tilePictureSize, scale}, deliver);
}

void ShelfManager::storeThumbnail(const UUID& id, Image image) {
    if (std::ranges::find(items_, id, &ShelfItem::id) == items_.end())
        return;
    image.size = tilePictureSize;
    thumbnailCache_.insert_or_assign(id, std::move(image));
    thumbnailChanged.emit(id);
}

void ShelfManager::packThumbnail(const UUID& id) {
    const auto cached = thumbnailCache_.find(id);
    if (cached == thumbnailCache_.end() || cached->second.content == nullptr)
        return;
    if (auto packed = cached->second.content->packed())
        cached->second.content = std::move(packed);
}

const Image* ShelfManager::thumbnail(const UUID& id) const {
    const auto cached = thumbnailCache_.find(id);
    return cached == thumbnailCache_.end() ? nullptr : &cached->second;
}

Image ShelfManager::icon(const ShelfItem& item) {
    std::string key = iconKey(item.fileURL);
    const auto cached = iconCache_.find(key);
    if (cached != iconCache_.end())
        return cached->second;
    Image image = services_.workspaceIcons.icon(item.fileURL);
    image.size = tilePictureSize;
    return iconCache_.emplace(std::move(key), std::move(image)).first->second;
}

}  // namespace stowpocket
