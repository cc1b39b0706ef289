// SPDX-License-Identifier: MIT
#include "platform/linux/files/LinuxBookmarks.h"

#include "platform/linux/files/Mounts.h"
#include "platform/posix/FileProbe.h"

#include <QFile>
#include <QStandardPaths>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>

namespace stowpocket {
namespace {

std::vector<InodeIdentity> ancestorsOf(const FileURL& url, std::uint64_t device) {
    std::vector<InodeIdentity> ancestors;
    FileURL folder = url.parent();
    while (ancestors.size() < BookmarkRecord::maxAncestors) {
        const std::string path = folder.path();
        const Sighting sighting = lookAt(AT_FDCWD, path.c_str());
        if (sighting.kind != Sighting::Kind::present || sighting.identity.device != device)
            break;
        ancestors.push_back(sighting.identity.inode);
        if (path == "/")
            break;
        folder = folder.parent();
    }
    return ancestors;
}

/// Whether the volume of the file is not mounted, or another one is mounted in its place.
bool isVolumeAbsent(const BookmarkRecord& record, const Mounts& mounts) {
    if (record.mountPoint.empty())
        return false;
    if (std::ranges::find(mounts, record.mountPoint, &Mount::point) == mounts.end())
        return true;
    return !record.volume.empty() && volumeIdentifier(record.mountPoint) != record.volume;
}

constexpr int depthInUserFolders = 3;

/// The records of one mount and the places of their answers.
struct Batch {
    std::vector<BookmarkRecord> records;
    std::vector<std::size_t> indexes;
};

std::optional<Bytes> encodedDescription(const FileURL& url, const Mounts& mounts) {
    const std::optional<BookmarkRecord> record = describeFile(url, mounts);
    return record ? std::optional(encodeBookmark(*record)) : std::nullopt;
}

}  // namespace

std::optional<BookmarkRecord> describeFile(const FileURL& url, const Mounts& mounts) {
    const std::string path = url.path();
    Sighting sighting = lookAt(AT_FDCWD, path.c_str(), Detail::handle);
    if (sighting.kind != Sighting::Kind::present || ::access(path.c_str(), F_OK) != 0)
        return std::nullopt;
    const FileIdentity& identity = sighting.identity;
    BookmarkRecord record{.url = url,
                          .identity = identity,
                          .mountPoint = {},
                          .volume = {},
                          .ancestors = ancestorsOf(url, identity.device)};
    const auto mount = std::ranges::find(mounts, identity.mountId, &Mount::id);
    if (mount != mounts.end())
        record.mountPoint = mount->point;
    if (record.mountPoint != "/")  // the root is never exchanged for another volume
        record.volume = volumeIdentifier(record.mountPoint);
    return record;
}

std::vector<std::optional<ResolvedBookmark>> filesInTheirPlaces(const std::vector<BookmarkRecord>& records,
                                                                const Mounts& mounts) {
    std::vector<std::optional<ResolvedBookmark>> answers;
    answers.reserve(records.size());
    for (const BookmarkRecord& record : records) {
        ResolvedBookmark& answer = answers.emplace_back().emplace(ResolvedBookmark{.url = record.url});
        const Sighting sighting = lookAt(AT_FDCWD, record.url.path().c_str(), detailFor(record.identity));
        const bool isThere =
            sighting.kind == Sighting::Kind::present && sighting.identity.type == record.identity.type;
        const bool isUnchanged = isThere && isSameFile(record.identity, sighting.identity);
        if (isUnchanged || sighting.kind == Sighting::Kind::unknown || isVolumeAbsent(record, mounts))
            continue;
        answer.isStale = isThere;
        answer.isToBeSought = !isThere;
    }
    return answers;
}

std::vector<std::optional<ResolvedBookmark>> locateFiles(const std::vector<BookmarkRecord>& records,
                                                         const std::vector<SearchRoot>& roots, const Mounts& mounts) {
    std::vector<std::optional<ResolvedBookmark>> answers = filesInTheirPlaces(records, mounts);
    std::vector<BookmarkRecord> missing;
    std::vector<std::size_t> missingIndexes;
    for (std::size_t index = 0; index < records.size(); ++index) {
        if (answers[index]->isToBeSought) {
            missing.push_back(records[index]);
            missingIndexes.push_back(index);
        }
    }
    if (missing.empty())
        return answers;
    const std::vector<std::optional<std::string>> found = searchForFiles(missing, roots, mounts);
    for (std::size_t at = 0; at < missing.size(); ++at) {
        const std::optional<FileURL> url = found[at] ? FileURL::fromPath(*found[at]) : std::nullopt;
        answers[missingIndexes[at]] =
            url ? std::optional(ResolvedBookmark{.url = *url, .isStale = true}) : std::nullopt;
    }
    return answers;
}

LinuxBookmarks::LinuxBookmarks(MountTable& mounts, FileProbe& probe, std::vector<SearchRoot> roots)
    : mounts_(mounts), probe_(probe), roots_(std::move(roots)) {}

std::vector<SearchRoot> LinuxBookmarks::userFolders() {
    constexpr std::array locations = {QStandardPaths::DesktopLocation,  QStandardPaths::DocumentsLocation,
                                      QStandardPaths::DownloadLocation, QStandardPaths::PicturesLocation,
                                      QStandardPaths::MusicLocation,    QStandardPaths::MoviesLocation};
    std::vector<SearchRoot> roots;
    for (const QStandardPaths::StandardLocation location : locations) {
        const QByteArray path = QFile::encodeName(QStandardPaths::writableLocation(location));
        if (!path.isEmpty())
            roots.push_back({path.toStdString(), depthInUserFolders});
    }
    return roots;
}

std::optional<Bytes> LinuxBookmarks::create(const FileURL& url) {
    using Answer = std::optional<Bytes>;
    const auto describe = [url, mounts = mounts_.mounts()] { return encodedDescription(url, *mounts); };
    return probe_.ask<Answer>(url.path(), describe).value_or(std::nullopt);
}

std::vector<std::optional<ResolvedBookmark>> LinuxBookmarks::resolve(std::span<const Bytes> bookmarks) {
    return locate(bookmarks, [mounts = mounts_.mounts()](const std::vector<BookmarkRecord>& records) {
        return filesInTheirPlaces(records, *mounts);
    });
}

std::vector<std::optional<ResolvedBookmark>> LinuxBookmarks::search(std::span<const Bytes> bookmarks) {
    return locate(bookmarks,
                  [roots = promptRoots(), mounts = mounts_.mounts()](const std::vector<BookmarkRecord>& records) {
                      return locateFiles(records, roots, *mounts);
                  });
}

LinuxBookmarks::Answers LinuxBookmarks::locate(std::span<const Bytes> bookmarks, const Locate& locate) {
    Answers answers(bookmarks.size());
    // One question per mount that may hang: its files take one wait together, not one each.
    std::map<std::optional<std::string>, Batch> batches;
    for (std::size_t index = 0; index < bookmarks.size(); ++index) {
        if (std::optional<BookmarkRecord> record = decodeBookmark(bookmarks[index])) {
            Batch& batch = batches[probe_.unreliableMount(record->url.path())];
            batch.records.push_back(std::move(*record));
            batch.indexes.push_back(index);
        }
    }
    for (auto& [mount, batch] : batches) {
        // The question may outlive this call and shares ownership of its data.
        const auto records = std::make_shared<const std::vector<BookmarkRecord>>(std::move(batch.records));
        const std::optional<Answers> located =
            probe_.ask<Answers>(records->front().url.path(), [records, locate] { return locate(*records); });
        for (std::size_t at = 0; at < records->size(); ++at)
            answers[batch.indexes[at]] = located ? (*located)[at] : ResolvedBookmark{(*records)[at].url, false};
    }
    return answers;
}

std::vector<SearchRoot> LinuxBookmarks::promptRoots() const {
    std::vector<SearchRoot> roots;
    for (const SearchRoot& root : roots_) {
        if (!probe_.unreliableMount(root.path))
            roots.push_back(root);
    }
    return roots;
}

bool LinuxBookmarks::startAccessing(const FileURL& /*url*/) {
    return false;
}

void LinuxBookmarks::stopAccessing(const FileURL& /*url*/) {}

}  // namespace stowpocket
