// SPDX-License-Identifier: MIT
#import "platform/macos/MacDraggingPasteboard.h"

#include "foundation/UUID.h"
#include "intake/ExchangeFormats.h"
#import "platform/macos/Conversions.h"

#import <dispatch/dispatch.h>

#include <algorithm>
#include <array>

namespace stowpocket {
namespace {

/// Best kind first, since sources offer the same picture in several.
constexpr std::array<ContentsKind, 3> pictures{{
    contentsKind::png,
    contentsKind::jpeg,
    {"public.tiff", "Image", "tiff"},
}};
constexpr ContentsKind webLocation{"public.url", "Link", "webloc"};
NSString* const titleType = @"public.url-name";

constexpr std::size_t longestBeginning = 2048;

class ContentsFile : public ItemProvider {
public:
    ContentsFile(const ContentsKind& kind, NSString* name, NSData* data) : kind_(kind), name_(name), data_(data) {}

    [[nodiscard]] bool hasItemConformingTo(std::string_view typeIdentifier) const override {
        return typeIdentifier == kind_.type || typeIdentifier == uniformType::item;
    }
    [[nodiscard]] std::vector<std::string> registeredTypeIdentifiers() const override {
        return {std::string(kind_.type)};
    }
    void loadItem(std::string_view, std::function<void(std::optional<Bytes>)> completion) override {
        completion(std::nullopt);
    }
    /// On another thread, since the file is written, and copied by the completion.
    void loadFileRepresentation(std::string_view typeIdentifier,
                                std::function<void(std::optional<FileURL>)> completion) override {
        if (!hasItemConformingTo(typeIdentifier))
            return completion(std::nullopt);
        NSString* const name = name_;
        NSData* const data = data_;
        dispatch_async(dispatch_get_global_queue(QOS_CLASS_DEFAULT, 0), ^{
          const ScratchFolder folder;
          NSURL* const file = [folder.url() URLByAppendingPathComponent:name];
          const bool isWritten = file != nil && [data writeToURL:file atomically:NO];
          completion(isWritten ? fileURLOf(file) : std::nullopt);
        });
    }

private:
    const ContentsKind kind_;
    NSString* const name_;
    NSData* const data_;
};

NSString* textOf(NSDate* time) {
    NSDateFormatter* const formatter = [[NSDateFormatter alloc] init];
    formatter.locale = [NSLocale localeWithLocaleIdentifier:@"en_US_POSIX"];  // the user's may have other digits
    formatter.dateFormat = @"yyyy-MM-dd HH.mm.ss.SSS";
    return [formatter stringFromDate:time];
}

std::shared_ptr<ItemProvider> fileOf(const ContentsKind& kind, NSData* data, std::string_view words, NSDate* time) {
    const std::string name = contentsFileName(kind, words, utf8(textOf(time)).value_or(std::string()));
    return std::make_shared<ContentsFile>(kind, nsString(name), data);
}

/// Nothing in the place of no bytes.
NSData* dataOf(NSPasteboardItem* item, const ContentsKind& kind) {
    NSData* const data = [item dataForType:nsString(kind.type)];
    return data.length > 0 ? data : nil;
}

std::string textOfType(NSPasteboardItem* item, NSString* type) {
    return utf8([item stringForType:type]).value_or(std::string());
}

/// The content of a file that leads to the address.
NSData* webLocationOf(const DroppedLink& link) {
    return [NSPropertyListSerialization dataWithPropertyList:@{@"URL" : nsString(link.address)}
                                                      format:NSPropertyListXMLFormat_v1_0
                                                     options:0
                                                       error:nil];
}

std::string beginningOf(NSData* text) {
    return {static_cast<const char*>(text.bytes), std::min<std::size_t>(text.length, longestBeginning)};
}

}  // namespace

ScratchFolder::ScratchFolder()
    : url_([NSURL
          fileURLWithPath:[NSTemporaryDirectory() stringByAppendingPathComponent:nsString(UUID::random().text())]
              isDirectory:YES]) {
    [NSFileManager.defaultManager createDirectoryAtURL:url_ withIntermediateDirectories:YES attributes:nil error:nil];
}

ScratchFolder::~ScratchFolder() {
    [NSFileManager.defaultManager removeItemAtURL:url_ error:nil];
}

std::shared_ptr<ItemProvider> contentsFileOf(NSPasteboardItem* item, NSDate* time) {
    for (const ContentsKind& kind : pictures) {
        if (NSData* const data = dataOf(item, kind))
            return fileOf(kind, data, {}, time);
    }
    if (const auto link = linkTo(textOfType(item, nsString(webLocation.type)), textOfType(item, titleType))) {
        if (NSData* const data = webLocationOf(*link))
            return fileOf(webLocation, data, firstWords(link->title), time);
    }
    if (NSData* const data = dataOf(item, contentsKind::text))
        return fileOf(contentsKind::text, data, firstWords(beginningOf(data)), time);
    return nullptr;
}

bool isAddress(NSPasteboardItem* item) {
    return [item.types containsObject:nsString(webLocation.type)];
}

}  // namespace stowpocket
