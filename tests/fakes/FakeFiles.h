// SPDX-License-Identifier: MIT
#pragma once

#include "services/Files.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>

namespace stowpocket {

using Names = std::vector<std::string>;

[[nodiscard]] inline FileURL fileAt(const std::string& path) {
    return *FileURL::fromPath(path);
}

/// What `name` says of each of these files or items.
template <class Files, class Name>
[[nodiscard]] Names namesOf(const Files& files, Name name) {
    Names names;
    std::ranges::transform(files, std::back_inserter(names), name);
    return names;
}

/// A file system in memory: paths, their contents, and an identity per file that renaming keeps.
struct FakeFiles : FileManager, Bookmarks {
    /// Takes the place of what is at the path.
    void add(const std::string& path, std::string contents = "contents") {
        files_[path] = File{++lastIdentity_, std::move(contents)};
    }
    void rename(const std::string& from, const std::string& to) {
        files_[to] = files_.at(from);
        files_.erase(from);
    }
    [[nodiscard]] std::string contents(const FileURL& url) const { return files_.at(url.path()).contents; }

    [[nodiscard]] bool fileExists(const FileURL& url) override {
        ++existsCalls;
        return files_.contains(url.path()) || folders_.contains(url.path());
    }
    [[nodiscard]] std::optional<FileAttributes> attributes(const FileURL& url) override {
        const auto file = files_.find(url.path());
        if (file == files_.end() || unreadable.contains(url.path()))
            return std::nullopt;
        return FileAttributes{static_cast<std::int64_t>(file->second.contents.size())};
    }
    [[nodiscard]] bool createDirectory(const FileURL& url) override {
        if (canCreateDirectories)
            folders_.insert(url.path());
        return canCreateDirectories;
    }
    [[nodiscard]] bool copyItem(const FileURL& from, const FileURL& to) override {
        if (!files_.contains(from.path()) || files_.contains(to.path()) || !folders_.contains(to.parent().path()))
            return false;
        add(to.path(), contents(from));
        return true;
    }
    bool removeItem(const FileURL& url) override {
        files_.erase(url.path());
        return true;
    }
    [[nodiscard]] std::optional<FileURL> applicationSupportDirectory() override {
        return hasApplicationSupport ? FileURL::fromPath("/home/user/.local/share") : std::nullopt;
    }
    [[nodiscard]] std::optional<FileURL> homeDirectory() override { return FileURL::fromPath("/home/user"); }

    /// The bookmark of a file is "<identity> <path>".
    [[nodiscard]] std::optional<Bytes> create(const FileURL& url) override {
        const auto file = files_.find(url.path());
        if (file == files_.end() || unbookmarkable.contains(url.path()))
            return std::nullopt;
        const std::string text = std::to_string(file->second.identity) + ' ' + url.path();
        return Bytes(text.begin(), text.end());
    }
    [[nodiscard]] std::vector<std::optional<ResolvedBookmark>> resolve(std::span<const Bytes> bookmarks) override {
        std::vector<std::optional<ResolvedBookmark>> resolved = search(bookmarks);
        for (std::size_t index = 0; seeksMissing && index < bookmarks.size(); ++index) {
            const std::string path = read(bookmarks[index]).second;
            if (path.starts_with('/') && !files_.contains(path))
                resolved[index] = ResolvedBookmark{fileAt(path), false, true};
        }
        return resolved;
    }
    [[nodiscard]] std::vector<std::optional<ResolvedBookmark>> search(std::span<const Bytes> bookmarks) override {
        std::vector<std::optional<ResolvedBookmark>> resolved;
        for (const Bytes& bookmark : bookmarks) {
            const auto [identity, recordedPath] = read(bookmark);
            std::optional<ResolvedBookmark>& answer = resolved.emplace_back();
            for (const auto& [path, file] : files_) {
                const bool isSame = std::to_string(file.identity) == identity;
                if (path == recordedPath || (isSame && !files_.contains(recordedPath)))
                    answer = ResolvedBookmark{fileAt(path), !isSame || path != recordedPath};
            }
        }
        return resolved;
    }
    [[nodiscard]] bool startAccessing(const FileURL& url) override {
        if (refusedAccess.contains(url.path()))
            return false;
        ++accesses[url.path()];
        return true;
    }
    void stopAccessing(const FileURL& url) override { --accesses[url.path()]; }

    /// Paths whose attributes cannot be read, and for which no bookmark can be made.
    std::set<std::string> unreadable;
    std::set<std::string> unbookmarkable;
    /// Whether a file that is not in its place has to be sought.
    bool seeksMissing = false;
    /// Starts less stops, by path; a path whose access is refused never gets in.
    std::map<std::string, int> accesses;
    std::set<std::string> refusedAccess;
    bool hasApplicationSupport = true;
    bool canCreateDirectories = true;
    int existsCalls = 0;

private:
    struct File {
        int identity;
        std::string contents;
    };

    static std::pair<std::string, std::string> read(const Bytes& bookmark) {
        const std::string text(bookmark.begin(), bookmark.end());
        const std::size_t space = std::min(text.find(' '), text.size());
        return {text.substr(0, space), text.substr(std::min(space + 1, text.size()))};
    }

    int lastIdentity_ = 0;
    std::map<std::string, File> files_;
    std::set<std::string> folders_;
};

}  // namespace stowpocket
