// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Values.h"
#include "platform/linux/files/DurableFile.h"

#include <sys/types.h>

#include <compare>
#include <cstdint>
#include <optional>
#include <string>

namespace stowpocket {

/// One state of one file: another file at the same path has a different one, and so has the same file after a change.
struct FileState {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t modifiedSeconds = 0;
    std::int64_t modifiedNanoseconds = 0;
    std::int64_t size = 0;
    friend bool operator==(const FileState&, const FileState&) = default;
};

/// A file opened for reading that is known not to be a pipe, a device or a folder, so reading it comes to an end.
class RegularFile {
public:
    /// Follows links. None if there is no readable regular file at `path`. Waits for the file system.
    [[nodiscard]] static std::optional<RegularFile> open(const std::string& path);
    /// The present state of the regular file at `path`; none if there is none.
    [[nodiscard]] static std::optional<FileState> stateAt(const std::string& path);

    [[nodiscard]] int descriptor() const { return descriptor_.get(); }
    [[nodiscard]] std::int64_t size() const { return size_; }
    /// The first `limit` bytes, or fewer if the file is shorter. Does not move the read position.
    [[nodiscard]] Bytes head(std::size_t limit) const;
    /// Whether it is read over a network, so that a large file costs everybody time.
    [[nodiscard]] bool isOnNetwork() const;

private:
    RegularFile(FileDescriptor descriptor, std::int64_t size) : descriptor_(std::move(descriptor)), size_(size) {}

    FileDescriptor descriptor_;
    std::int64_t size_;
};

/// The type and permissions of the file at `path`, following links, if the kernel has them in memory; never waits for
/// a disk or a server. None for a file that was not accessed lately, and on kernels before 5.12. Any thread.
[[nodiscard]] std::optional<mode_t> cachedFileMode(const std::string& path);

}  // namespace stowpocket
