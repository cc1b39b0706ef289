// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/DurableFile.h"
#include "services/Files.h"

#include <dirent.h>

#include <cerrno>
#include <memory>
#include <string>
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
    /// Returns null at the end. Valid until the next call.
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
    /// Whether the entries ended because of a read error.
    [[nodiscard]] bool hasFailed() const { return hasFailed_; }

private:
    struct Close {
        void operator()(DIR* stream) const { ::closedir(stream); }
    };
    std::unique_ptr<DIR, Close> stream_;
    bool hasFailed_ = false;
};

/// Copies the file or folder at `from` to `to`, where nothing may exist yet. A link at `from` is followed; links
/// inside a folder are copied as links. Permissions are kept, except for the set-user-ID and set-group-ID bits.
/// Returns true if the copy is complete; otherwise no part of it remains. Pipes, sockets and devices are refused.
[[nodiscard]] bool copyTree(const std::string& from, const std::string& to);

/// Removes the file, link or folder at `path` with its contents, but never the target of a link. Returns true if
/// nothing is there afterwards.
bool removeTree(const std::string& path);

/// The same for a name in an open folder.
bool removeTreeAt(int folder, const char* name);

/// Folders nested deeper than this are neither copied nor removed.
inline constexpr int maxTreeDepth = 128;

class FileProbe;

/// The file system of this machine. `probe` must outlive this object. Copying and removing have no time limit on any
/// thread: a file on a network takes as long as it takes and belongs in the background.
class PosixFileManager : public FileManager {
public:
    explicit PosixFileManager(FileProbe& probe) : probe_(probe) {}

    [[nodiscard]] bool fileExists(const FileURL& url) override;
    [[nodiscard]] std::optional<FileAttributes> attributes(const FileURL& url) override;
    [[nodiscard]] bool createDirectory(const FileURL& url) override;
    [[nodiscard]] bool copyItem(const FileURL& from, const FileURL& to) override;
    bool removeItem(const FileURL& url) override;
    [[nodiscard]] std::optional<FileURL> applicationSupportDirectory() override;
    [[nodiscard]] std::optional<FileURL> homeDirectory() override;

private:
    FileProbe& probe_;
};

}  // namespace stowpocket
