// SPDX-License-Identifier: MIT
#import "platform/macos/MacDraggingPasteboard.h"

#import "platform/macos/Conversions.h"

namespace stowpocket {
namespace {

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

}  // namespace stowpocket
