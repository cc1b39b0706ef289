// SPDX-License-Identifier: MIT
#include "shelf/ShelfManager.h"

#include "foundation/Invariant.h"
#include "foundation/Text.h"
#include "services/Dispatch.h"
#include "services/Files.h"
#include "services/MainBundle.h"
#include "shelf/PersistedShelf.h"

#include <algorithm>
#include <atomic>
#include <numeric>
#include <unordered_set>

namespace stowpocket {
namespace {

/// A batch of this many files is prepared in the background: each costs a few system calls.
constexpr std::size_t backgroundBatchSize = 6;

constexpr Size tilePictureSize{48, 48};
/// The scale of pictures while no screen is connected.
constexpr double defaultScale = 2.0;

/// A new item for the file. Waits for the disk; may run on any thread.
ShelfItem newItem(const FileURL& url, const ShelfServices& services) {
    const bool exists = services.core.files.fileExists(url);
    const std::optional<FileAttributes> attributes = exists ? services.core.files.attributes(url) : std::nullopt;
    return {.id = UUID::random(),
            .fileURL = url,
            .bookmarkData = services.bookmarks.create(url),
            .filename = validUtf8(url.lastPathComponent()),
            .fileSize = attributes ? attributes->size.value_or(0) : 0,
            .dateAdded = services.core.clock.now(),
            .isAvailable = exists};
}

std::vector<ShelfItem> newItems(std::span<const FileURL> urls, const ShelfServices& services) {
    std::vector<ShelfItem> items;
    items.reserve(urls.size());
    for (const FileURL& url : urls)
        items.push_back(newItem(url, services));
    return items;
}

/// Applications and files without an extension have their own icons; all others share the icon of their type.
std::string iconKey(const FileURL& url, const WorkspaceIcons& icons) {
    std::string extension = icons.lowercased(url.pathExtension());
    return extension.empty() || extension == "app" ? url.path() : extension;
}

std::vector<std::size_t> indexRange(std::size_t first, std::size_t end) {
    std::vector<std::size_t> indexes(end - first);
    std::iota(indexes.begin(), indexes.end(), first);
    return indexes;
}

}  // namespace

/// One check of all files. The thread that checks ends it by itself if nothing has changed, so that an idle shelf
/// does not wake the main thread.
class ShelfManager::AvailabilityCheck {
public:
    /// False if the check is over.
    bool requestAnother() {
        State now = State::checking;
        return state_.compare_exchange_strong(now, State::anotherRequested) || now == State::anotherRequested;
    }
    [[nodiscard]] bool isAnotherRequested() const { return state_ == State::anotherRequested; }
    /// False if another check has been requested meanwhile.
    bool end() {
        State now = State::checking;
        return state_.compare_exchange_strong(now, State::over);
    }

private:
    enum class State { checking, anotherRequested, over };
    std::atomic<State> state_ = State::checking;
};

/// Where the file of one item is now, if anywhere.
struct ShelfManager::SearchAnswer {
    UUID id;
    std::optional<FileURL> url;
    std::optional<Bytes> freshBookmark;
    bool isAvailable = false;
};

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
        announceAdded(append(newItems(offered, services_)));
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
            std::vector<ShelfItem> built = newItems(urls, services);
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
    forgetUndo();
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
    removeItems({&id, 1});
}

void ShelfManager::removeItems(std::span<const UUID> ids) {
    const auto isNamed = [&](const ShelfItem& item) { return std::ranges::find(ids, item.id) != ids.end(); };
    if (std::ranges::none_of(items_, isNamed))
        return;
    remember(Undoable::removal);
    removeIf(isNamed);
}

void ShelfManager::clear() {
    if (!items_.empty())
        remember(Undoable::clear);
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
    const auto isMissing = [this](const ShelfItem& item) { return !item.isAvailable && !sought_.contains(item.id); };
    if (std::ranges::none_of(items_, isMissing))
        return;
    if (!undo_)
        remember(Undoable::removal);
    noteMissing();
    removeIf(isMissing);
}

void ShelfManager::removeIf(const std::function<bool(const ShelfItem&)>& isUnwanted) {
    ShelfChange change{ShelfChange::Kind::removed, {}};
    for (std::size_t index = 0; index < items_.size(); ++index) {
        if (!isUnwanted(items_[index]))
            continue;
        endAccess(items_[index].fileURL);
        packThumbnail(items_[index].id);
        change.indexes.push_back(index);
    }
    if (change.indexes.empty())
        return;
    erase(change.indexes);
    commit(change);
}

void ShelfManager::erase(const std::vector<std::size_t>& indexes) {
    std::for_each(indexes.rbegin(), indexes.rend(),
                  [this](std::size_t index) { items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index)); });
}

void ShelfManager::remember(Undoable what) {
    undo_ = std::make_shared<Undo>(Undo{what, items_, {}, accessedResourceURLs_});
    noteMissing();
}

void ShelfManager::noteMissing() {
    for (const ShelfItem& item : items_) {
        if (!item.isAvailable)
            undo_->missing.insert(item.id);
    }
}

std::optional<Undoable> ShelfManager::undoable() const {
    return undo_ ? std::optional(undo_->what) : std::nullopt;
}

void ShelfManager::undo() {
    if (!undo_)
        return;
    std::vector<std::pair<UUID, FileURL>> missing;
    for (const ShelfItem& item : undo_->before) {
        if (undo_->missing.contains(item.id))
            missing.emplace_back(item.id, item.fileURL);
    }
    if (missing.empty())
        return bringBack({});
    services_.core.dispatch.background(
        [weak = weak_from_this(), services = services_, undo = undo_, missing = std::move(missing)] {
            std::set<UUID> found;
            for (const auto& [id, url] : missing) {
                if (services.core.files.fileExists(url))
                    found.insert(id);
            }
            services.core.dispatch.async([weak, undo, found = std::move(found)] {
                if (const auto self = weak.lock(); self && self->undo_ == undo)
                    self->bringBack(found);
            });
        });
}

void ShelfManager::bringBack(const std::set<UUID>& found) {
    std::int64_t room = capacity() - static_cast<std::int64_t>(items_.size()) - pendingAddCount_;
    std::vector<ShelfItem> items;
    std::vector<ShelfItem> returned;
    ShelfChange change{ShelfChange::Kind::inserted, {}};
    for (const ShelfItem& item : undo_->before) {
        const auto present = std::ranges::find(items_, item.id, &ShelfItem::id);
        if (present != items_.end()) {
            items.push_back(*present);
        } else if (room > 0 && (!undo_->missing.contains(item.id) || found.contains(item.id))) {
            --room;
            change.indexes.push_back(items.size());
            items.push_back(item);
            items.back().isAvailable = true;
            returned.push_back(item);
        }
    }
    if (returned.empty())
        return;
    items_ = std::move(items);
    beginAccessAgain(returned);
    forgetUndo();
    commit(change);
    requestThumbnails();
    refreshAvailability();
}

/// Only a bookmark that was just resolved gives the right to use its file.
void ShelfManager::beginAccessAgain(const std::vector<ShelfItem>& items) {
    for (const ShelfItem& item : items) {
        if (!undo_->accessed.contains(item.fileURL))
            continue;
        if (item.bookmarkData)
            static_cast<void>(services_.bookmarks.resolve({&*item.bookmarkData, 1}));
        beginAccess(item.fileURL, services_.bookmarks, accessedResourceURLs_);
    }
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

void ShelfManager::search(std::vector<UUID> ids) {
    sought_.insert(ids.begin(), ids.end());
    std::vector<Bytes> bookmarks;
    bookmarks.reserve(ids.size());
    for (const UUID& id : ids)
        bookmarks.push_back(*std::ranges::find(items_, id, &ShelfItem::id)->bookmarkData);
    services_.core.dispatch.background(
        [weak = weak_from_this(), services = services_, ids = std::move(ids), bookmarks = std::move(bookmarks)] {
            const std::vector<std::optional<ResolvedBookmark>> found = services.bookmarks.search(bookmarks);
            std::vector<SearchAnswer> answers;
            for (std::size_t index = 0; index < ids.size(); ++index) {
                SearchAnswer& answer = answers.emplace_back(SearchAnswer{ids[index], {}, {}, false});
                if (!found[index])
                    continue;
                answer.url = found[index]->url;
                answer.isAvailable = services.core.files.fileExists(*answer.url);
                if (found[index]->isStale)
                    answer.freshBookmark = services.bookmarks.create(*answer.url);
            }
            services.core.dispatch.async([weak, answers = std::move(answers)] {
                if (const auto self = weak.lock())
                    self->applySearch(answers);
            });
        });
}

/// The entry of a file that is not found remains stored until the next change, like every entry that loading leaves
/// out.
void ShelfManager::applySearch(const std::vector<SearchAnswer>& answers) {
    sought_.clear();
    ShelfChange updated{ShelfChange::Kind::updated, {}};
    ShelfChange removed{ShelfChange::Kind::removed, {}};
    for (const SearchAnswer& answer : answers) {
        const auto item = std::ranges::find(items_, answer.id, &ShelfItem::id);
        if (item == items_.end())
            continue;
        (answer.url ? updated : removed).indexes.push_back(static_cast<std::size_t>(item - items_.begin()));
        if (answer.url) {
            item->fileURL = *answer.url;
            item->isAvailable = answer.isAvailable;
            beginAccess(item->fileURL, services_.bookmarks, accessedResourceURLs_);
        }
        if (answer.freshBookmark)
            item->bookmarkData = answer.freshBookmark;
    }
    if (std::ranges::any_of(answers, [](const SearchAnswer& answer) { return answer.freshBookmark.has_value(); }))
        save();
    if (!updated.indexes.empty())
        itemsChanged.emit(updated);
    requestThumbnails();
    if (removed.indexes.empty())
        return;
    forgetUndo();
    erase(removed.indexes);
    itemsChanged.emit(removed);
    services_.core.notifications.post(itemsChangedNotification);
}

void ShelfManager::refreshAvailability() {
    if (items_.empty())
        return;  // nothing to look for wakes nobody
    if (availabilityCheck_ && availabilityCheck_->requestAnother())
        return;
    availabilityCheck_ = std::make_shared<AvailabilityCheck>();
    struct Question {
        UUID id;
        FileURL url;
        bool isAvailable;
    };
    std::vector<Question> questions;
    questions.reserve(items_.size());
    for (const ShelfItem& item : items_)
        questions.push_back({item.id, item.fileURL, item.isAvailable});

    services_.core.dispatch.background([weak = weak_from_this(), services = services_, check = availabilityCheck_,
                                        questions = std::move(questions)] {
        std::vector<std::pair<UUID, bool>> changed;
        for (const Question& question : questions) {
            if (services.core.files.fileExists(question.url) != question.isAvailable)
                changed.emplace_back(question.id, !question.isAvailable);
        }
        if (changed.empty() && check->end())
            return;
        services.core.dispatch.async([weak, changed = std::move(changed)] {
            if (const auto self = weak.lock())
                self->applyAvailability(changed);
        });
    });
}

void ShelfManager::applyAvailability(const std::vector<std::pair<UUID, bool>>& changed) {
    ShelfChange change{ShelfChange::Kind::updated, {}};
    for (const auto& [id, isAvailable] : changed) {
        const auto item = std::ranges::find(items_, id, &ShelfItem::id);
        if (item == items_.end() || item->isAvailable == isAvailable)
            continue;
        item->isAvailable = isAvailable;
        change.indexes.push_back(static_cast<std::size_t>(item - items_.begin()));
    }
    const bool isAnotherRequested = availabilityCheck_->isAnotherRequested();
    availabilityCheck_.reset();
    if (!change.indexes.empty()) {
        save();
        itemsChanged.emit(change);
    }
    if (isAnotherRequested)
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
    const auto deliver = [weak = weak_from_this(), &dispatch = services_.core.dispatch,
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
    std::string key = iconKey(item.fileURL, services_.workspaceIcons);
    const auto cached = iconCache_.find(key);
    if (cached != iconCache_.end())
        return cached->second;
    Image image = services_.workspaceIcons.icon(item.fileURL);
    image.size = tilePictureSize;
    return iconCache_.emplace(std::move(key), std::move(image)).first->second;
}

}  // namespace stowpocket
