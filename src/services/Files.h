// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "foundation/Signal.h"

#include <cstdint>
#include <optional>

namespace stowpocket {

struct FileAttributes {
    /// In bytes; none when the file system does not tell.
    std::optional<std::int64_t> size;
};

/// Files as the program sees them. May be called on any thread; every call may wait for a disk or a network, on the
/// main thread only for a moment: there a file system that does not answer counts as holding the file, so that
/// nothing leaves the shelf on a guess.
class FileManager {
public:
    virtual ~FileManager() = default;

    /// Whether something is at `url`; a symbolic link counts when its target exists.
    [[nodiscard]] virtual bool fileExists(const FileURL& url) = 0;
    /// Of a symbolic link itself. None when there is nothing at `url` or it may not be looked at.
    [[nodiscard]] virtual std::optional<FileAttributes> attributes(const FileURL& url) = 0;
    /// Makes the folder and those above it, readable by the user alone. True when it stands afterwards.
    [[nodiscard]] virtual bool createDirectory(const FileURL& url) = 0;
    /// Copies a file or folder to a place where nothing is yet; a symbolic link there is never followed. True when
    /// the whole copy stands; otherwise nothing of it is left.
    [[nodiscard]] virtual bool copyItem(const FileURL& from, const FileURL& to) = 0;
    /// Removes a file, a link or a whole folder. True when nothing is there afterwards.
    virtual bool removeItem(const FileURL& url) = 0;
    /// The folder for the data that applications keep for the user; none when the user has no home folder.
    [[nodiscard]] virtual std::optional<FileURL> applicationSupportDirectory() = 0;
    /// None when the user has no home folder.
    [[nodiscard]] virtual std::optional<FileURL> homeDirectory() = 0;
};

/// The place from which the user can take deleted files back. Any thread but the main one: it may wait for a disk.
class Trash {
public:
    virtual ~Trash() = default;
    /// True when the file lies in the Trash afterwards.
    [[nodiscard]] virtual bool trashItem(const FileURL& url) = 0;
};

/// Tells when file systems come and go. Main thread.
class Volumes {
public:
    virtual ~Volumes() = default;
    [[nodiscard]] virtual Signal<>& didMount() = 0;
    [[nodiscard]] virtual Signal<>& didUnmount() = 0;
};

}  // namespace stowpocket
