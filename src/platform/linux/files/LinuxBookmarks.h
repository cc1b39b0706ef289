// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/BookmarkSearch.h"
#include "platform/linux/files/Mounts.h"
#include "services/Files.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace stowpocket {

/// Describes the file at `url`; none if there is no such file.
[[nodiscard]] std::optional<BookmarkRecord> describeFile(const FileURL& url, const Mounts& mounts);

/// Whether each recorded file is at its path, one answer per record in order. A file that is missing on a mounted
/// volume has to be searched for.
[[nodiscard]] std::vector<std::optional<ResolvedBookmark>>
filesInTheirPlaces(const std::vector<BookmarkRecord>& records, const Mounts& mounts);

/// The present paths of the recorded files, one answer per record in order; none for a file that no longer exists.
/// Files that are not at their paths share one search.
[[nodiscard]] std::vector<std::optional<ResolvedBookmark>>
locateFiles(const std::vector<BookmarkRecord>& records, const std::vector<SearchRoot>& roots, const Mounts& mounts);

class MountTable;
class FileProbe;

/// Bookmarks that identify a file by its inode and birth time, which renaming and moving keep. `mounts` and `probe`
/// must outlive this object.
class LinuxBookmarks : public Bookmarks {
public:
    /// Missing files are looked for around their old place and below `roots`.
    LinuxBookmarks(MountTable& mounts, FileProbe& probe, std::vector<SearchRoot> roots);

    /// The folders in which users keep their documents.
    [[nodiscard]] static std::vector<SearchRoot> userFolders();

    [[nodiscard]] std::optional<Bytes> create(const FileURL& url) override;
    /// A file on a mount that does not answer counts as being at its path.
    [[nodiscard]] std::vector<std::optional<ResolvedBookmark>> resolve(std::span<const Bytes> bookmarks) override;
    [[nodiscard]] std::vector<std::optional<ResolvedBookmark>> search(std::span<const Bytes> bookmarks) override;
    /// Always false: access to files depends on their permissions only, so there is no access to begin or end.
    [[nodiscard]] bool startAccessing(const FileURL& url) override;
    void stopAccessing(const FileURL& url) override;

private:
    using Answers = std::vector<std::optional<ResolvedBookmark>>;
    using Locate = std::function<Answers(const std::vector<BookmarkRecord>& records)>;

    /// Asks each mount once. `locate` owns the data it needs.
    [[nodiscard]] Answers locate(std::span<const Bytes> bookmarks, const Locate& locate);
    [[nodiscard]] std::vector<SearchRoot> promptRoots() const;

    MountTable& mounts_;
    FileProbe& probe_;
    const std::vector<SearchRoot> roots_;
};

}  // namespace stowpocket
