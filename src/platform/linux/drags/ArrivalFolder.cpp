// SPDX-License-Identifier: MIT
#include "platform/linux/drags/ArrivalFolder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace stowpocket {

namespace fs = std::filesystem;

namespace {

bool isEmptyFile(const fs::path& path) {
    std::error_code unreadable;
    return fs::is_regular_file(fs::symlink_status(path, unreadable)) && fs::file_size(path, unreadable) == 0;
}

}  // namespace

std::optional<ArrivalFolder> ArrivalFolder::make(const FileURL& parent) {
    std::string path = parent.path() + "/drop-XXXXXX";
    if (::mkdtemp(path.data()) == nullptr)
        return std::nullopt;
    std::optional<FileURL> url = FileURL::fromPath(path);
    return url ? std::optional(ArrivalFolder(std::move(*url))) : std::nullopt;
}

std::vector<FileURL> ArrivalFolder::files() const {
    std::vector<FileURL> files;
    std::error_code failure;
    for (fs::directory_iterator entry(url_.path(), failure), end; !failure && entry != end;
         entry.increment(failure)) {
        std::error_code unreadable;
        const fs::file_status status = entry->symlink_status(unreadable);
        if (fs::is_regular_file(status) || fs::is_directory(status))
            files.push_back(url_.appending(entry->path().filename().native()));
    }
    std::ranges::sort(files);
    return files;
}

bool ArrivalFolder::hasContent() const {
    return std::ranges::any_of(files(), [](const FileURL& file) { return !isEmptyFile(file.path()); });
}

std::uint64_t ArrivalFolder::size() const {
    std::uint64_t size = 0;
    std::error_code failure;
    for (fs::recursive_directory_iterator entry(url_.path(), failure), end; !failure && entry != end;
         entry.increment(failure)) {
        std::error_code unreadable;
        if (!fs::is_regular_file(entry->symlink_status(unreadable)))
            continue;
        const std::uintmax_t bytes = entry->file_size(unreadable);
        size += unreadable ? 0 : bytes;
    }
    return size;
}

void ArrivalFolder::discardIfEmpty() const {
    for (const FileURL& file : files()) {
        if (isEmptyFile(file.path()))
            ::unlink(file.path().c_str());
    }
    ::rmdir(url_.path().c_str());
}

}  // namespace stowpocket
