// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/FileDescriptor.h"

#include <dirent.h>

#include <cerrno>
#include <memory>
#include <string_view>

namespace stowpocket {

/// The entries of an open folder, without "." and "..".
class DirectoryStream {
public:
    explicit DirectoryStream(FileDescriptor folder) : stream_(::fdopendir(folder.get())) {
        if (stream_ != nullptr)
            static_cast<void>(folder.release());
    }

    [[nodiscard]] bool isOpen() const { return stream_ != nullptr; }
    [[nodiscard]] int folder() const { return ::dirfd(stream_.get()); }
    /// Null at the end. Valid until the next call.
    [[nodiscard]] const dirent* next() {
        for (;;) {
            errno = 0;
            const dirent* const entry = ::readdir(stream_.get());
            if (entry == nullptr) {
                hasFailed_ = errno != 0;
                return nullptr;
            }
            const std::string_view name = entry->d_name;
            if (name != "." && name != "..")
                return entry;
        }
    }
    /// Whether the entries ended because the folder could not be read further.
    [[nodiscard]] bool hasFailed() const { return hasFailed_; }

private:
    struct Close {
        void operator()(DIR* stream) const { ::closedir(stream); }
    };
    std::unique_ptr<DIR, Close> stream_;
    bool hasFailed_ = false;
};

}  // namespace stowpocket
