// SPDX-License-Identifier: MIT
// Windows, the menu bar, input and pictures, on GNUstep's AppKit in a desktop of its own.
#include "gnustep/StandIns.h"
#import "platform/macos/AppKitPictures.h"
#import "platform/macos/Conversions.h"
#include "platform/macos/MacDrags.h"
#include "platform/macos/MacPictures.h"
#include "platform/macos/MacStorage.h"
#include "platform/macos/MacSystem.h"
#include "platform/macos/MacWindows.h"
#include "platform/posix/FileProbe.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

@interface FocusableView : NSView
@end
@implementation FocusableView
- (BOOL)acceptsFirstResponder {
    return YES;
}
@end

namespace stowpocket {
namespace {

using standIn::comesTrue;

using Told = std::vector<std::string>;

class Content : public HostedView {
public:
    explicit Content(Told& told) : told_(told) {}
    ~Content() override { told_.push_back("gone"); }
    [[nodiscard]] void* nativeView() override { return (__bridge void*)view; }
    [[nodiscard]] Size size() const override { return wanted; }
    [[nodiscard]] Signal<>& sizeChanged() override { return changed; }
    void setCancel(std::function<void()> newCancel) override { cancel = std::move(newCancel); }
    void setShown(bool isShown) override { told_.push_back(isShown ? "shown" : "hidden"); }

    NSView* const view = [[FocusableView alloc] initWithFrame:NSZeroRect];
    Size wanted{200, 100};
    Signal<> changed;
    std::function<void()> cancel;

private:
    Told& told_;
};

class DesktopWindowTest : public testing::Test {
protected:
    void make(MacWindowKind kind) {
        auto content = std::make_unique<Content>(told);
        view = content->view;
        window = makeMacWindow(kind, "A \xC3\xA9 title", std::move(content));
        system = view.window;
        ASSERT_NE(system, nil);
    }
    NSSize contentSize() { return [system contentRectForFrameRect:system.frame].size; }
    Told told;
    std::unique_ptr<Window> window;
    NSView* view = nil;
    NSWindow* system = nil;
};

TEST_F(DesktopWindowTest, showsItsContentAsOftenAsItOpens) {
    @autoreleasepool {
        make(MacWindowKind::titled);
        EXPECT_FALSE(window->isVisible());
        EXPECT_EQ(utf8(system.title), "A \xC3\xA9 title");
        EXPECT_TRUE(NSEqualSizes(contentSize(), NSMakeSize(200, 100)));
        EXPECT_TRUE(NSEqualSizes(view.frame.size, NSMakeSize(200, 100)));
        EXPECT_EQ(standIn::noted(system, "styleMask"), std::to_string(NSTitledWindowMask | NSClosableWindowMask));
        EXPECT_NE(system.level, NSFloatingWindowLevel);
        window->center();
        window->makeKeyAndOrderFront();
        EXPECT_TRUE(window->isVisible());
        EXPECT_EQ(system.firstResponder, view);
        [system performClose:nil];
        EXPECT_FALSE(window->isVisible());
        window->makeKeyAndOrderFront();
        window->close();
        window->orderFrontRegardless();
        EXPECT_TRUE(window->isVisible());
        window.reset();
    }
    EXPECT_EQ(told, (Told{"shown", "hidden", "shown", "hidden", "gone"}));
}

TEST_F(DesktopWindowTest, floatsWithoutATitleBar) {
    @autoreleasepool {
        make(MacWindowKind::bare);
        EXPECT_EQ(system.level, NSFloatingWindowLevel);
        EXPECT_TRUE(system.titlebarAppearsTransparent && system.titleVisibility == NSWindowTitleHidden);
        EXPECT_TRUE(system.isMovableByWindowBackground);
        EXPECT_TRUE(NSEqualSizes(contentSize(), NSMakeSize(200, 100)));
        NSColor* const color = [system.backgroundColor colorUsingColorSpaceName:NSDeviceRGBColorSpace];
        EXPECT_NEAR(color.redComponent, 13 / 255.0, 0.001);
        EXPECT_NEAR(color.blueComponent, 23 / 255.0, 0.001);
        window.reset();
    }
}

class DesktopPopoverTest : public testing::Test {
protected:
    NSPopover* system() { return standIn::popover; }
    Told told;
    Content* content = nullptr;
    std::unique_ptr<StatusItem> item = makeMacStatusBar()->makeStatusItem();
    std::unique_ptr<Popover> popover = makeMacPopover([this] {
        auto made = std::make_unique<Content>(told);
        content = made.get();
        return made;
    });
};

TEST_F(DesktopPopoverTest, followsItsContent) {
    int cancelled = 0;
    @autoreleasepool {
        popover->onCancel = [&] { ++cancelled; };
        popover->makeKey();
        EXPECT_EQ(content, nullptr) << "not yet asked for";
        NSWindow* const home = standIn::statusItem.button.window;
        home.contentView = [[NSView alloc] initWithFrame:NSZeroRect];
        popover->show(*item->button());
        EXPECT_FALSE(popover->isShown()) << "the button is in no window";
        home.contentView = standIn::statusItem.button;
        popover->show(*item->button());
        EXPECT_TRUE(popover->isShown());
        EXPECT_EQ(system().behavior, NSPopoverBehaviorApplicationDefined);
        EXPECT_LE(NSMaxY(content->view.window.frame), NSMinY(home.frame)) << "below the icon";
        content->wanted.height = 220;
        content->changed.emit();
        EXPECT_EQ(content->view.frame.size.height, 220);
        popover->makeKey();
        EXPECT_EQ(content->view.window.firstResponder, content->view);
        content->cancel();
        EXPECT_EQ(cancelled, 1);
    }
}

TEST_F(DesktopPopoverTest, hidesItsContentUnlessItIsShownAgain) {
    @autoreleasepool {
        static_cast<void>(standIn::takeCalls());
        popover->show(*item->button());
        popover->performClose();
        EXPECT_FALSE(popover->isShown());
        popover->show(*item->button());
        EXPECT_TRUE(comesTrue([] { return standIn::takeCalls() == Told{"popover closed"}; }));
        EXPECT_EQ(told, (Told{"shown", "shown"}));
        popover->setAnimates(false);
        popover->performClose();
        EXPECT_EQ(told, (Told{"shown", "shown", "hidden"}));
        popover->setAnimates(true);
        popover->show(*item->button());
        popover->performClose();
        popover.reset();
        EXPECT_EQ(told.back(), "gone");
    }
}

TEST(DesktopStatusItemTest, showsPictureAndTitleAndTellsClicks) {
    @autoreleasepool {
        auto item = makeMacStatusBar()->makeStatusItem();
        NSStatusBarButton* const system = standIn::statusItem.button;
        const std::shared_ptr<StatusItemButton> button = item->button();
        button->setImage({"tray.full", 15, FontWeight::medium, "Shelf"});
        NSString* const configuration = [NSString stringWithFormat:@"tray.full|Shelf|15 %g", NSFontWeightMedium];
        EXPECT_EQ(standIn::noted(system.image, "symbol"), utf8(configuration));
        button->setImage({"no symbol", 15, FontWeight::medium, ""});
        EXPECT_EQ(system.image, nil);
        button->setTitle({"12", 11, FontWeight::semibold, 4});
        EXPECT_EQ(utf8(system.attributedTitle.string), "12");
        NSDictionary* const style = [system.attributedTitle attributesAtIndex:0 effectiveRange:nullptr];
        EXPECT_EQ([style[NSBaselineOffsetAttributeName] doubleValue], 4);
        EXPECT_EQ([style[NSFontAttributeName] pointSize], 11);
        int clicks = 0;
        button->setAction([&] {
            ++clicks;
            button->setAction([&] { clicks += 10; });
        });
        [system performClick:nil];
        [system performClick:nil];
        EXPECT_EQ(clicks, 11);
    }
}

NSEvent* keyDown(NSString* text, unsigned short code, NSUInteger flags = 0) {
    return [NSEvent keyEventWithType:NSKeyDown
                            location:NSZeroPoint
                       modifierFlags:flags
                           timestamp:0
                        windowNumber:0
                             context:nil
                          characters:text
         charactersIgnoringModifiers:text
                           isARepeat:NO
                             keyCode:code];
}

TEST(DesktopInputTest, tellsKeysAndPressesElsewhere) {
    @autoreleasepool {
        const auto monitors = makeMacEventMonitors();
        std::vector<KeyEvent> keys;
        auto keyMonitor = monitors->addLocalKeyDownMonitor([&](const KeyEvent& key) {
            keys.push_back(key);
            return key.keyCode == 1;
        });
        const auto arrives = [](NSEvent* event) { return standIn::throughMonitors(event) == event; };
        EXPECT_TRUE(arrives(keyDown(@"a", 0)));
        EXPECT_FALSE(arrives(keyDown(@"\u00e9", 1, NSCommandKeyMask))) << "it is swallowed";
        ASSERT_EQ(keys.size(), 2u);
        EXPECT_EQ(keys[0].capitals + keys[1].capitals, "A\xC3\x89");
        EXPECT_EQ(keys[1].modifierFlags, modifierFlag::command);
        keyMonitor.reset();
        EXPECT_TRUE(arrives(keyDown(@"b", 1)));
        int presses = 0;
        auto mouseMonitor = monitors->addGlobalMouseDownMonitor([&] { ++presses; });
        for (const NSEventType type : {NSLeftMouseDown, NSRightMouseDown, NSLeftMouseUp})
            standIn::pressElsewhere(type);
        EXPECT_EQ(presses, 2);
        mouseMonitor.reset();
        EXPECT_FALSE(standIn::pressElsewhere(NSLeftMouseDown));
    }
}

TEST(DesktopInputTest, keepsHotkeysUntilTheyGo) {
    const auto service = makeCarbonHotkeyService();
    std::vector<HotkeyIdentifier> pressed;
    service->installEventHandler([&](const HotkeyIdentifier* hotkey) {
        pressed.push_back(*hotkey);
        return 0;
    });
    auto hotkey = service->registerHotkey(1, carbonModifier::cmdKey, {7, 8});
    EXPECT_EQ(service->registerHotkey(1, carbonModifier::cmdKey, {7, 9}), nullptr) << "it is taken";
    EXPECT_TRUE(standIn::pressHotkey(1, carbonModifier::cmdKey));
    EXPECT_EQ(pressed, (std::vector<HotkeyIdentifier>{{7, 8}}));
    hotkey.reset();
    EXPECT_FALSE(standIn::pressHotkey(1, carbonModifier::cmdKey));
}

TEST(DesktopSystemTest, answersAboutTheSystem) {
    @autoreleasepool {
        const auto item = makeMacLoginItem();
        for (const SMAppServiceStatus status : {SMAppServiceStatusRequiresApproval, SMAppServiceStatusNotFound}) {
            standIn::loginItemStatus = status;
            const bool mayBeApproved = status == SMAppServiceStatusRequiresApproval;
            EXPECT_EQ(item->status(),
                      mayBeApproved ? LoginItem::Status::requiresApproval : LoginItem::Status::notFound);
        }
        EXPECT_TRUE(item->registerItem() && item->status() == LoginItem::Status::enabled);
        EXPECT_TRUE(item->unregisterItem() && item->status() == LoginItem::Status::notRegistered);
        EXPECT_FALSE(item->unregisterItem());
        EXPECT_FALSE(isMotionReduced());
        standIn::isMotionReduced = true;
        EXPECT_TRUE(isMotionReduced());
        EXPECT_EQ(makeMacMainScreen()->backingScaleFactor(), 1);

        int reopened = 0;
        auto observation = observeReopening([&] { ++reopened; });
        EXPECT_TRUE(standIn::reopen() && reopened == 1);
        observation.reset();
        EXPECT_FALSE(standIn::reopen());

        auto volumes = makeMacVolumes();
        Told told;
        const Subscription mounts = volumes->didMount().connect([&] { told.push_back("mount"); });
        const Subscription unmounts = volumes->didUnmount().connect([&] { told.push_back("unmount"); });
        NSNotificationCenter* const center = NSWorkspace.sharedWorkspace.notificationCenter;
        [center postNotificationName:NSWorkspaceDidMountNotification object:nil];
        EXPECT_TRUE(comesTrue([&] { return told == Told{"mount"}; }));
        [center postNotificationName:NSWorkspaceDidUnmountNotification object:nil];
        EXPECT_TRUE(comesTrue([&] { return told.back() == "unmount"; }));
        [center postNotificationName:NSWorkspaceDidMountNotification object:nil];
        volumes.reset();
    }
}

class KeptPixels : public ImageContent {
public:
    explicit KeptPixels(Pixels newPixels) : pixels(std::move(newPixels)) {}
    const Pixels pixels;
};

std::shared_ptr<const ImageContent> keepPixels(const Pixels& pixels) {
    return std::make_shared<KeptPixels>(pixels);
}
const Pixels& pixelsIn(const Image& image) {
    return dynamic_cast<const KeptPixels&>(*image.content).pixels;
}

/// Three pixels in each of two rows: blue, green, red; nothing, half a grey, white.
Pixels pattern() {
    return {3, 2, {255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 0, 0, 0, 0, 64, 64, 64, 128, 255, 255, 255, 255}};
}

TEST(DesktopPicturesTest, keepEveryPixelInTheMiddleOfTheirSquare) {
    @autoreleasepool {
        NSImage* const image = nsImageOf(pattern(), {3, 2});
        EXPECT_EQ(pixelsOf([image CGImageForProposedRect:nullptr context:nil hints:nil]).value_or(Pixels{}).bytes,
                  pattern().bytes);
        const Pixels square = pixelsOf(image, 2, 6).value_or(Pixels{});
        ASSERT_EQ(square.bytes.size(), 144u);
        EXPECT_EQ(square.bytes[3], 0) << "nothing above";
        EXPECT_EQ(Bytes(square.bytes.begin() + 24, square.bytes.begin() + 28), (Bytes{255, 0, 0, 255}));
        EXPECT_EQ(nsImageOf({}, {1, 1}), nil);
        EXPECT_FALSE(pixelsOf(static_cast<CGImageRef>(nullptr)) || pixelsOf(image, 1, 0));
    }
}

TEST(DesktopPicturesTest, drawSymbolsIconsAndColours) {
    @autoreleasepool {
        const SymbolPicture coloured{"tray", 12, FontWeight::bold, {1, 0.5, 0, 1}, {0, 0, 1, 1}};
        const Pixels symbol = systemSymbolPixels(coloured, 16).value_or(Pixels{1, 1, Bytes(4)});
        EXPECT_EQ(Bytes(symbol.bytes.begin(), symbol.bytes.begin() + 4), (Bytes{0, 128, 255, 255}));
        EXPECT_FALSE(systemSymbolPixels({.name = "no symbol"}, 16));

        const TemporaryFolder folder;
        folder.write("file.txt");
        const auto icons = makeMacWorkspaceIcons(keepPixels);
        const Image icon = icons->icon(folder.url("file.txt"));
        EXPECT_EQ(icon.size, (Size{48, 48}));
        EXPECT_EQ(pixelsIn(icon).width, 96);
        EXPECT_TRUE(std::ranges::any_of(pixelsIn(icon).bytes, [](auto byte) { return byte != 0; }));
        EXPECT_EQ(icons->lowercased("\xC3\x89X"), "\xC3\xA9x");

        using Rgba = std::array<double, 4>;
        EXPECT_EQ(rgbaOf(MacColor::controlAccent, false), (Rgba{1, 0, 0, 1}));
        standIn::isDark = true;
        EXPECT_EQ(rgbaOf(MacColor::controlAccent, false), (Rgba{1, 0, 0, 1}));
        EXPECT_EQ(rgbaOf(MacColor::controlAccent, true), (Rgba{1, 1, 1, 1}));
    }
}

TEST(DesktopThumbnailsTest, answerOnTheMainThreadUntilTheyGo) {
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
    EXPECT_EQ(pixelsIn(answers["dot.ppm"].value()).bytes, (Bytes{1, 128, 255, 255}));
    answers.clear();
    ask("dot.ppm");
    thumbnails.reset();
    EXPECT_TRUE(comesTrue([] { return standIn::living()["QLThumbnailGenerationRequest"] == 0; }));
    EXPECT_TRUE(comesTrue([] { return standIn::living()["StandInWork"] == 0; }));
    EXPECT_TRUE(answers.empty());
}

/// Makes and drops every adapter, with what it holds while it works.
void useEverything(FileProbe& probe, const TemporaryFolder& folder) {
    @autoreleasepool {
        Told told;
        const auto bar = makeMacStatusBar();
        const auto item = bar->makeStatusItem();
        item->button()->setImage({"tray", 16, FontWeight::medium, ""});
        item->button()->setAction([&told] { told.clear(); });
        const auto popover = makeMacPopover([&told] { return std::make_unique<Content>(told); });
        popover->show(*item->button());
        popover->performClose();
        const auto window = makeMacWindow(MacWindowKind::bare, "bare", std::make_unique<Content>(told));
        window->makeKeyAndOrderFront();
        const auto monitors = makeMacEventMonitors();
        const auto keys = monitors->addLocalKeyDownMonitor([](const KeyEvent&) { return false; });
        const auto presses = monitors->addGlobalMouseDownMonitor([] {});
        const auto hotkey = makeCarbonHotkeyService()->registerHotkey(1, 0, {1, 1});
        const auto volumes = makeMacVolumes();
        const auto reopening = observeReopening([] {});
        const auto framework = startStandardUpdateFramework();
        const auto script = makeAppleScriptService()->makeScript("script")->execute();
        const auto store = makeUserDefaultsStore();
        store->setValue("a", 1);
        const auto bookmarks = makeMacBookmarks(probe);
        const Bytes bookmark = bookmarks->create(folder.url("file")).value();
        static_cast<void>(bookmarks->resolve(std::span(&bookmark, 1)));
        static_cast<void>(bookmarks->startAccessing(folder.url("file")));
        static_cast<void>(makeMacFileManager(probe)->attributes(folder.url("file")));
        static_cast<void>(makeMacWorkspaceIcons(keepPixels)->icon(folder.url("file")));
        makeMacFileDragSource()->start((__bridge void*)standIn::statusItem.button, {folder.url("file")}, {}, [] {});
        standIn::begunDrag.reset();
        static_cast<void>(standIn::drag(@[ standIn::promiseOf(@ [@"public.png"], { "promised" }) ]));
        bool hasArrived = false;
        droppedItemProviders().at(0)->loadFileRepresentation("public.png", [&](const auto&) { hasArrived = true; });
        bool hasAnswered = false;
        const auto session = makeMacFeedSession();
        session->dataTask(folder.url("file").string(), [&](const auto&) { hasAnswered = true; });
        EXPECT_TRUE(comesTrue([&] { return hasArrived && hasAnswered; }));
        static_cast<void>(standIn::drag(@[]));
    }
}

TEST(DesktopOwnershipTest, leavesNothingBehind) {
    FileProbe probe{[](const std::string&) { return std::nullopt; }};
    const TemporaryFolder folder;
    folder.write("file");
    useEverything(probe, folder);
    const std::map<std::string, int> before = standIn::living();
    constexpr int rounds = 100;
    for (int round = 0; round < rounds; ++round)
        useEverything(probe, folder);
    const auto left = [&before] {
        std::map<std::string, int> grown;
        for (const auto& [name, count] : standIn::living()) {
            const auto earlier = before.find(name);
            const int more = count - (earlier == before.end() ? 0 : earlier->second);
            if (more >= rounds / 2 && name != "GSNotificationObserver")  // which GNUstep itself never releases
                grown[name] = more;
        }
        return grown;
    };
    static_cast<void>(comesTrue([&] { return left().empty(); }));
    EXPECT_EQ(left(), (std::map<std::string, int>{}));
}

}  // namespace
}  // namespace stowpocket
