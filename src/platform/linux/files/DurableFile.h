// SPDX-License-Identifier: MIT
#pragma once

#include <unistd.h>

#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace stowpocket {

/// Owns an open file and closes it. Negative when the file could not be opened; errno then says why.
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
    /// Gives the file to the caller, who closes it.
    [[nodiscard]] int release() { return std::exchange(descriptor_, -1); }

private:
    int descriptor_ = -1;
};

/// What a file that was replaced outlives.
enum class Durability {
    power,    ///< the machine: the writer waits for the disk
    program,  ///< this program: should the power fail at once, neither contents may be left
};

/// Puts `bytes` in the place of the file at the absolute `path`, whose readers find the old contents or the new ones
/// at every moment; a link there stays, and the file that it leads to is replaced. Readable by the user alone, in a
/// folder that exists. Where `previous` is given, the file that is replaced stays under that path, if the file system
/// can give a file two names. An error when the old contents remain. Any thread, one writer a file in this process.
[[nodiscard]] std::error_code replaceFile(const std::string& path, std::string_view bytes,
                                          Durability durability = Durability::power,
                                          const std::string& previous = {});

/// Removes what writers that were killed left beside `path`.
void removeUnfinishedReplacements(const std::string& path);

/// The file that `path` leads to through links, whether it exists or not.
[[nodiscard]] std::string linkTarget(const std::string& path);

/// Writes all of `bytes` to an open file.
[[nodiscard]] std::error_code writeAll(int descriptor, std::string_view bytes);

/// What errno says now.
[[nodiscard]] std::error_code lastError();

}  // namespace stowpocket
