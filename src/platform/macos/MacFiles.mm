// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#include "platform/macos/MacStorage.h"
#include "platform/macos/MacSystem.h"
#include "platform/posix/FileProbe.h"

#include <algorithm>

#import <AppKit/AppKit.h>
#include <sys/mount.h>
#include <vector>

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

class MacVolumes : public Volumes {
public:
    MacVolumes()
        : mountObserver_(observe(NSWorkspaceDidMountNotification, didMount_)),
          unmountObserver_(observe(NSWorkspaceDidUnmountNotification, didUnmount_)) {}
    ~MacVolumes() override {
        [center() removeObserver:mountObserver_];
        [center() removeObserver:unmountObserver_];
    }
    MacVolumes(const MacVolumes&) = delete;
    MacVolumes& operator=(const MacVolumes&) = delete;

    [[nodiscard]] Signal<>& didMount() override { return *didMount_; }
    [[nodiscard]] Signal<>& didUnmount() override { return *didUnmount_; }

private:
    /// Only the workspace's own notification centre posts these notifications.
    static NSNotificationCenter* center() { return NSWorkspace.sharedWorkspace.notificationCenter; }

    /// A notification may wait in the main queue while this object is destroyed, so the block must not use it.
    static id<NSObject> observe(NSNotificationName name, std::weak_ptr<Signal<>> signal) {
        return [center() addObserverForName:name
                                     object:nil
                                      queue:NSOperationQueue.mainQueue
                                 usingBlock:^(NSNotification*) {
                                   if (const auto alive = signal.lock())
                                       alive->emit();
                                 }];
    }

    const std::shared_ptr<Signal<>> didMount_ = std::make_shared<Signal<>>();
    const std::shared_ptr<Signal<>> didUnmount_ = std::make_shared<Signal<>>();
    const id<NSObject> mountObserver_;
    const id<NSObject> unmountObserver_;
};

using Mount = struct statfs;

/// Returns what the kernel remembers, without asking any file system.
std::vector<Mount> mounts() {
    constexpr int spare = 8;  // for mounts added between the two calls
    const int expected = getfsstat(nullptr, 0, MNT_NOWAIT);
    std::vector<Mount> mounts(static_cast<std::size_t>(std::max(expected, 0) + spare));
    const int found = getfsstat(mounts.data(), static_cast<int>(mounts.size() * sizeof(Mount)), MNT_NOWAIT);
    mounts.resize(static_cast<std::size_t>(std::max(found, 0)));
    return mounts;
}

bool isBelow(std::string_view path, std::string_view folder) {
    return folder == "/" ||
           (path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/'));
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

std::unique_ptr<Volumes> makeMacVolumes() {
    return std::make_unique<MacVolumes>();
}

std::optional<std::string> remoteMountOn(const std::string& path) {
    for (const Mount& mount : mounts()) {
        const std::string_view point(static_cast<const char*>(mount.f_mntonname));
        if ((mount.f_flags & MNT_LOCAL) == 0 && isBelow(path, point))
            return std::string(point);
    }
    return std::nullopt;
}

}  // namespace stowpocket
