// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#include "platform/macos/MacStorage.h"
#include "platform/posix/FileProbe.h"

#include <map>

namespace stowpocket {
namespace {

std::optional<Bytes> bookmarkOf(const FileURL& url) {
    @autoreleasepool {
        NSData* const data = [nsURL(url) bookmarkDataWithOptions:NSURLBookmarkCreationWithSecurityScope
                                  includingResourceValuesForKeys:nil
                                                   relativeToURL:nil
                                                           error:nil];
        return data == nil ? std::nullopt : std::optional(bytesOf(data));
    }
}

/// The right to use a file belongs to the very object that resolving its bookmark returned. These objects are kept,
/// by address, until access has ended.
class MacBookmarks : public Bookmarks {
public:
    explicit MacBookmarks(FileProbe& probe) : probe_(probe) {}
    ~MacBookmarks() override {
        for (const auto& [url, resource] : accessed_)
            [resource stopAccessingSecurityScopedResource];
    }

    [[nodiscard]] std::optional<Bytes> create(const FileURL& url) override {
        using Answer = std::optional<Bytes>;
        return probe_.ask<Answer>(url.path(), [url] { return bookmarkOf(url); }).value_or(std::nullopt);
    }

    [[nodiscard]] std::vector<std::optional<ResolvedBookmark>> resolve(std::span<const Bytes> bookmarks) override {
        std::vector<std::optional<ResolvedBookmark>> resolved;
        resolved.reserve(bookmarks.size());
        for (const Bytes& bookmark : bookmarks)
            resolved.push_back(resolveOne(bookmark));
        return resolved;
    }

    /// Finds nothing: the system itself searches when it resolves a bookmark.
    [[nodiscard]] std::vector<std::optional<ResolvedBookmark>> search(std::span<const Bytes> bookmarks) override {
        return std::vector<std::optional<ResolvedBookmark>>(bookmarks.size());
    }

    [[nodiscard]] bool startAccessing(const FileURL& url) override {
        const auto scoped = resolved_.find(url);
        NSURL* const resource = scoped == resolved_.end() ? nsURL(url) : scoped->second;
        resolved_.erase(url);
        if (![resource startAccessingSecurityScopedResource])
            return false;
        accessed_.emplace(url, resource);
        return true;
    }

    void stopAccessing(const FileURL& url) override {
        const auto access = accessed_.find(url);
        if (access == accessed_.end())
            return;
        [access->second stopAccessingSecurityScopedResource];
        accessed_.erase(access);
    }

private:
    std::optional<ResolvedBookmark> resolveOne(const Bytes& bookmark) {
        @autoreleasepool {
            BOOL isStale = NO;
            NSURL* const resource = [NSURL URLByResolvingBookmarkData:nsData(bookmark)
                                                              options:NSURLBookmarkResolutionWithSecurityScope
                                                        relativeToURL:nil
                                                  bookmarkDataIsStale:&isStale
                                                                error:nil];
            const std::optional<FileURL> url = fileURLOf(resource);
            if (!url)
                return std::nullopt;
            resolved_.insert_or_assign(*url, resource);
            return ResolvedBookmark{*url, static_cast<bool>(isStale)};
        }
    }

    FileProbe& probe_;
    std::map<FileURL, NSURL*> resolved_;
    std::multimap<FileURL, NSURL*> accessed_;
};

}  // namespace

std::unique_ptr<Bookmarks> makeMacBookmarks(FileProbe& probe) {
    return std::make_unique<MacBookmarks>(probe);
}

}  // namespace stowpocket
