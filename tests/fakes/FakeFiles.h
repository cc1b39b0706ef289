// SPDX-License-Identifier: MIT
#pragma once

#include "services/Files.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace stowpocket {

/// A file system in memory: paths, their contents, and an identity per file that renaming keeps.
class FakeFiles : public FileManager, public Bookmarks {
public:
    /// Takes the place of what is at the path.
    void add(const std::string& path, std::string contents = "contents");
    void rename(const std::string& from, const std::string& to);
    [[nodiscard]] std::string contents(const FileURL& url) const;

    [[nodiscard]] bool fileExists(const FileURL& url) override;
    [[nodiscard]] std::optional<FileAttributes> attributes(const FileURL& url) override;
    [[nodiscard]] bool createDirectory(const FileURL& url) override;
    [[nodiscard]] bool copyItem(const FileURL& from, const FileURL& to) override;
    bool removeItem(const FileURL& url) override;
    [[nodiscard]] std::optional<FileURL> applicationSupportDirectory() override;
    [[nodiscard]] std::optional<FileURL> homeDirectory() override { return FileURL::fromPath("/home/user"); }

    [[nodiscard]] std::optional<Bytes> create(const FileURL& url) override;
    [[nodiscard]] std::vector<std::optional<ResolvedBookmark>> resolve(std::span<const Bytes> bookmarks) override;
    [[nodiscard]] std::vector<std::optional<ResolvedBookmark>> search(std::span<const Bytes> bookmarks) override;
    [[nodiscard]] bool startAccessing(const FileURL& url) override;
    void stopAccessing(const FileURL& url) override;

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

    int lastIdentity_ = 0;
    std::map<std::string, File> files_;
    std::set<std::string> folders_;
};

}  // namespace stowpocket
