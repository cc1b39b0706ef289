// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "foundation/Values.h"

#include <optional>
#include <span>
#include <vector>

namespace stowpocket {

struct ResolvedBookmark {
    FileURL url;
    /// The bookmark no longer describes the file at `url` and should be renewed.
    bool isStale = false;
    /// The file is no longer at `url`; only a search can find out whether it was moved.
    bool isToBeSought = false;
};

/// Records of files that find them again after they were renamed or moved. Bookmark data comes from the preference
/// file and is untrusted.
class Bookmarks {
public:
    virtual ~Bookmarks() = default;

    /// Returns a bookmark of the file at `url`; none if there is no such file or it cannot be described. Any thread.
    [[nodiscard]] virtual std::optional<Bytes> create(const FileURL& url) = 0;
    /// Returns where the bookmarked files are now, one result per bookmark in the same order; none for a file that is
    /// gone and for data that is not a bookmark. A file on an unmounted volume keeps its old place. Main thread: a
    /// file that only a search of folders can find is marked as to be sought.
    [[nodiscard]] virtual std::vector<std::optional<ResolvedBookmark>> resolve(std::span<const Bytes> bookmarks) = 0;
    /// The same for files to be sought, which share one bounded search. Not on the main thread.
    [[nodiscard]] virtual std::vector<std::optional<ResolvedBookmark>> search(std::span<const Bytes> bookmarks) = 0;

    /// Begins access to a resolved file outside the application's own folders. Returns true if access is granted; the
    /// caller then calls `stopAccessing` once. Main thread.
    [[nodiscard]] virtual bool startAccessing(const FileURL& url) = 0;
    virtual void stopAccessing(const FileURL& url) = 0;
};

}  // namespace stowpocket
