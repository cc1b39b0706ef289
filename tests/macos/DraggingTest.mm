// SPDX-License-Identifier: MIT
// Drags into and out of the program, on GNUstep's AppKit in a desktop of its own.
#include "gnustep/StandIns.h"
#import "platform/macos/Conversions.h"
#import "platform/macos/MacDraggingPasteboard.h"
#include "platform/macos/MacDrags.h"
#include "platform/macos/MacWindows.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <mutex>

namespace stowpocket {
namespace {

using standIn::comesTrue;
using standIn::itemOf;

using Texts = std::vector<std::string>;

class DropView : public DraggingDestination {
public:
    [[nodiscard]] const std::vector<std::string>& registeredDraggedTypes() const override { return types; }
    [[nodiscard]] DragOperation draggingEntered(DraggingPasteboard& pasteboard) override {
        return told(pasteboard), answer;
    }
    [[nodiscard]] DragOperation draggingUpdated(DraggingPasteboard& pasteboard) override {
        return told(pasteboard), answer;
    }
    [[nodiscard]] bool performDragOperation(DraggingPasteboard& pasteboard) override {
        told(pasteboard);
        receivers = pasteboard.filePromiseReceivers();
        return answer == DragOperation::copy;
    }

    const Texts types{"public.file-url", "public.promise"};
    DragOperation answer = DragOperation::copy;
    Texts seen;
    std::vector<std::shared_ptr<FilePromiseReceiver>> receivers;

private:
    void told(DraggingPasteboard& pasteboard) {
        seen.clear();
        for (const PasteboardItem& item : pasteboard.items())
            seen.push_back(item.strings.empty() ? "-" : item.strings.begin()->second);
    }
};

TEST(DesktopDropTest, reachesTheWholeIcon) {
    @autoreleasepool {
        const auto item = makeMacStatusBar()->makeStatusItem();
        const auto destination = std::make_shared<DropView>();
        item->button()->addDropView(destination);
        NSStatusBarButton* const button = standIn::statusItem.button;
        NSView* const view = button.subviews.lastObject;
        EXPECT_EQ(view.registeredDraggedTypes.count, 2u);
        [button setFrameSize:NSMakeSize(90, 30)];
        EXPECT_TRUE(NSEqualRects(view.frame, button.bounds));

        const TemporaryFolder folder;
        const id<NSDraggingInfo> info = standIn::drag(@[
            itemOf(NSPasteboardTypeFileURL, "file:///a%20b"), itemOf(@"public.text", "x"),
            itemOf(NSPasteboardTypeFileURL, "rubbish :"), standIn::promiseOf(@ [@"public.png"], { "one", "refused" })
        ]);
        EXPECT_EQ([view draggingEntered:info], NSDragOperationCopy);
        EXPECT_EQ(destination->seen, (Texts{"file:///a%20b", "-", "rubbish :"}));
        EXPECT_TRUE([view performDragOperation:info]);
        destination->answer = DragOperation::none;
        EXPECT_EQ([view draggingUpdated:info], NSDragOperationNone);
        EXPECT_EQ([view draggingEntered:info], NSDragOperationNone);
        ASSERT_EQ(destination->receivers.size(), 1u);

        std::mutex mutex;
        Texts arrived;
        destination->receivers[0]->receivePromisedFiles(folder.url("."), [&](const std::optional<FileURL>& file) {
            const std::lock_guard lock(mutex);
            arrived.push_back(file ? file->lastPathComponent() : "none");
        });
        EXPECT_TRUE(comesTrue([&] {
            const std::lock_guard lock(mutex);
            return arrived == Texts{"one", "none"};
        }));
        EXPECT_EQ(folder.read("one"), "one");
    }
}

TEST(DesktopDropTest, prefersFilesToPromisesToContents) {
    @autoreleasepool {
        NSPasteboardItem* const file = itemOf(NSPasteboardTypeFileURL, "file:///a");
        NSPasteboardItem* const text = itemOf(@"public.text", "x");
        static_cast<void>(standIn::drag(@[]));
        EXPECT_FALSE(dragCarriesItems());
        EXPECT_TRUE(droppedItemProviders().empty());

        NSArray* const types = @[ @"public.png", @"public.jpeg" ];
        static_cast<void>(standIn::drag(@[ file, text, standIn::promiseOf(types, {"one", "two"}) ]));
        EXPECT_TRUE(dragCarriesItems());
        auto providers = droppedItemProviders();
        ASSERT_EQ(providers.size(), 1u);
        EXPECT_TRUE(providers[0]->hasItemConformingTo("public.file-url"));
        std::optional<Bytes> loaded;
        providers[0]->loadItem("public.file-url", [&](const std::optional<Bytes>& bytes) { loaded = bytes; });
        EXPECT_EQ(loaded, (Bytes{'f', 'i', 'l', 'e', ':', '/', '/', '/', 'a'}));

        static_cast<void>(standIn::drag(@[ text, standIn::promiseOf(types, {"one", "two"}) ]));
        providers = droppedItemProviders();
        static_cast<void>(standIn::drag(@[]));
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
        EXPECT_TRUE(answers == 1 && path.filename() == "one");

        static_cast<void>(standIn::drag(@[ text ]));
        bool isThere = false;
        droppedItemProviders().at(0)->loadFileRepresentation("public.text", [&](const std::optional<FileURL>& url) {
            isThere = url && std::filesystem::exists(url->path());
        });
        EXPECT_TRUE(isThere);
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
        [standIn::statusItem.button.window.contentView addSubview:view];
        start({Pixels{2, 2, Bytes(16, 255)}, {20, 20}, 5, 4});
        ASSERT_TRUE(standIn::begunDrag);
        const standIn::Drag drag = *std::exchange(standIn::begunDrag, std::nullopt);
        const NSPoint pointer = [view convertPoint:drag.event.locationInWindow fromView:nil];
        EXPECT_TRUE(NSEqualRects(drag.frame, NSMakeRect(pointer.x - 5, pointer.y - 16, 20, 20)));
        EXPECT_EQ(drag.contents.size.width, 20);
        EXPECT_EQ(drag.count, 2u) << "an item a file";

        NSPasteboard* const board = [NSPasteboard pasteboardWithName:NSDragPboard];
        NSString* const fileURL = NSPasteboardTypeFileURL;
        EXPECT_TRUE(([[drag.writer writableTypesForPasteboard:board] isEqual:@[ fileURL, @"public.png" ]]));
        EXPECT_EQ([drag.writer writingOptionsForType:fileURL pasteboard:board], 0u);
        EXPECT_EQ([drag.writer writingOptionsForType:@"public.png" pasteboard:board], NSPasteboardWritingPromised);
        EXPECT_EQ(bytesOf([drag.writer pasteboardPropertyListForType:@"public.png"]).size(), 6u);
        EXPECT_EQ([drag.writer pasteboardPropertyListForType:@"public.jpeg"], nil);
        const std::optional<std::string> url = utf8([drag.writer pasteboardPropertyListForType:fileURL]);
        EXPECT_EQ(FileURL::parse(url.value_or("")), folder.url("a b.png"));

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
