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

/// One state of one file: another file at the same path, or the same file after a change, has a different one.
struct FileState {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t modifiedSeconds = 0;
    std::int64_t modifiedNanoseconds = 0;
    std::int64_t size = 0;
    friend bool operator==(const FileState&, const FileState&) = default;
};

/// A file opened for reading that is sure not to be a pipe, a device or a folder: reading it comes to an end.
class RegularFile {
public:
    /// Follows links. None when there is no regular file at `path` that may be read. Waits for the file system.
    [[nodiscard]] static std::optional<RegularFile> open(const std::string& path);
    /// What a regular file at `path` is now; none without one.
    [[nodiscard]] static std::optional<FileState> stateAt(const std::string& path);

    [[nodiscard]] int descriptor() const { return descriptor_.get(); }
    [[nodiscard]] std::int64_t size() const { return size_; }
    /// The first `limit` bytes, or fewer where the file is shorter. The place from which others read stays.
    [[nodiscard]] Bytes head(std::size_t limit) const;
    /// Whether reading it goes over a network, so that a large one costs everybody's time.
    [[nodiscard]] bool isOnNetwork() const;

private:
    RegularFile(FileDescriptor descriptor, std::int64_t size) : descriptor_(std::move(descriptor)), size_(size) {}

    FileDescriptor descriptor_;
    std::int64_t size_;
};

/// Type and rights of the file at `path`, links followed, if the kernel has them in memory: a disk or a server is
/// never waited for. None for what was not asked for lately, and on kernels before 5.12. On any thread.
[[nodiscard]] std::optional<mode_t> cachedFileMode(const std::string& path);

}  // namespace stowpocket
