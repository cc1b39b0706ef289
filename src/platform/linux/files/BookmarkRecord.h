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

/// Identifies a file through renaming and moving on its file system. An inode number is reused once its file is
/// deleted; the birth time tells the two files apart, if the file system records it.
struct InodeIdentity {
    std::uint64_t inode = 0;
    std::optional<Moment> birth;
    friend bool operator==(const InodeIdentity&, const InodeIdentity&) = default;
};

/// Everything that helps to tell which file this is.
struct FileIdentity {
    FileType type = FileType::other;
    InodeIdentity inode;
    /// The kernel's handle of the file in hexadecimal, with the generation of its inode; empty if there is none.
    std::string handle;
    std::int64_t size = 0;
    Moment modified;

    /// The file system and mount on which it was seen. These are valid until the next mount only and must not be
    /// stored.
    std::uint64_t device = 0;
    std::uint64_t mountId = 0;
    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// What was found under a name; `unknown` if access is denied.
struct Sighting {
    enum class Kind { present, absent, unknown };
    Kind kind = Kind::unknown;
    FileIdentity identity;
};

/// How closely to look: the handle takes as long as everything else together.
enum class Detail { inode, handle };

/// Looks at `name` in an open folder (or AT_FDCWD), at a link itself rather than its target. Returns the handle in
/// any case if the file system does not record birth times.
[[nodiscard]] Sighting lookAt(int folder, const char* name, Detail detail = Detail::inode);

/// How closely to look to recognise the file that `recorded` describes.
[[nodiscard]] inline Detail detailFor(const FileIdentity& recorded) {
    return recorded.inode.birth ? Detail::inode : Detail::handle;
}

/// Whether both describe the same file. If either lacks a birth time, only a file that has not been written to since
/// can be recognised.
[[nodiscard]] bool isSameFile(const FileIdentity& recorded, const FileIdentity& seen);

/// The identifier of the file system mounted at `mountPoint` in hexadecimal; empty if it has none. It stays the same
/// wherever and whenever the volume is mounted.
[[nodiscard]] std::string volumeIdentifier(const std::string& mountPoint);

/// What a bookmark records about its file.
struct BookmarkRecord {
    /// How many folders above the file are recorded.
    static constexpr std::size_t maxAncestors = 4;

    FileURL url;
    FileIdentity identity;
    /// The mount point of its volume, empty if unknown, and the identifier of that volume, empty if it has none.
    std::string mountPoint;
    std::string volume;
    /// The folders above the file on the same volume, nearest first.
    std::vector<InodeIdentity> ancestors;
    friend bool operator==(const BookmarkRecord&, const BookmarkRecord&) = default;
};

/// The record as bookmark data: versioned JSON, its paths escaped as URLs so that names in any encoding survive.
[[nodiscard]] Bytes encodeBookmark(const BookmarkRecord& record);

/// Returns none if `data` is not a bookmark of a known version.
[[nodiscard]] std::optional<BookmarkRecord> decodeBookmark(const Bytes& data);

}  // namespace stowpocket
