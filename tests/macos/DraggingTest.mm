// SPDX-License-Identifier: MIT
// Drags into and out of the program, on GNUstep's AppKit in a desktop of its own.
#include "gnustep/StandIns.h"
#import "platform/macos/Conversions.h"
#include "platform/macos/MacDrags.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <atomic>

namespace stowpocket {
namespace {

using standIn::comesTrue;
using standIn::itemOf;

using Texts = std::vector<std::string>;

TEST(DesktopDropTest, prefersFilesToPromisesToContents) {
    @autoreleasepool {
        const auto dropped = [](NSArray* objects) {
            static_cast<void>(standIn::drag(objects));
            return droppedItemProviders();
        };
        NSPasteboardItem* const text = itemOf(@"public.text", "x");
        EXPECT_TRUE(dropped(@[]).empty() && !dragCarriesItems());
        NSFilePromiseReceiver* const promise =
            standIn::promiseOf(@ [@"public.png", @"public.jpeg"], { "one", "two" });
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

        bool isThere = false;
        dropped(@[ text ]).at(0)->loadFileRepresentation("public.text", [&](const std::optional<FileURL>& url) {
            isThere = url && std::filesystem::exists(url->path());
        });
        EXPECT_TRUE(isThere);
    }
}

TEST(DesktopDropTest, readsWhatWasCopied) {
    @autoreleasepool {
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
