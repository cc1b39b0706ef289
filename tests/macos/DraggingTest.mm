// SPDX-License-Identifier: MIT
// Drags into and out of the program, on GNUstep's AppKit in a desktop of its own.
#include "gnustep/StandIns.h"
#import "platform/macos/Conversions.h"
#include "platform/macos/MacDrags.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <set>

namespace stowpocket {
namespace {

using standIn::comesTrue;
using standIn::itemOf;

using Texts = std::vector<std::string>;

TEST(DesktopDropTest, prefersFilesToPromisesToContents) {
    const auto dropped = [](NSArray* objects) {
        static_cast<void>(standIn::drag(objects));
        return droppedItemProviders();
    };
    NSPasteboardItem* const text = itemOf(@"public.text", "x");
    EXPECT_TRUE(dropped(@[]).empty() && !dragCarriesItems());
    NSFilePromiseReceiver* const promise = standIn::promiseOf(@ [@"public.png", @"public.jpeg"], { "one", "two" });
    auto providers = dropped(@[ itemOf(NSPasteboardTypeFileURL, "file:///a"), text, promise ]);
    ASSERT_TRUE(providers.size() == 1 && dragCarriesItems());
    std::optional<Bytes> loaded;
    providers[0]->loadItem("public.file-url", [&](const std::optional<Bytes>& bytes) { loaded = bytes; });
    EXPECT_EQ(loaded.value_or(Bytes()).size(), 9u);

    providers = dropped(@[ text, promise ]);
    ASSERT_EQ(providers.size(), 1u);
    EXPECT_EQ(providers[0]->registeredTypeIdentifiers(), Texts{"public.png"});
    EXPECT_TRUE(providers[0]->hasItemConformingTo("public.jpeg"));
    std::atomic<int> answers = 0;
    std::filesystem::path path;
    providers[0]->loadFileRepresentation("public.png", [&](const std::optional<FileURL>& url) {
        path = url.value().path();
        EXPECT_TRUE(std::filesystem::exists(path));
        ++answers;
    });
    providers.clear();
    EXPECT_TRUE(comesTrue([&] { return answers > 0 && !std::filesystem::exists(path.parent_path()); }));
    EXPECT_EQ(answers, 1);
}

using Kept = std::vector<std::pair<std::string, std::string>>;

/// The names, which differ, without their times, and the contents of the files that are made of what is dropped.
Kept keptOf(NSArray* items) {
    constexpr std::string_view time = " 2000-01-01 00.00.00.000";
    static_cast<void>(standIn::drag(items));
    Kept kept;
    std::set<std::string> names;
    for (const auto& provider : droppedItemProviders()) {
        std::atomic<bool> isRead = false;
        provider->loadFileRepresentation(
            provider->registeredTypeIdentifiers().at(0), [&](const std::optional<FileURL>& url) {
                std::string name = url.value().lastPathComponent();
                EXPECT_TRUE(names.insert(name).second) << name;
                name.erase(name.rfind('.') - time.size(), time.size());
                const Bytes bytes = bytesOf([NSData dataWithContentsOfFile:nsPath(*url)]);
                kept.emplace_back(name, std::string(bytes.begin(), bytes.end()));
                isRead = true;
            });
        EXPECT_TRUE(comesTrue([&] { return isRead.load(); }));
    }
    return kept;
}

TEST(DesktopDropTest, makesFilesOfLinksTextsAndPictures) {
    const std::string address = "https://a.org/?q=<1>&r=%20";
    const std::string title = "../A page: \x1B\u202Eof\n" + std::string(10'000, 'x');
    NSArray* const types = @[ @"public.utf8-plain-text", @"public.url", @"public.url-name" ];
    const Kept links = keptOf(@[
        itemOf(types, {address, address, title}), itemOf(@"public.url", "mailto:a@b"),
        itemOf(@"public.url", "mailto:a@b")
    ]);
    ASSERT_EQ(links.size(), 3u);
    EXPECT_EQ(links[0].first, "A page of " + std::string(47, 'x') + ".webloc");
    const NSData* const bytes = nsData(Bytes(links[0].second.begin(), links[0].second.end()));
    NSDictionary* const list = [NSPropertyListSerialization propertyListWithData:(NSData*)bytes
                                                                         options:0
                                                                          format:nil
                                                                           error:nil];
    EXPECT_EQ(utf8(list[@"URL"]), address);
    EXPECT_EQ(links[1].first, "mailto a@b.webloc");
    EXPECT_EQ(keptOf(@[ itemOf(types, {"/text", "file:///etc/passwd", "page"}) ]), (Kept{{"text.txt", "/text"}}));
    EXPECT_EQ(keptOf(@[
                  itemOf(@ [@"public.rtf", @"public.utf8-plain-text"], { "{", " \n" }),
                  itemOf(@ [@"public.url", @"public.tiff"], { address, "pixels" })
              ]),
              (Kept{{"Text.txt", " \n"}, {"Image.tiff", "pixels"}}));
    for (const std::string& bad : {std::string("javascript:alert(1)"), "http://" + std::string(10'000, 'a')})
        EXPECT_EQ(keptOf(@[ itemOf(@"public.url", bad), itemOf(@"public.png", "") ]), Kept());
}

TEST(DesktopDropTest, readsWhatWasCopied) {
    const auto clipboard = makeMacClipboard();
    const auto types = [&] {
        Texts found;
        clipboard->read([&](const auto& providers) {
            for (const auto& provider : providers)
                found.push_back(provider->registeredTypeIdentifiers().at(0));
        });
        return found;
    };
    clipboard->copyText("text");
    EXPECT_EQ(types(), Texts{"public.utf8-plain-text"});
    clipboard->copyFiles({*FileURL::fromPath("/a"), *FileURL::fromPath("/b")});
    EXPECT_EQ(types(), (Texts{"public.file-url", "public.file-url"}));
}

TEST(DesktopFileDragTest, offersFilesAndTheirContents) {
    const TemporaryFolder folder;
    folder.write("a b.png", "pixels");
    int ended = 0;
    @autoreleasepool {
        const auto drags = makeMacFileDragSource();
        NSView* const view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 50, 20)];
        const auto start = [&](const DragImage& image) {
            drags->start((__bridge void*)view, {folder.url("a b.png"), folder.url("c")}, image, [&] { ++ended; });
        };
        start({});
        EXPECT_EQ(ended, 1) << "there is no window, and so no drag";
        const auto item = makeMacStatusBar()->makeStatusItem();
        [standIn::statusItem.button addSubview:view];
        start({Pixels{2, 2, Bytes(16, 255)}, {20, 20}, 5, 4});
        const standIn::Drag drag = std::exchange(standIn::begunDrag, std::nullopt).value();
        const NSPoint pointer = [view convertPoint:drag.event.locationInWindow fromView:nil];
        EXPECT_TRUE(NSEqualRects(drag.frame, NSMakeRect(pointer.x - 5, pointer.y - 16, 20, 20)));
        EXPECT_TRUE(drag.contents.size.width == 20 && drag.count == 2);
        NSString* const fileURL = NSPasteboardTypeFileURL;
        EXPECT_TRUE(([[drag.writer writableTypesForPasteboard:drag.board] isEqual:@[ fileURL, @"public.png" ]]));
        EXPECT_EQ([drag.writer writingOptionsForType:fileURL pasteboard:drag.board], 0u);
        EXPECT_EQ([drag.writer writingOptionsForType:@"public.png" pasteboard:drag.board],
                  NSPasteboardWritingPromised);
        EXPECT_EQ(bytesOf([drag.writer pasteboardPropertyListForType:@"public.png"]).size(), 6u);
        EXPECT_EQ([drag.writer pasteboardPropertyListForType:@"public.jpeg"], nil);
        EXPECT_EQ(utf8([drag.writer pasteboardPropertyListForType:fileURL]), folder.url("a b.png").string());
        EXPECT_EQ([drag.source draggingSession:nil
                      sourceOperationMaskForDraggingContext:NSDraggingContextWithinApplication],
                  NSDragOperationCopy);
        for (int time = 0; time < 2; ++time)
            [drag.source draggingSession:nil endedAtPoint:NSZeroPoint operation:NSDragOperationCopy];
        EXPECT_EQ(ended, 2);
    }
}

}  // namespace
}  // namespace stowpocket
