// SPDX-License-Identifier: MIT
#import "platform/macos/PromisedFileProvider.h"

#include "foundation/UUID.h"
#import "platform/macos/Conversions.h"
#import "platform/macos/MacDraggingPasteboard.h"

#include <atomic>

namespace stowpocket {
namespace {

using Completion = std::function<void(std::optional<FileURL>)>;

/// A folder that lasts as long as the files in it are wanted.
class TemporaryFolder {
public:
    TemporaryFolder()
        : url_([NSURL
              fileURLWithPath:[NSTemporaryDirectory() stringByAppendingPathComponent:nsString(UUID::random().text())]
                  isDirectory:YES]) {
        [NSFileManager.defaultManager createDirectoryAtURL:url_
                               withIntermediateDirectories:YES
                                                attributes:nil
                                                     error:nil];
    }
    ~TemporaryFolder() { [NSFileManager.defaultManager removeItemAtURL:url_ error:nil]; }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] NSURL* url() const { return url_; }

private:
    NSURL* const url_;
};

/// The reader runs once per file, a provider answers once: the first file that arrives is the answer, and the folder
/// goes after it.
class PromisedFileProvider : public ItemProvider {
public:
    explicit PromisedFileProvider(NSFilePromiseReceiver* receiver) : receiver_(receiver) {}

    [[nodiscard]] bool hasItemConformingTo(std::string_view typeIdentifier) const override {
        return [receiver_.fileTypes containsObject:nsString(typeIdentifier)];
    }
    [[nodiscard]] std::vector<std::string> registeredTypeIdentifiers() const override {
        const std::optional<std::string> type = utf8(receiver_.fileTypes.firstObject);
        return type ? std::vector{*type} : std::vector<std::string>();
    }
    void loadItem(std::string_view, std::function<void(std::optional<Bytes>)> completion) override {
        completion(std::nullopt);  // a promise is a file, never plain bytes
    }
    void loadFileRepresentation(std::string_view, Completion completion) override {
        const auto folder = std::make_shared<const TemporaryFolder>();
        const auto answered = std::make_shared<std::atomic<bool>>(false);
        NSFilePromiseReceiver* const receiver = receiver_;
        [receiver_ receivePromisedFilesAtDestination:folder->url()
            options:@{}
            operationQueue:[[NSOperationQueue alloc] init]
            reader:^(NSURL* url, NSError* error) {
              static_cast<void>(receiver);  // both until the last file is there
              static_cast<void>(folder);
              if (!answered->exchange(true))
                  completion(error == nil ? fileURLOf(url) : std::nullopt);
            }];
    }

private:
    NSFilePromiseReceiver* const receiver_;
};

}  // namespace

std::vector<std::shared_ptr<ItemProvider>> promisedFileProvidersOn(NSPasteboard* pasteboard) {
    std::vector<std::shared_ptr<ItemProvider>> providers;
    for (NSFilePromiseReceiver* receiver in promiseReceiversOn(pasteboard))
        providers.push_back(std::make_shared<PromisedFileProvider>(receiver));
    return providers;
}

}  // namespace stowpocket
