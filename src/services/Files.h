// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "foundation/Signal.h"
#include "foundation/Values.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace stowpocket {

struct FileAttributes {
    /// In bytes; none if the file system does not report it.
    std::optional<std::int64_t> size;
};

/// The file system. May be called on any thread. Every call may block on a disk or a network, on the main thread only
/// briefly: there a file system that does not respond in time counts as having the file, so that no item leaves the
/// shelf on a guess.
class FileManager {
public:
    virtual ~FileManager() = default;

    /// Whether something is at `url`; a symbolic link counts when its target exists.
    [[nodiscard]] virtual bool fileExists(const FileURL& url) = 0;
    /// The attributes of a symbolic link are its own. None if there is nothing at `url` or access is denied.
    [[nodiscard]] virtual std::optional<FileAttributes> attributes(const FileURL& url) = 0;
    /// Creates the folder and its missing parents, accessible to the user only. True if it exists afterwards.
    [[nodiscard]] virtual bool createDirectory(const FileURL& url) = 0;
    /// Copies a file or folder to a path where nothing exists yet; a symbolic link at that path is never followed.
    /// True if the copy is complete; otherwise no part of it remains.
    [[nodiscard]] virtual bool copyItem(const FileURL& from, const FileURL& to) = 0;
    /// Removes a file, a link or a whole folder. True when nothing is there afterwards.
    virtual bool removeItem(const FileURL& url) = 0;
    /// The folder for application data; none if the user has no home folder.
    [[nodiscard]] virtual std::optional<FileURL> applicationSupportDirectory() = 0;
    /// None when the user has no home folder.
    [[nodiscard]] virtual std::optional<FileURL> homeDirectory() = 0;
};

/// The desktop's trash. Any thread but the main one: calls may block on a disk.
class Trash {
public:
    virtual ~Trash() = default;
    /// True if the file is in the trash afterwards.
    [[nodiscard]] virtual bool trashItem(const FileURL& url) = 0;
};

/// Reports mounted and unmounted file systems. Main thread.
class Volumes {
public:
    virtual ~Volumes() = default;
    [[nodiscard]] virtual Signal<>& didMount() = 0;
    [[nodiscard]] virtual Signal<>& didUnmount() = 0;
};

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
