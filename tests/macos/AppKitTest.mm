// SPDX-License-Identifier: MIT
// Windows, the menu bar, input and pictures, on GNUstep's AppKit in a desktop of its own.
#include "gnustep/StandIns.h"
#import "platform/macos/AppKitPictures.h"
#import "platform/macos/Conversions.h"
#include "platform/macos/MacSystem.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using standIn::comesTrue;
using standIn::Content;

using Texts = std::vector<std::string>;

TEST(DesktopWindowTest, showsItsContent) {
    for (const MacWindowKind kind : {MacWindowKind::titled, MacWindowKind::bare}) {
        @autoreleasepool {
            Texts told;
            auto content = std::make_unique<Content>(told);
            NSView* const view = content->view;
            auto window = makeMacWindow(kind, "A \xC3\xA9 title", std::move(content));
            NSWindow* const system = view.window;
            const bool isBare = kind == MacWindowKind::bare;
            EXPECT_EQ(utf8(system.title), "A \xC3\xA9 title");
            EXPECT_EQ(system.level == NSFloatingWindowLevel, isBare);
            EXPECT_EQ(system.titlebarAppearsTransparent && system.titleVisibility == NSWindowTitleHidden, isBare);
            EXPECT_EQ(system.isMovableByWindowBackground, isBare);
            const NSSize size = [system contentRectForFrameRect:system.frame].size;
            EXPECT_TRUE(NSEqualSizes(size, NSMakeSize(200, 100)) && NSEqualSizes(view.frame.size, size));
            window->makeKeyAndOrderFront();
            EXPECT_TRUE(window->isVisible() && system.firstResponder == view);
            window->close();
            EXPECT_FALSE(window->isVisible());
            window->orderFrontRegardless();
            EXPECT_TRUE(window->isVisible());
            window.reset();
            EXPECT_FALSE(system.isVisible);
            EXPECT_EQ(told, (Texts{"shown", "hidden", "gone"}));
        }
    }
}

class DesktopPopoverTest : public testing::Test {
protected:
    Texts told;
    Content* content = nullptr;
    std::unique_ptr<StatusItem> item = makeMacStatusBar()->makeStatusItem();
    std::unique_ptr<Popover> popover = makeMacPopover([this] {
        auto made = std::make_unique<Content>(told);
        content = made.get();
        return made;
    });
};

TEST_F(DesktopPopoverTest, hangsBelowTheIconAndTellsItsContentWhenItIsSeen) {
    NSWindow* const bar = standIn::statusItem.button.window;
    bar.contentView = [[NSView alloc] initWithFrame:NSZeroRect];
    popover->show(*item->button());
    EXPECT_FALSE(popover->isShown()) << "the button is in no window";
    bar.contentView = standIn::statusItem.button;
    popover->show(*item->button());
    EXPECT_LE(NSMaxY(content->view.window.frame), NSMinY(bar.frame));

    static_cast<void>(standIn::takeCalls());
    popover->performClose();
    popover->show(*item->button());
    EXPECT_TRUE(comesTrue([] { return standIn::takeCalls() == Texts{"popover closed"}; }));
    EXPECT_EQ(told, (Texts{"shown", "shown"})) << "nor is it hidden, which it would have been";
    popover->setAnimates(false);
    popover->performClose();
    EXPECT_EQ(told.back(), "hidden");
    popover->setAnimates(true);
    popover->show(*item->button());
    popover->performClose();
    popover.reset();
    EXPECT_EQ(told, (Texts{"shown", "shown", "hidden", "shown", "gone"}));
}

TEST(DesktopStatusItemTest, showsPictureAndTitle) {
    const auto item = makeMacStatusBar()->makeStatusItem();
    NSStatusBarButton* const system = standIn::statusItem.button;
    const std::shared_ptr<StatusItemButton> button = item->button();
    button->setImage({"tray", 15, FontWeight::medium, "Shelf"});
    NSString* const symbol = [NSString stringWithFormat:@"tray|Shelf|15 %g", NSFontWeightMedium];
    EXPECT_EQ(standIn::noted(system.image, "symbol"), utf8(symbol));
    button->setTitle({"12", 11, FontWeight::semibold, 4});
    NSDictionary* const style = [system.attributedTitle attributesAtIndex:0 effectiveRange:nullptr];
    EXPECT_EQ([style[NSBaselineOffsetAttributeName] doubleValue] + [style[NSFontAttributeName] pointSize], 15);
    int clicks = 0;
    button->setAction([&, kept = std::string(99, ' ')] {
        button->setAction([&] { ++clicks; });
        clicks += kept.empty() ? 1 : 0;
    });
    for (int time = 0; time < 2; ++time)
        [system sendAction:system.action to:system.target];
    EXPECT_EQ(clicks, 1);
}

TEST(DesktopSystemTest, answersAboutTheSystem) {
    const auto item = makeMacLoginItem();
    EXPECT_TRUE(item->registerItem() && item->status() == LoginItem::Status::enabled);
    EXPECT_TRUE(item->unregisterItem() && item->status() == LoginItem::Status::notRegistered);
    EXPECT_FALSE(item->unregisterItem());
    standIn::isMotionReduced = !standIn::isMotionReduced;
    EXPECT_EQ(isMotionReduced(), standIn::isMotionReduced);
    EXPECT_EQ(makeMacMainScreen()->backingScaleFactor(), 1);

    const auto volumes = makeMacVolumes();
    int mounts = 0;
    int unmounts = 0;
    const Subscription mounted = volumes->didMount().connect([&] { ++mounts; });
    const Subscription unmounted = volumes->didUnmount().connect([&] { ++unmounts; });
    NSNotificationCenter* const center = NSWorkspace.sharedWorkspace.notificationCenter;
    [center postNotificationName:NSWorkspaceDidMountNotification object:nil];
    EXPECT_TRUE(comesTrue([&] { return mounts > 0; }) && unmounts == 0);
    [center postNotificationName:NSWorkspaceDidUnmountNotification object:nil];
    EXPECT_TRUE(comesTrue([&] { return unmounts > 0; }));
}

TEST(DesktopHotkeysTest, goFirstToTheMonitorsOfAnOwnWindow) {
    constexpr std::uint32_t keyS = 1;
    const auto item = makeMacStatusBar()->makeStatusItem();
    const auto monitors = makeMacEventMonitors();
    const auto service = makeCarbonHotkeyService(*monitors);
    int presses = 0;
    std::uint32_t pressed = 0;
    service->installEventHandler([&](const HotkeyIdentifier* identifier) {
        pressed = identifier->id;
        return ++presses, 0;
    });
    auto hotkey = service->registerHotkey(keyS, carbonModifier::optionKey, {1, 1});
    KeyEvent heard;
    const auto recorder = monitors->addLocalKeyDownMonitor([&](const KeyEvent& press) {
        heard = press;
        return presses == 1;
    });
    EXPECT_TRUE(standIn::pressHotkey(keyS, carbonModifier::optionKey));
    EXPECT_EQ(presses, 1);
    EXPECT_EQ(heard.capitals, "") << "no own window has the keyboard";
    standIn::keyWindow = standIn::statusItem.button.window;
    EXPECT_TRUE(standIn::pressHotkey(keyS, carbonModifier::optionKey));
    EXPECT_EQ(presses, 1);
    EXPECT_EQ(heard.capitals, "S");
    EXPECT_EQ(heard.keyCode, keyS);
    EXPECT_EQ(heard.modifierFlags, modifierFlag::option);
    presses = 2;
    EXPECT_TRUE(standIn::pressHotkey(keyS, carbonModifier::optionKey));
    EXPECT_EQ(presses, 3) << "no monitor wanted it";
    const auto equal = service->registerHotkey(keyS, carbonModifier::optionKey, {2, 2});
    ASSERT_TRUE(equal);
    hotkey.reset();
    EXPECT_TRUE(standIn::pressHotkey(keyS, carbonModifier::optionKey));
    EXPECT_EQ(pressed, 2u) << "it has the keys now";
    standIn::keyWindow = nil;
}

TEST(DesktopFileOpenerTest, showsFilesToTheUser) {
    const auto item = makeMacStatusBar()->makeStatusItem();
    standIn::keyWindow = standIn::statusItem.button.window;
    const auto opener = makeMacFileOpener();
    const std::vector<FileURL> files{*FileURL::fromPath("/a"), *FileURL::fromPath("/b")};
    static_cast<void>(standIn::takeCalls());
    opener->showInFolder(files);
    opener->preview(files[1]);
    EXPECT_EQ(standIn::takeCalls(), (Texts{"select a", "select b", "preview b"}));
    standIn::keyWindow = nil;
}

struct KeptPixels : ImageContent {
    explicit KeptPixels(Pixels newPixels) : pixels(std::move(newPixels)) {}
    const Pixels pixels;
};
std::shared_ptr<const ImageContent> keepPixels(const Pixels& pixels) {
    return std::make_shared<KeptPixels>(pixels);
}
Bytes pixelAt(const std::optional<Pixels>& pixels, std::ptrdiff_t index) {
    return {pixels.value().bytes.begin() + 4 * index, pixels.value().bytes.begin() + 4 * (index + 1)};
}
const Pixels& pixelsIn(const Image& image) {
    return dynamic_cast<const KeptPixels&>(*image.content).pixels;
}

TEST(DesktopPicturesTest, keepTheirPixelsInTheMiddleOfASquare) {
    const Pixels pattern{2, 1, {255, 0, 0, 255, 64, 64, 64, 128}};
    NSImage* const image = nsImageOf(pattern, {2, 1});
    EXPECT_EQ(pixelsOf([image CGImageForProposedRect:nullptr context:nil hints:nil]).value().bytes, pattern.bytes);
    EXPECT_EQ(pixelAt(pixelsOf(image, 2, 4), 0), Bytes(4)) << "nothing above";
    EXPECT_EQ(pixelAt(pixelsOf(image, 2, 4), 4), (Bytes{255, 0, 0, 255}));
    EXPECT_FALSE(pixelsOf(static_cast<CGImageRef>(nullptr)) || pixelsOf(image, 1, 0) || nsImageOf({}, {1, 1}));
}

TEST(DesktopPicturesTest, areSymbolsIconsAndColours) {
    const SymbolPicture symbol{"tray", 12, FontWeight::bold, {1, 0.5, 0, 1}, {0, 0, 1, 1}};
    EXPECT_EQ(pixelAt(systemSymbolPixels(symbol, 16), 0), (Bytes{0, 128, 255, 255}));
    EXPECT_FALSE(systemSymbolPixels({.name = "no symbol"}, 16));

    const TemporaryFolder folder;
    folder.write("file.txt");
    const Image icon = makeMacWorkspaceIcons(keepPixels)->icon(folder.url("file.txt"));
    EXPECT_EQ(pixelsIn(icon).width, 2 * icon.size.width);
    EXPECT_TRUE(std::ranges::any_of(pixelsIn(icon).bytes, [](auto byte) { return byte != 0; }));

    using Rgba = std::array<double, 4>;
    standIn::isDark = !standIn::isDark;
    EXPECT_EQ(rgbaOf(MacColor::controlAccent, false), (Rgba{1, 0, 0, 1}));
    EXPECT_EQ(rgbaOf(MacColor::controlAccent, true), (Rgba{1, 1, 1, 1}));
}

TEST(DesktopPicturesTest, areDrawnByTheSystemUntilNobodyWaits) {
    const TemporaryFolder folder;
    folder.write("text");
    folder.write("dot.ppm", "P6 1 1 255 \xFF\x80\x01");
    auto thumbnails = makeQuickLookThumbnails(keepPixels);
    std::map<std::string, std::optional<Image>> answers;
    const auto ask = [&](const std::string& name) {
        thumbnails->generate({folder.url(name), {64, 64}, 2}, [&answers, name](const std::optional<Image>& image) {
            EXPECT_TRUE(NSThread.isMainThread);
            answers[name] = image;
        });
    };
    ask("text");
    ask("dot.ppm");
    EXPECT_TRUE(comesTrue([&] { return answers.size() == 2; }));
    EXPECT_FALSE(answers["text"]);
    EXPECT_EQ(pixelAt(pixelsIn(answers["dot.ppm"].value()), 0), (Bytes{1, 128, 255, 255}));
    answers.clear();
    ask("dot.ppm");
    thumbnails.reset();
    EXPECT_TRUE(comesTrue([] { return standIn::living()["StandInWork"] == 0; }));
    EXPECT_TRUE(answers.empty());
}

}  // namespace
}  // namespace stowpocket
