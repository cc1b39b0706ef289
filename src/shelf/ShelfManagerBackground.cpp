// SPDX-License-Identifier: MIT
// The parts of the shelf manager that wait for files: the search for moved ones, availability, thumbnails and icons.
#include "foundation/Text.h"
#include "services/Bookmarks.h"
#include "services/Dispatch.h"
#include "services/Files.h"
#include "services/Pictures.h"
#include "shelf/PersistedShelf.h"
#include "shelf/ShelfManager.h"

#include <algorithm>
#include <atomic>

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

/// One look for all files. The thread that looks ends it by itself when it has found nothing new, so that a shelf at
/// rest does not wake the main thread for answers that change nothing.
class ShelfManager::Look {
public:
    /// False when it is over already.
    bool askForAnother() {
        State now = State::looking;
        return state_.compare_exchange_strong(now, State::anotherAskedFor) || now == State::anotherAskedFor;
    }
    [[nodiscard]] bool isAnotherAskedFor() const { return state_ == State::anotherAskedFor; }
    /// False when another was asked for meanwhile.
    bool end() {
        State now = State::looking;
        return state_.compare_exchange_strong(now, State::over);
    }

private:
    enum class State { looking, anotherAskedFor, over };
    std::atomic<State> state_ = State::looking;
};

/// Where the file of one item is now, if anywhere.
struct ShelfManager::SearchAnswer {
    UUID id;
    std::optional<FileURL> url;
    std::optional<Bytes> freshBookmark;
    bool isAvailable = false;
};

void ShelfManager::search(std::vector<UUID> ids) {
    std::vector<Bytes> bookmarks;
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

/// The entry of a file that is not found stays stored until the next change, like every one that loading leaves out.
void ShelfManager::applySearch(const std::vector<SearchAnswer>& answers) {
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
    std::for_each(removed.indexes.rbegin(), removed.indexes.rend(),
                  [this](std::size_t index) { items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index)); });
    itemsChanged.emit(removed);
    services_.core.notifications.post(itemsChangedNotification);
}

void ShelfManager::refreshAvailability() {
    if (items_.empty())
        return;  // nothing to look for wakes nobody
    if (look_ && look_->askForAnother())
        return;
    look_ = std::make_shared<Look>();
    struct Question {
        UUID id;
        FileURL url;
        bool isAvailable;
    };
    std::vector<Question> questions;
    questions.reserve(items_.size());
    for (const ShelfItem& item : items_)
        questions.push_back({item.id, item.fileURL, item.isAvailable});

    services_.core.dispatch.background(
        [weak = weak_from_this(), services = services_, look = look_, questions = std::move(questions)] {
            std::vector<std::pair<UUID, bool>> changed;
            for (const Question& question : questions) {
                if (services.core.files.fileExists(question.url) != question.isAvailable)
                    changed.emplace_back(question.id, !question.isAvailable);
            }
            if (changed.empty() && look->end())
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
    const bool isAnotherAskedFor = look_->isAnotherAskedFor();
    look_.reset();
    if (!change.indexes.empty()) {
        save();
        itemsChanged.emit(change);
    }
    if (isAnotherAskedFor)
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
    std::string key = iconKey(item.fileURL);
    const auto cached = iconCache_.find(key);
    if (cached != iconCache_.end())
        return cached->second;
    Image image = services_.workspaceIcons.icon(item.fileURL);
    image.size = tilePictureSize;
    return iconCache_.emplace(std::move(key), std::move(image)).first->second;
}

}  // namespace stowpocket
