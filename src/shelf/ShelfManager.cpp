// SPDX-License-Identifier: MIT
#include "shelf/ShelfManager.h"

#include "foundation/Invariant.h"
#include "foundation/Text.h"
#include "services/Bookmarks.h"
#include "services/Dispatch.h"
#include "services/Files.h"
#include "services/MainBundle.h"
#include "services/Pictures.h"
#include "shelf/PersistedShelf.h"
#include "shelf/ShelfCapacity.h"
#include "shelf/ShelfItemBuilder.h"

#include <algorithm>
#include <numeric>
#include <unordered_set>

namespace stowpocket {
namespace {

/// A batch of this many files is prepared in the background: each costs a few system calls.
constexpr std::size_t backgroundBatchSize = 6;

std::vector<std::size_t> indexRange(std::size_t first, std::size_t end) {
    std::vector<std::size_t> indexes(end - first);
    std::iota(indexes.begin(), indexes.end(), first);
    return indexes;
}

}  // namespace

std::shared_ptr<ShelfManager> ShelfManager::make(const ShelfServices& services) {
    return std::shared_ptr<ShelfManager>(new ShelfManager(services));
}

FileURL ShelfManager::filePromiseDirectory(FileManager& fileManager) {
    const std::optional<FileURL> applicationSupport = fileManager.applicationSupportDirectory();
    invariant(applicationSupport.has_value(), "the user has a folder for application data");
    return applicationSupport->appending(bundleIdentifier).appending("FilePromises");
}

std::int64_t ShelfManager::capacity() const {
    return shelfCapacity(services_.core.preferences);
}

void ShelfManager::load() {
    const std::optional<PropertyValue> stored = services_.core.preferences.value(shelfBookmarksKey);
    const PropertyValue::Array* const entries = stored ? stored->array() : nullptr;
    DecodedShelf shelf =
        entries == nullptr ? DecodedShelf{} : decodedShelf(*entries, services_.bookmarks, services_.core.files);
    items_ = std::move(shelf.items);
    accessedResourceURLs_ = std::move(shelf.accessedResourceURLs);
    if (shelf.madeBookmarks)
        save();
    itemsChanged.emit({ShelfChange::Kind::reset, {}});
    if (!shelf.toBeSought.empty())
        search(std::move(shelf.toBeSought));
}

int ShelfManager::addFiles(std::span<const FileURL> urls) {
    std::vector<FileURL> offered = urlsNotOnShelf(urls);
    const auto occupied = static_cast<std::int64_t>(items_.size()) + pendingAddCount_;
    const auto room = static_cast<std::uint64_t>(std::max<std::int64_t>(0, capacity() - occupied));
    const auto taken = static_cast<std::size_t>(std::min<std::uint64_t>(room, offered.size()));
    const auto overflow = static_cast<int>(offered.size() - taken);
    offered.erase(offered.begin() + static_cast<std::ptrdiff_t>(taken), offered.end());

    if (taken >= backgroundBatchSize)
        addInBackground(std::move(offered));
    else if (taken > 0)
        announceAdded(append(builtItems(offered, services_)));
    return overflow;
}

/// A file offered twice in one call is taken once.
std::vector<FileURL> ShelfManager::urlsNotOnShelf(std::span<const FileURL> urls) const {
    std::unordered_set<FileURL> seen;
    for (const ShelfItem& item : items_)
        seen.insert(item.fileURL);
    std::vector<FileURL> fresh;
    for (const FileURL& url : urls) {
        if (seen.insert(url).second)
            fresh.push_back(url);
    }
    return fresh;
}

void ShelfManager::addInBackground(std::vector<FileURL> urls) {
    setIsLoading(true);
    pendingAddCount_ += static_cast<std::int64_t>(urls.size());
    const std::uint64_t batch = ++latestBatch_;
    pendingBatches_.insert(batch);
    services_.core.dispatch.background(
        [weak = weak_from_this(), services = services_, batch, urls = std::move(urls)]() mutable {
            std::vector<ShelfItem> built = builtItems(urls, services);
            services.core.dispatch.async([weak = std::move(weak), batch, built = std::move(built)]() mutable {
                if (const auto self = weak.lock())
                    self->finishBatch(batch, std::move(built));
            });
        });
}

void ShelfManager::finishBatch(std::uint64_t batch, std::vector<ShelfItem> built) {
    pendingBatches_.erase(batch);
    pendingAddCount_ -= static_cast<std::int64_t>(built.size());
    const std::size_t first = append(std::move(built));
    setIsLoading(false);
    announceAdded(first);
}

std::size_t ShelfManager::append(std::vector<ShelfItem> built) {
    const std::size_t first = items_.size();
    std::ranges::move(built, std::back_inserter(items_));
    return first;
}

void ShelfManager::announceAdded(std::size_t first) {
    commit({ShelfChange::Kind::inserted, indexRange(first, items_.size())});
    requestThumbnails();
}

void ShelfManager::setIsLoading(bool isLoading) {
    if (isLoading_ == isLoading)
        return;
    isLoading_ = isLoading;
    isLoadingChanged.emit();
}

void ShelfManager::removeItem(const UUID& id) {
    const auto item = std::ranges::find(items_, id, &ShelfItem::id);
    if (item == items_.end())
        return;
    const auto index = static_cast<std::size_t>(item - items_.begin());
    endAccess(item->fileURL);
    packThumbnail(id);
    items_.erase(item);
    commit({ShelfChange::Kind::removed, {index}});
}

void ShelfManager::clear() {
    for (const FileURL& url : accessedResourceURLs_)
        services_.bookmarks.stopAccessing(url);
    accessedResourceURLs_.clear();
    for (const ShelfItem& item : items_)
        packThumbnail(item.id);
    const std::size_t count = items_.size();
    items_.clear();
    commit({ShelfChange::Kind::removed, indexRange(0, count)});
}

void ShelfManager::removeMissingItems() {
    ShelfChange change{ShelfChange::Kind::removed, {}};
    for (std::size_t index = 0; index < items_.size(); ++index) {
        if (items_[index].isAvailable)
            continue;
        endAccess(items_[index].fileURL);
        packThumbnail(items_[index].id);
        change.indexes.push_back(index);
    }
    if (change.indexes.empty())
        return;
    std::erase_if(items_, [](const ShelfItem& item) { return !item.isAvailable; });
    commit(change);
}

void ShelfManager::endAccess(const FileURL& url) {
    if (accessedResourceURLs_.erase(url) > 0)
        services_.bookmarks.stopAccessing(url);
}

void ShelfManager::commit(const ShelfChange& change) {
    save();
    itemsChanged.emit(change);
    services_.core.notifications.post(itemsChangedNotification);
}

void ShelfManager::save() {
    services_.core.preferences.setValue(shelfBookmarksKey, encodedShelf(items_));
}

}  // namespace stowpocket
