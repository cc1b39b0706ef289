// SPDX-License-Identifier: MIT
#import "platform/macos/MacDraggingPasteboard.h"

#import "platform/macos/Conversions.h"
#include "platform/macos/MacDrags.h"

#include <atomic>

namespace stowpocket {
namespace {

using Completion = std::function<void(std::optional<FileURL>)>;

/// Returns the file URL of an item, as text and by path, or nothing when the item is not a file.
std::optional<std::string> fileURLTextOf(NSPasteboardItem* item) {
    NSString* const text = [item stringForType:NSPasteboardTypeFileURL];
    if (text == nil)
        return std::nullopt;
    // The Finder drags references by file number, which only the system can turn into paths.
    const std::optional<FileURL> url = fileURLOf([NSURL URLWithString:text]);
    return url ? url->string() : utf8(text);
}

NSArray<NSFilePromiseReceiver*>* promiseReceiversOn(NSPasteboard* pasteboard) {
    NSArray* const receivers = [pasteboard readObjectsForClasses:@[ NSFilePromiseReceiver.class ] options:@{}];
    return receivers == nil ? @[] : receivers;
}

class MacFilePromiseReceiver : public FilePromiseReceiver {
public:
    explicit MacFilePromiseReceiver(NSFilePromiseReceiver* receiver) : receiver_(receiver) {}

    void receivePromisedFiles(const FileURL& destination, Reader reader) override {
        [receiver_ receivePromisedFilesAtDestination:nsURL(destination)
            options:@{}
            operationQueue:[[NSOperationQueue alloc] init]
            reader:^(NSURL* url, NSError* error) {
              reader(error == nil ? fileURLOf(url) : std::nullopt);
            }];
    }

private:
    NSFilePromiseReceiver* const receiver_;
};

class MacItemProvider : public ItemProvider {
public:
    explicit MacItemProvider(NSItemProvider* provider) : provider_(provider) {}

    [[nodiscard]] bool hasItemConformingTo(std::string_view typeIdentifier) const override {
        return [provider_ hasItemConformingToTypeIdentifier:nsString(typeIdentifier)];
    }

    [[nodiscard]] std::vector<std::string> registeredTypeIdentifiers() const override {
        std::vector<std::string> types;
        for (NSString* type in provider_.registeredTypeIdentifiers) {
            if (std::optional<std::string> name = utf8(type))
                types.push_back(std::move(*name));
        }
        return types;
    }

    void loadItem(std::string_view typeIdentifier, std::function<void(std::optional<Bytes>)> completion) override {
        [provider_ loadItemForTypeIdentifier:nsString(typeIdentifier)
                                     options:nil
                           completionHandler:^(id<NSSecureCoding> item, NSError*) {
                             const id thing = item;
                             completion([thing isKindOfClass:NSData.class]
                                            ? std::optional(bytesOf(static_cast<NSData*>(thing)))
                                            : std::nullopt);
                           }];
    }

    void loadFileRepresentation(std::string_view typeIdentifier,
                                std::function<void(std::optional<FileURL>)> completion) override {
        [provider_ loadFileRepresentationForTypeIdentifier:nsString(typeIdentifier)
                                         completionHandler:^(NSURL* url, NSError*) {
                                           completion(fileURLOf(url));
                                         }];
    }

private:
    NSItemProvider* const provider_;
};

/// The provider holds its data from the start: the source of a drag may be gone once the drop is over.
std::shared_ptr<ItemProvider> providerOf(NSData* data, NSString* type) {
    NSItemProvider* const provider = [[NSItemProvider alloc] init];
    [provider registerDataRepresentationForTypeIdentifier:type
                                               visibility:NSItemProviderRepresentationVisibilityAll
                                              loadHandler:^NSProgress*(void (^completion)(NSData*, NSError*)) {
                                                completion(data, nil);
                                                return nil;
                                              }];
    return std::make_shared<MacItemProvider>(provider);
}

/// A promise may deliver several files, but a provider answers once: the first file to arrive is the answer. The
/// folder is removed after the last file.
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
        const auto folder = std::make_shared<const ScratchFolder>();
        const auto answered = std::make_shared<std::atomic<bool>>(false);
        NSFilePromiseReceiver* const receiver = receiver_;
        [receiver_ receivePromisedFilesAtDestination:folder->url()
            options:@{}
            operationQueue:[[NSOperationQueue alloc] init]
            reader:^(NSURL* url, NSError* error) {
              static_cast<void>(receiver);  // the block retains both until the last file has arrived
              static_cast<void>(folder);
              if (!answered->exchange(true))
                  completion(error == nil ? fileURLOf(url) : std::nullopt);
            }];
    }

private:
    NSFilePromiseReceiver* const receiver_;
};

std::vector<std::shared_ptr<ItemProvider>> filesOn(NSPasteboard* pasteboard) {
    std::vector<std::shared_ptr<ItemProvider>> providers;
    for (NSPasteboardItem* item in pasteboard.pasteboardItems) {
        if (const std::optional<std::string> url = fileURLTextOf(item))
            providers.push_back(providerOf(nsData(Bytes(url->begin(), url->end())), NSPasteboardTypeFileURL));
    }
    return providers;
}

/// Returns one provider per promise. The source writes the files on request, so ask while the drop is handled.
std::vector<std::shared_ptr<ItemProvider>> promisesOn(NSPasteboard* pasteboard) {
    std::vector<std::shared_ptr<ItemProvider>> providers;
    for (NSFilePromiseReceiver* receiver in promiseReceiversOn(pasteboard))
        providers.push_back(std::make_shared<PromisedFileProvider>(receiver));
    return providers;
}

/// Returns each item as the file that can be made of it, else in the form that its source prefers.
std::vector<std::shared_ptr<ItemProvider>> contentsOn(NSPasteboard* pasteboard) {
    constexpr NSTimeInterval betweenItems = 0.001;
    std::vector<std::shared_ptr<ItemProvider>> providers;
    NSTimeInterval later = 0;
    for (NSPasteboardItem* item in pasteboard.pasteboardItems) {
        NSDate* const time = [NSDate dateWithTimeIntervalSinceNow:later += betweenItems];
        if (auto provider = contentsFileOf(item, time)) {
            providers.push_back(std::move(provider));
            continue;
        }
        if (isAddress(item))
            continue;
        NSString* const type = item.types.firstObject;
        NSData* const data = type == nil ? nil : [item dataForType:type];
        if (type != nil && data.length > 0)
            providers.push_back(providerOf(data, type));
    }
    return providers;
}

NSPasteboard* dragPasteboard() {
    return [NSPasteboard pasteboardWithName:NSPasteboardNameDrag];
}

/// The system keeps what was copied, also after the end of the program, and offers the paths of files as text.
class MacClipboard : public Clipboard {
public:
    void copyFiles(const std::vector<FileURL>& files) override {
        NSMutableArray* const urls = [NSMutableArray arrayWithCapacity:files.size()];
        for (const FileURL& file : files)
            [urls addObject:nsURL(file)];
        replaceContent(urls);
    }
    void copyText(const std::string& text) override { replaceContent(@[ nsString(text) ]); }
    void read(Completion completion) override { completion(itemProvidersOn(NSPasteboard.generalPasteboard)); }

private:
    static void replaceContent(NSArray* objects) {
        NSPasteboard* const pasteboard = NSPasteboard.generalPasteboard;
        [pasteboard clearContents];
        [pasteboard writeObjects:objects];
    }
};

}  // namespace

std::vector<PasteboardItem> MacDraggingPasteboard::items() {
    std::vector<PasteboardItem> items;
    for (NSPasteboardItem* item in pasteboard_.pasteboardItems) {
        PasteboardItem& read = items.emplace_back();
        if (std::optional<std::string> text = fileURLTextOf(item))
            read.strings.emplace(pasteboardType::fileURL, std::move(*text));
    }
    return items;
}

std::vector<std::shared_ptr<FilePromiseReceiver>> MacDraggingPasteboard::filePromiseReceivers() {
    std::vector<std::shared_ptr<FilePromiseReceiver>> receivers;
    for (NSFilePromiseReceiver* receiver in promiseReceiversOn(pasteboard_))
        receivers.push_back(std::make_shared<MacFilePromiseReceiver>(receiver));
    return receivers;
}

std::vector<std::shared_ptr<ItemProvider>> itemProvidersOn(NSPasteboard* pasteboard) {
    const std::vector<std::shared_ptr<ItemProvider>> files = filesOn(pasteboard);
    return files.empty() ? contentsOn(pasteboard) : files;
}

bool dragCarriesItems() {
    return dragPasteboard().pasteboardItems.count > 0;
}

std::vector<std::shared_ptr<ItemProvider>> droppedItemProviders() {
    std::vector<std::shared_ptr<ItemProvider>> providers = filesOn(dragPasteboard());
    if (providers.empty())
        providers = promisesOn(dragPasteboard());
    if (providers.empty())
        providers = contentsOn(dragPasteboard());
    return providers;
}

std::unique_ptr<Clipboard> makeMacClipboard() {
    return std::make_unique<MacClipboard>();
}

}  // namespace stowpocket
