// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/BookmarkSearch.h"
#include "platform/linux/files/Mounts.h"
#include "services/Bookmarks.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace stowpocket {

/// Describes the file at `url`; none when there is no such file.
[[nodiscard]] std::optional<BookmarkRecord> describeFile(const FileURL& url, const Mounts& mounts);

/// Whether each of the recorded files is where it was, one answer per record in order. A file that is not there, on a
/// volume that is, is to be sought.
[[nodiscard]] std::vector<std::optional<ResolvedBookmark>>
filesInTheirPlaces(const std::vector<BookmarkRecord>& records, const Mounts& mounts);

/// Where the recorded files are now, one answer per record in order; none for one that is gone. Those that are not in
/// their places share one search.
[[nodiscard]] std::vector<std::optional<ResolvedBookmark>>
locateFiles(const std::vector<BookmarkRecord>& records, const std::vector<SearchRoot>& roots, const Mounts& mounts);

class MountTable;
class FileProbe;

/// Bookmarks by the file's own identity: its inode and moment of birth, which renaming and moving keep. `mounts` and
/// `probe` must outlive this.
class LinuxBookmarks : public Bookmarks {
public:
    /// Files that are missing are looked for around their old place and below `roots`.
    LinuxBookmarks(MountTable& mounts, FileProbe& probe, std::vector<SearchRoot> roots);

    /// The folders in which users keep their documents.
    [[nodiscard]] static std::vector<SearchRoot> userFolders();

    [[nodiscard]] std::optional<Bytes> create(const FileURL& url) override;
    /// A file on a mount that does not answer counts as where it was.
    [[nodiscard]] std::vector<std::optional<ResolvedBookmark>> resolve(std::span<const Bytes> bookmarks) override;
    [[nodiscard]] std::vector<std::optional<ResolvedBookmark>> search(std::span<const Bytes> bookmarks) override;
    /// Always false: files are reached by their permissions alone here, so there is no access to begin or to end.
    [[nodiscard]] bool startAccessing(const FileURL& url) override;
    void stopAccessing(const FileURL& url) override;

private:
    using Answers = std::vector<std::optional<ResolvedBookmark>>;
    using Locate = std::function<Answers(const std::vector<BookmarkRecord>& records)>;

    /// Asks each mount once; `locate` owns what it needs.
    [[nodiscard]] Answers locate(std::span<const Bytes> bookmarks, const Locate& locate);
    [[nodiscard]] std::vector<SearchRoot> promptRoots() const;

    MountTable& mounts_;
    FileProbe& probe_;
    const std::vector<SearchRoot> roots_;
};

}  // namespace stowpocket
