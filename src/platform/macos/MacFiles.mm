// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#include "platform/macos/MacStorage.h"
#include "platform/posix/FileProbe.h"

namespace stowpocket {
namespace {

/// The mode of folders that only the user may open.
constexpr int privateFolderMode = 0700;

/// The default manager may be used on any thread.
NSFileManager* manager() {
    return NSFileManager.defaultManager;
}

bool existsAt(const FileURL& url) {
    @autoreleasepool {
        return [manager() fileExistsAtPath:nsPath(url)];
    }
}

std::optional<FileAttributes> attributesAt(const FileURL& url) {
    @autoreleasepool {
        NSDictionary<NSFileAttributeKey, id>* const found = [manager() attributesOfItemAtPath:nsPath(url) error:nil];
        if (found == nil)
            return std::nullopt;
        const std::optional<PropertyValue> size = propertyValueOf(found[NSFileSize]);
        return FileAttributes{size ? size->integer() : std::nullopt};
    }
}

bool makeFolderAt(const FileURL& url) {
    @autoreleasepool {
        return [manager() createDirectoryAtURL:nsURL(url)
                   withIntermediateDirectories:YES
                                    attributes:@{
                                        NSFilePosixPermissions : @(privateFolderMode)
                                    }
                                         error:nil];
    }
}

/// Some callers run on threads that have no autorelease pool.
class MacFileManager : public FileManager {
public:
    explicit MacFileManager(FileProbe& probe) : probe_(probe) {}

    [[nodiscard]] bool fileExists(const FileURL& url) override {
        return probe_.ask<bool>(url.path(), [url] { return existsAt(url); }).value_or(true);
    }

    [[nodiscard]] std::optional<FileAttributes> attributes(const FileURL& url) override {
        using Answer = std::optional<FileAttributes>;
        return probe_.ask<Answer>(url.path(), [url] { return attributesAt(url); }).value_or(FileAttributes{});
    }

    [[nodiscard]] bool createDirectory(const FileURL& url) override {
        return probe_.ask<bool>(url.path(), [url] { return makeFolderAt(url); }).value_or(false);
    }

    [[nodiscard]] bool copyItem(const FileURL& from, const FileURL& to) override {
        @autoreleasepool {
            // This does not follow a link at the destination, so the link and its target stay untouched.
            if ([manager() attributesOfItemAtPath:nsPath(to) error:nil] != nil)
                return false;
            if ([manager() copyItemAtURL:nsURL(from) toURL:nsURL(to) error:nil])
                return true;
            [manager() removeItemAtURL:nsURL(to) error:nil];
            return false;
        }
    }

    bool removeItem(const FileURL& url) override {
        @autoreleasepool {
            [manager() removeItemAtURL:nsURL(url) error:nil];
            return [manager() attributesOfItemAtPath:nsPath(url) error:nil] == nil;
        }
    }

    [[nodiscard]] std::optional<FileURL> applicationSupportDirectory() override {
        @autoreleasepool {
            return fileURLOf(
                [manager() URLsForDirectory:NSApplicationSupportDirectory inDomains:NSUserDomainMask].firstObject);
        }
    }

    [[nodiscard]] std::optional<FileURL> homeDirectory() override {
        @autoreleasepool {
            return fileURLOf(manager().homeDirectoryForCurrentUser);
        }
    }

private:
    FileProbe& probe_;
};

class MacTrash : public Trash {
public:
    [[nodiscard]] bool trashItem(const FileURL& url) override {
        @autoreleasepool {
            return [manager() trashItemAtURL:nsURL(url) resultingItemURL:nil error:nil];
        }
    }
};

NSByteCountFormatter* makeFormatter() {
    NSByteCountFormatter* const formatter = [[NSByteCountFormatter alloc] init];
    formatter.countStyle = NSByteCountFormatterCountStyleFile;
    return formatter;
}

}  // namespace

std::unique_ptr<FileManager> makeMacFileManager(FileProbe& probe) {
    return std::make_unique<MacFileManager>(probe);
}

std::unique_ptr<Trash> makeMacTrash() {
    return std::make_unique<MacTrash>();
}

std::string macByteCountText(std::int64_t bytes) {
    static NSByteCountFormatter* const formatter = makeFormatter();
    return utf8([formatter stringFromByteCount:bytes]).value_or("");
}

}  // namespace stowpocket
