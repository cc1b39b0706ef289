// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "foundation/Values.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace stowpocket {

enum class FileType { file, folder, link, other };

/// A time as file systems keep it.
struct Moment {
    std::int64_t seconds = 0;
    std::uint32_t nanoseconds = 0;
    friend bool operator==(const Moment&, const Moment&) = default;
};

/// What a file keeps through renaming and moving on its file system. An inode number is given to another file once
/// its own is deleted; the moment of birth tells the two apart, where the file system knows it.
struct InodeIdentity {
    std::uint64_t inode = 0;
    std::optional<Moment> birth;
    friend bool operator==(const InodeIdentity&, const InodeIdentity&) = default;
};

/// All that can be told about which file this is.
struct FileIdentity {
    FileType type = FileType::other;
    InodeIdentity inode;
    /// The kernel's handle of the file in hexadecimal, with the generation of its inode; empty where there is none.
    std::string handle;
    std::int64_t size = 0;
    Moment modified;

    /// Which file system and mount it was seen on. These hold until the next mount only and are not for storing.
    std::uint64_t device = 0;
    std::uint64_t mountId = 0;
    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// What was found under a name; `unknown` when it may not be looked at.
struct Sighting {
    enum class Kind { present, absent, unknown };
    Kind kind = Kind::unknown;
    FileIdentity identity;
};

/// How closely to look: asking for the handle takes as long again as all the rest.
enum class Detail { inode, handle };

/// Looks at `name` in an open folder (or AT_FDCWD), at a link itself and not at what it leads to. Where the file
/// system does not know the moment of birth, the handle is told in any case.
[[nodiscard]] Sighting lookAt(int folder, const char* name, Detail detail = Detail::inode);

/// What it takes to recognise the file that `recorded` describes.
[[nodiscard]] inline Detail detailFor(const FileIdentity& recorded) {
    return recorded.inode.birth ? Detail::inode : Detail::handle;
}

/// Whether both describe one file. Without a moment of birth on either side, only a file that was not written to
/// since can be recognised.
[[nodiscard]] bool isSameFile(const FileIdentity& recorded, const FileIdentity& seen);

/// The identifier of the file system mounted at `mountPoint` in hexadecimal, empty when it tells none. It stays the
/// same wherever and whenever the volume is mounted.
[[nodiscard]] std::string volumeIdentifier(const std::string& mountPoint);

/// What a bookmark remembers of its file.
struct BookmarkRecord {
    /// How many folders above the file are remembered.
    static constexpr std::size_t maxAncestors = 4;

    FileURL url;
    FileIdentity identity;
    /// Where its volume was mounted, empty when unknown, and that volume's identifier, empty when it has none.
    std::string mountPoint;
    std::string volume;
    /// The folders above the file on the same volume, nearest first.
    std::vector<InodeIdentity> ancestors;
    friend bool operator==(const BookmarkRecord&, const BookmarkRecord&) = default;
};

/// The record as bookmark data: versioned JSON, its paths escaped as URLs so that names in any encoding survive.
[[nodiscard]] Bytes encodeBookmark(const BookmarkRecord& record);

/// Empty when `data` is no bookmark of a version that is known here.
[[nodiscard]] std::optional<BookmarkRecord> decodeBookmark(const Bytes& data);

}  // namespace stowpocket
