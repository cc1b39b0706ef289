// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#import "platform/macos/MacDraggingPasteboard.h"
#include "platform/macos/MacDrags.h"
#include "platform/macos/PromisedFileProvider.h"

namespace stowpocket {
namespace {

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

/// Holds its data from the start: the source of a drag may be gone once the drop is over.
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

std::vector<std::shared_ptr<ItemProvider>> filesOn(NSPasteboard* pasteboard) {
    std::vector<std::shared_ptr<ItemProvider>> providers;
    for (NSPasteboardItem* item in pasteboard.pasteboardItems) {
        if (const std::optional<std::string> url = fileURLTextOf(item))
            providers.push_back(providerOf(nsData(Bytes(url->begin(), url->end())), NSPasteboardTypeFileURL));
    }
    return providers;
}

/// Each thing in the form that its source likes best.
std::vector<std::shared_ptr<ItemProvider>> contentsOn(NSPasteboard* pasteboard) {
    std::vector<std::shared_ptr<ItemProvider>> providers;
    for (NSPasteboardItem* item in pasteboard.pasteboardItems) {
        NSString* const type = item.types.firstObject;
        NSData* const data = type == nil ? nil : [item dataForType:type];
        if (type != nil && data != nil)
            providers.push_back(providerOf(data, type));
    }
    return providers;
}

NSPasteboard* dragPasteboard() {
    return [NSPasteboard pasteboardWithName:NSPasteboardNameDrag];
}

}  // namespace

bool dragCarriesItems() {
    return dragPasteboard().pasteboardItems.count > 0;
}

std::vector<std::shared_ptr<ItemProvider>> droppedItemProviders() {
    std::vector<std::shared_ptr<ItemProvider>> providers = filesOn(dragPasteboard());
    if (providers.empty())
        providers = promisedFileProvidersOn(dragPasteboard());
    if (providers.empty())
        providers = contentsOn(dragPasteboard());
    return providers;
}

}  // namespace stowpocket
