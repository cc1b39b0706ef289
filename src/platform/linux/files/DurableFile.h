// SPDX-License-Identifier: MIT
#pragma once

#include <unistd.h>

#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace stowpocket {

/// Owns an open file and closes it. Negative if the file could not be opened; errno then contains the reason.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~FileDescriptor() {
        if (isOpen())
            ::close(descriptor_);
    }

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    [[nodiscard]] int get() const { return descriptor_; }
    /// Passes the file to the caller, who closes it.
    [[nodiscard]] int release() { return std::exchange(descriptor_, -1); }

private:
    int descriptor_ = -1;
};

/// What a replaced file survives.
enum class Durability {
    power,    ///< the machine: the writer waits for the disk
    program,  ///< this program: should the power fail at once, neither contents may be left
};

/// Replaces the file at the absolute `path` with `bytes`. Readers always find either the old contents or the new
/// ones. A link is kept, and its target is replaced. The file is readable by the user only, and its folder must
/// exist. If `previous` is given, the replaced file is kept under that path, provided that the file system can give a
/// file two names. Returns an error if the old contents remain. Any thread, one writer per file in this process.
[[nodiscard]] std::error_code replaceFile(const std::string& path, std::string_view bytes,
                                          Durability durability = Durability::power,
                                          const std::string& previous = {});

/// Removes the unfinished files that killed writers have left beside `path`.
void removeUnfinishedReplacements(const std::string& path);

/// The target of `path` after all links, whether it exists or not.
[[nodiscard]] std::string linkTarget(const std::string& path);

/// Writes all of `bytes` to an open file.
[[nodiscard]] std::error_code writeAll(int descriptor, std::string_view bytes);

/// The current value of errno.
[[nodiscard]] std::error_code lastError();

}  // namespace stowpocket
