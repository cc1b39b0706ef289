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
    /// The bookmark no longer describes the file at `url` and should be made anew from it.
    bool isStale = false;
    /// The file is not at `url`, where it was; only a search can tell whether it is somewhere else.
    bool isToBeSought = false;
};

/// Remembers files beyond their path, so that a file that was given another name or moved is found again. Bookmark
/// data comes back from the preference file and may hold anything.
class Bookmarks {
public:
    virtual ~Bookmarks() = default;

    /// A bookmark of the file at `url`; none when there is no such file or it cannot be described. Any thread.
    [[nodiscard]] virtual std::optional<Bytes> create(const FileURL& url) = 0;
    /// Where the bookmarked files are now, one answer per bookmark in the same order; none for a file that is gone
    /// and for data that is no bookmark. A file on a volume that is not there counts as where it was. Main thread: a
    /// file for which folders would have to be searched is answered as one to be sought.
    [[nodiscard]] virtual std::vector<std::optional<ResolvedBookmark>> resolve(std::span<const Bytes> bookmarks) = 0;
    /// The same for files to be sought, all of which share one bounded search. Not on the main thread.
    [[nodiscard]] virtual std::vector<std::optional<ResolvedBookmark>> search(std::span<const Bytes> bookmarks) = 0;

    /// Begins access to a resolved file outside the application's own folders. True when access was granted; each
    /// true is paid back by one `stopAccessing`. Main thread.
    [[nodiscard]] virtual bool startAccessing(const FileURL& url) = 0;
    virtual void stopAccessing(const FileURL& url) = 0;
};

}  // namespace stowpocket
