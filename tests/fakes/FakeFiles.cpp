// SPDX-License-Identifier: MIT
#include "fakes/FakeFiles.h"

namespace stowpocket {

void FakeFiles::add(const std::string& path, std::string contents) {
    files_[path] = File{++lastIdentity_, std::move(contents)};
}

void FakeFiles::rename(const std::string& from, const std::string& to) {
    files_[to] = files_.at(from);
    files_.erase(from);
}

std::string FakeFiles::contents(const FileURL& url) const {
    return files_.at(url.path()).contents;
}

bool FakeFiles::fileExists(const FileURL& url) {
    ++existsCalls;
    return files_.contains(url.path()) || folders_.contains(url.path());
}

std::optional<FileAttributes> FakeFiles::attributes(const FileURL& url) {
    const auto file = files_.find(url.path());
    if (file == files_.end() || unreadable.contains(url.path()))
        return std::nullopt;
    return FileAttributes{static_cast<std::int64_t>(file->second.contents.size())};
}

bool FakeFiles::createDirectory(const FileURL& url) {
    if (canCreateDirectories)
        folders_.insert(url.path());
    return canCreateDirectories;
}

bool FakeFiles::copyItem(const FileURL& from, const FileURL& to) {
    if (!files_.contains(from.path()) || files_.contains(to.path()) || !folders_.contains(to.parent().path()))
        return false;
    add(to.path(), contents(from));
    return true;
}

bool FakeFiles::removeItem(const FileURL& url) {
    files_.erase(url.path());
    return true;
}

std::optional<FileURL> FakeFiles::applicationSupportDirectory() {
    return hasApplicationSupport ? FileURL::fromPath("/home/user/.local/share") : std::nullopt;
}

/// The bookmark of a file is "<identity> <path>".
std::optional<Bytes> FakeFiles::create(const FileURL& url) {
    const auto file = files_.find(url.path());
    if (file == files_.end() || unbookmarkable.contains(url.path()))
        return std::nullopt;
    const std::string text = std::to_string(file->second.identity) + ' ' + url.path();
    return Bytes(text.begin(), text.end());
}

std::vector<std::optional<ResolvedBookmark>> FakeFiles::resolve(std::span<const Bytes> bookmarks) {
    std::vector<std::optional<ResolvedBookmark>> resolved = search(bookmarks);
    for (std::size_t index = 0; seeksMissing && index < bookmarks.size(); ++index) {
        const std::string text(bookmarks[index].begin(), bookmarks[index].end());
        const std::string recordedPath = text.substr(text.find(' ') + 1);
        if (recordedPath.starts_with('/') && !files_.contains(recordedPath))
            resolved[index] = ResolvedBookmark{*FileURL::fromPath(recordedPath), false, true};
    }
    return resolved;
}

std::vector<std::optional<ResolvedBookmark>> FakeFiles::search(std::span<const Bytes> bookmarks) {
    std::vector<std::optional<ResolvedBookmark>> resolved;
    for (const Bytes& bookmark : bookmarks) {
        const std::string text(bookmark.begin(), bookmark.end());
        const std::size_t space = text.find(' ');
        const std::string recordedPath = space == std::string::npos ? "" : text.substr(space + 1);
        std::optional<ResolvedBookmark>& answer = resolved.emplace_back();
        for (const auto& [path, file] : files_) {
            const bool isSame = std::to_string(file.identity) == text.substr(0, space);
            if (path == recordedPath || (isSame && !files_.contains(recordedPath)))
                answer = ResolvedBookmark{*FileURL::fromPath(path), !isSame || path != recordedPath};
        }
    }
    return resolved;
}

bool FakeFiles::startAccessing(const FileURL& url) {
    if (refusedAccess.contains(url.path()))
        return false;
    ++accesses[url.path()];
    return true;
}

void FakeFiles::stopAccessing(const FileURL& url) {
    --accesses[url.path()];
}

}  // namespace stowpocket
