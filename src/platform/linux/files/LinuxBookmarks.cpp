// SPDX-License-Identifier: MIT
#include "platform/linux/files/LinuxBookmarks.h"

#include "platform/linux/files/BookmarkLocator.h"
#include "platform/linux/files/MountTable.h"
#include "platform/posix/FileProbe.h"

#include <QFile>
#include <QStandardPaths>

#include <array>
#include <map>
#include <memory>

namespace stowpocket {
namespace {

constexpr int depthInUserFolders = 3;

/// The records of one mount and where their answers belong.
struct Batch {
    std::vector<BookmarkRecord> records;
    std::vector<std::size_t> indexes;
};

std::optional<Bytes> encodedDescription(const FileURL& url, const Mounts& mounts) {
    const std::optional<BookmarkRecord> record = describeFile(url, mounts);
    return record ? std::optional(encodeBookmark(*record)) : std::nullopt;
}

}  // namespace

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
    // One question for each mount that may hang: its files cost one wait together, not one each.
    std::map<std::optional<std::string>, Batch> batches;
    for (std::size_t index = 0; index < bookmarks.size(); ++index) {
        if (std::optional<BookmarkRecord> record = decodeBookmark(bookmarks[index])) {
            Batch& batch = batches[probe_.unreliableMount(record->url.path())];
            batch.records.push_back(std::move(*record));
            batch.indexes.push_back(index);
        }
    }
    for (auto& [mount, batch] : batches) {
        // The question may outlive this call, and shares what it asks about.
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
