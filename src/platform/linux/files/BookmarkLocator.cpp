// SPDX-License-Identifier: MIT
#include "platform/linux/files/BookmarkLocator.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>

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

/// Whether the volume that held the file is not mounted, or another one is in its place.
bool isVolumeAbsent(const BookmarkRecord& record, const Mounts& mounts) {
    if (record.mountPoint.empty())
        return false;
    if (std::ranges::find(mounts, record.mountPoint, &Mount::point) == mounts.end())
        return true;
    return !record.volume.empty() && volumeIdentifier(record.mountPoint) != record.volume;
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

}  // namespace stowpocket
