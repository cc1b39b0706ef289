// SPDX-License-Identifier: MIT
#include "platform/macos/MacStorage.h"

#import "platform/macos/Conversions.h"
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

/// When a call returns, the system's own service has the change and keeps it even if this process crashes.
class UserDefaultsStore : public PreferenceStore {
public:
    void registerDefaults(PropertyValue::Dictionary defaults) override {
        [defaults_ registerDefaults:propertyListOf(defaults)];
    }
    [[nodiscard]] std::optional<PropertyValue> value(std::string_view key) const override {
        return propertyValueOf([defaults_ objectForKey:nsString(key)]);
    }
    void setValue(std::string_view key, PropertyValue value) override {
        change(key, [&](NSString* name) { [defaults_ setObject:propertyListOf(value) forKey:name]; });
    }
    void removeValue(std::string_view key) override {
        change(key, [&](NSString* name) { [defaults_ removeObjectForKey:name]; });
    }
    [[nodiscard]] Signal<const std::string&>& changed() override { return changed_; }
    void whenSaved(SaveCompletion completion) override { completion(std::nullopt); }
    [[nodiscard]] std::optional<std::string> saveProblem() const override { return std::nullopt; }
    [[nodiscard]] Signal<>& saveProblemChanged() override { return saveProblemChanged_; }

private:
    template <class Write>
    void change(std::string_view key, Write write) {
        const std::optional<PropertyValue> before = value(key);
        write(nsString(key));
        if (value(key) != before)
            changed_.emit(std::string(key));
    }

    NSUserDefaults* const defaults_ = NSUserDefaults.standardUserDefaults;
    Signal<const std::string&> changed_;
    /// Never emitted.
    Signal<> saveProblemChanged_;
};

class MacPropertyListParser : public PropertyListParser {
public:
    [[nodiscard]] std::optional<PropertyValue> parse(const Bytes& bytes) override {
        @autoreleasepool {
            return propertyValueOf([NSPropertyListSerialization propertyListWithData:nsData(bytes)
                                                                             options:NSPropertyListImmutable
                                                                              format:nil
                                                                               error:nil]);
        }
    }
};

}  // namespace

std::unique_ptr<Bookmarks> makeMacBookmarks(FileProbe& probe) {
    return std::make_unique<MacBookmarks>(probe);
}

std::unique_ptr<PreferenceStore> makeUserDefaultsStore() {
    return std::make_unique<UserDefaultsStore>();
}

std::unique_ptr<PropertyListParser> makeMacPropertyListParser() {
    return std::make_unique<MacPropertyListParser>();
}

MainBundle macMainBundle() {
    const NSBundle* const bundle = NSBundle.mainBundle;
    const std::optional<PropertyValue> info = propertyValueOf(bundle.infoDictionary);
    const PropertyValue::Dictionary* const dictionary = info ? info->dictionary() : nullptr;
    return {fileURLOf(bundle.bundleURL).value_or(*FileURL::fromPath("/")),
            dictionary == nullptr ? std::nullopt : std::optional(*dictionary)};
}

}  // namespace stowpocket
