// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "services/CoreServices.h"
#include "services/Pictures.h"
#include "shelf/PersistedShelf.h"

#include <cstddef>
#include <cstdint>
#include <functional>
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

/// How the list of items has just changed, so that a view can update only what differs.
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

/// What the shelf can take back.
enum class Undoable { clear, removal };

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

    /// The folder for dropped contents without a file of their own; not created here. Ends the process if the user
    /// has no folder for application data.
    [[nodiscard]] static FileURL filePromiseDirectory(FileManager& fileManager);

    /// Loads the saved shelf; called once, at launch. Posts nothing; saves once if a bookmark was renewed. Files that
    /// have to be sought are sought in the background. Their items are missing until then, and leave the shelf if the
    /// file is not found.
    void load();
    /// Appends the files that are not yet on the shelf, as many as the capacity allows. A large batch is prepared in
    /// the background and appears later. Returns how many did not fit.
    int addFiles(std::span<const FileURL> urls);
    void removeItem(const UUID& id);
    /// As one change.
    void removeItems(std::span<const UUID> ids);
    void clear();
    /// Removes the items that the last check found missing. An item whose file is still being sought stays.
    void removeMissingItems();

    /// The last thing that took items off the shelf, if it can still be taken back. What was missing goes off by
    /// itself and is brought back together with what the user took off before.
    [[nodiscard]] std::optional<Undoable> undoable() const;
    /// Brings those items back into their places, the same as they were, as many as the capacity allows. Those that
    /// were missing come back only if their files did, which is looked up in the background.
    void undo();
    void forgetUndo() { undo_.reset(); }

    /// Checks in the background which files still exist, and marks the items. One check runs at a time; a request
    /// during a check starts another one afterwards.
    void refreshAvailability();
    /// Requests a thumbnail for every available item that has none and no pending request.
    void requestThumbnails();

    [[nodiscard]] const std::vector<ShelfItem>& items() const { return items_; }
    /// True while a large batch is being prepared.
    [[nodiscard]] bool isLoading() const { return isLoading_; }
    /// The number of files in batches that are still being prepared. They count towards the capacity.
    [[nodiscard]] std::int64_t pendingAddCount() const { return pendingAddCount_; }
    /// Such batches are numbered from 1. The number of the latest batch, and whether a batch is still being prepared.
    [[nodiscard]] std::uint64_t latestBatch() const { return latestBatch_; }
    [[nodiscard]] bool isPending(std::uint64_t batch) const { return pendingBatches_.contains(batch); }
    [[nodiscard]] std::int64_t capacity() const;
    /// Where the shelf is kept.
    [[nodiscard]] PreferenceStore& preferences() const { return services_.core.preferences; }

    /// Null until the thumbnail has been made.
    [[nodiscard]] const Image* thumbnail(const UUID& id) const;
    /// Requested from the desktop once per file type, or once per file for types whose files have their own icons.
    [[nodiscard]] Image icon(const ShelfItem& item);

    Signal<const ShelfChange&> itemsChanged;
    Signal<> isLoadingChanged;
    Signal<const UUID&> thumbnailChanged;

private:
    class AvailabilityCheck;
    struct SearchAnswer;

    explicit ShelfManager(const ShelfServices& services) : services_(services) {}

    [[nodiscard]] std::vector<FileURL> urlsNotOnShelf(std::span<const FileURL> urls) const;
    void addInBackground(std::vector<FileURL> urls);
    void finishBatch(std::uint64_t batch, std::vector<ShelfItem> built);
    /// Returns the index of the first new item.
    std::size_t append(std::vector<ShelfItem> built);
    void announceAdded(std::size_t first);
    void setIsLoading(bool isLoading);
    void remember(Undoable what);
    void noteMissing();
    void bringBack(const std::set<UUID>& found);
    /// Begins access again to the files of items that were loaded with it.
    void beginAccessAgain(const std::vector<ShelfItem>& items);
    void removeIf(const std::function<bool(const ShelfItem&)>& isUnwanted);
    void erase(const std::vector<std::size_t>& indexes);
    void endAccess(const FileURL& url);
    void search(std::vector<UUID> ids);
    void applySearch(const std::vector<SearchAnswer>& answers);
    void applyAvailability(const std::vector<std::pair<UUID, bool>>& changed);
    void requestThumbnail(const ShelfItem& item, double scale);
    void storeThumbnail(const UUID& id, Image image);
    void packThumbnail(const UUID& id);
    void save();
    /// Saves the shelf, then emits and posts the change. Ends every change of which items are on the shelf.
    void commit(const ShelfChange& change);

    ShelfServices services_;
    std::vector<ShelfItem> items_;
    bool isLoading_ = false;
    std::int64_t pendingAddCount_ = 0;
    std::uint64_t latestBatch_ = 0;
    std::set<std::uint64_t> pendingBatches_;
    /// Both caches are never emptied: ids are unique, and an icon serves all files of its type. Thumbnails of items
    /// that have left the shelf are packed.
    std::unordered_map<UUID, Image> thumbnailCache_;
    std::map<std::string, Image, std::less<>> iconCache_;
    /// Access to each of these has begun and ends once, when its item leaves the shelf.
    std::set<FileURL> accessedResourceURLs_;
    std::set<UUID> thumbnailsOnTheirWay_;
    /// Items whose files are being sought. None of them is known to be missing.
    std::set<UUID> sought_;
    /// The shelf as it was. Anything that is added makes it forgotten.
    struct Undo {
        Undoable what = Undoable::removal;
        std::vector<ShelfItem> before;
        /// Items that were missing when they left.
        std::set<UUID> missing;
        std::set<FileURL> accessed;
    };
    std::shared_ptr<Undo> undo_;
    /// Null while no check is running.
    std::shared_ptr<AvailabilityCheck> availabilityCheck_;
};

}  // namespace stowpocket
