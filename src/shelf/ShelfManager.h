// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "services/CoreServices.h"
#include "services/Pictures.h"
#include "shelf/ShelfItem.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace stowpocket {

class Bookmarks;
class FileManager;
class MainScreen;
class Thumbnails;
class WorkspaceIcons;

/// How the list of items has just changed, so that a view can follow without looking at every item again.
struct ShelfChange {
    enum class Kind {
        inserted,  ///< the items at `indexes` are new
        removed,   ///< the items that stood at `indexes` before are gone
        updated,   ///< the items at `indexes` changed in themselves
        reset,     ///< anything may have changed; `indexes` is empty
    };

    Kind kind = Kind::reset;
    /// Ascending.
    std::vector<std::size_t> indexes;
};

/// Posted after every change of which items are on the shelf; not for changes of an item and not for loading.
inline constexpr std::string_view itemsChangedNotification = "StowpocketItemsChanged";

/// What the shelf is built on. All of it outlives every closure that the shelf hands out.
struct ShelfServices {
    CoreServices core;
    Bookmarks& bookmarks;
    Thumbnails& thumbnails;
    WorkspaceIcons& workspaceIcons;
    MainScreen& mainScreen;
};

/// The files waiting to be dragged out again, oldest first. Every change of which items are on the shelf is saved
/// before it is announced. Files are referenced only: no operation here touches one. Main thread only.
class ShelfManager : public std::enable_shared_from_this<ShelfManager> {
public:
    [[nodiscard]] static std::shared_ptr<ShelfManager> make(const ShelfServices& services);

    /// The folder for dropped contents that came without a file of their own. Ends the process when the user has no
    /// folder for application data. Not made here.
    [[nodiscard]] static FileURL filePromiseDirectory(FileManager& fileManager);

    /// Takes over the saved shelf; called once, at launch. Posts nothing; saves once if a bookmark was made anew.
    /// Files that have to be sought are sought in the background; their items are missing until then, and those of
    /// files that are not found leave the shelf.
    void load();
    /// Adds files at the end, as many as the capacity leaves room for, leaving out those already on the shelf. A
    /// large batch is prepared in the background and arrives later. Answers how many did not fit.
    int addFiles(std::span<const FileURL> urls);
    void removeItem(const UUID& id);
    void clear();
    /// Removes the items that the last refresh found missing.
    void removeMissingItems();
    /// Looks, in the background, which files are still there and marks the items. One look at a time: asked again
    /// meanwhile, it looks once more afterwards.
    void refreshAvailability();
    /// Asks for a thumbnail of every available item that has none and for which none is on its way.
    void requestThumbnails();

    [[nodiscard]] const std::vector<ShelfItem>& items() const { return items_; }
    /// True while a large batch is being prepared.
    [[nodiscard]] bool isLoading() const { return isLoading_; }
    /// How many files of such batches are still to come; they take up room already.
    [[nodiscard]] std::int64_t pendingAddCount() const { return pendingAddCount_; }
    /// Such batches have numbers, from 1 on: that of the latest, and whether one is still to come.
    [[nodiscard]] std::uint64_t latestBatch() const { return latestBatch_; }
    [[nodiscard]] bool isPending(std::uint64_t batch) const { return pendingBatches_.contains(batch); }
    [[nodiscard]] std::int64_t capacity() const;
    /// Where the shelf is kept.
    [[nodiscard]] PreferenceStore& preferences() const { return services_.core.preferences; }

    /// Null until it has been made.
    [[nodiscard]] const Image* thumbnail(const UUID& id) const;
    /// Looked up at the desktop once per file type, or per file where files of the type have icons of their own.
    [[nodiscard]] Image icon(const ShelfItem& item);

    Signal<const ShelfChange&> itemsChanged;
    Signal<> isLoadingChanged;
    Signal<const UUID&> thumbnailChanged;

private:
    class Look;
    struct SearchAnswer;

    explicit ShelfManager(const ShelfServices& services) : services_(services) {}

    [[nodiscard]] std::vector<FileURL> urlsNotOnShelf(std::span<const FileURL> urls) const;
    void addInBackground(std::vector<FileURL> urls);
    void finishBatch(std::uint64_t batch, std::vector<ShelfItem> built);
    /// Answers the index of the first new item.
    std::size_t append(std::vector<ShelfItem> built);
    void announceAdded(std::size_t first);
    void setIsLoading(bool isLoading);
    void endAccess(const FileURL& url);
    void search(std::vector<UUID> ids);
    void applySearch(const std::vector<SearchAnswer>& answers);
    void applyAvailability(const std::vector<std::pair<UUID, bool>>& changed);
    void requestThumbnail(const ShelfItem& item, double scale);
    void storeThumbnail(const UUID& id, Image image);
    void packThumbnail(const UUID& id);
    void save();
    /// Saves, tells the views and posts: the end of every change of membership.
    void commit(const ShelfChange& change);

    ShelfServices services_;
    std::vector<ShelfItem> items_;
    bool isLoading_ = false;
    std::int64_t pendingAddCount_ = 0;
    std::uint64_t latestBatch_ = 0;
    std::set<std::uint64_t> pendingBatches_;
    /// Never evicted: ids are never used again, and an icon serves every file of its type. The thumbnails of items
    /// that have left the shelf are packed.
    std::unordered_map<UUID, Image> thumbnailCache_;
    std::map<std::string, Image, std::less<>> iconCache_;
    /// On each of these access was begun and will be ended once, when its item leaves the shelf.
    std::set<FileURL> accessedResourceURLs_;
    std::set<UUID> thumbnailsOnTheirWay_;
    /// Null while nobody looks for the files.
    std::shared_ptr<Look> look_;
};

}  // namespace stowpocket
