// SPDX-License-Identifier: MIT
// The program as it is put together for macOS, started twice: the second test finds what the first one has left.
#include "gnustep/StandIns.h"
#include "gnustep/Toolkit.h"
#import "platform/macos/Conversions.h"
#include "services/Input.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace stowpocket {
namespace {

using standIn::comesTrue;

class ApplicationTest : public testing::Test {
protected:
    /// Runs the program while `user` uses it, until it is told to terminate.
    void run(const std::function<void()>& user) {
        @autoreleasepool {
            EXPECT_EQ(standIn::runProgram([&] {
                          user();
                          [NSApp terminate:nil];
                      }),
                      0);
            [NSUserDefaults.standardUserDefaults synchronize];  // macOS keeps each change at once
        }
        EXPECT_EQ(standIn::statusItem, nil);
        EXPECT_EQ(standIn::popover, nil);
        EXPECT_FALSE(standIn::pressHotkey(shelfKey, optionShift) || standIn::reopen());
        EXPECT_FALSE(standIn::pressElsewhere(NSLeftMouseDown) ||
                     standIn::isSwallowed(@"s", shelfKey, optionShiftFlags));
    }
    static NSStatusBarButton* button() { return standIn::statusItem.button; }
    static std::string title() { return utf8(button().attributedTitle.string).value_or("none"); }
    static bool isShown() { return standIn::popover.shown; }
    static NSView* dropView() { return button().subviews.lastObject; }
    static bool drop(NSArray* objects) {
        NSView* const target = dropView();
        const id<NSDraggingInfo> info = standIn::drag(objects);
        return [target draggingEntered:info] == NSDragOperationCopy && isShown() &&
               [target draggingUpdated:info] == NSDragOperationCopy && [target performDragOperation:info];
    }
    std::string write(const std::string& name) {
        const std::filesystem::path path = std::filesystem::path(::getenv("HOME")) / name;
        std::ofstream(path) << name;
        return path;
    }
    static constexpr std::uint32_t shelfKey = 1;
    static constexpr std::uint32_t optionShift = carbonModifier::optionKey | carbonModifier::shiftKey;
    static constexpr NSUInteger optionShiftFlags = NSAlternateKeyMask | NSShiftKeyMask;
};

TEST_F(ApplicationTest, takesDropsAndShowsThem) {
    run([&] {
        std::vector<std::string> calls;
        EXPECT_TRUE(comesTrue([&] {
            std::ranges::copy(standIn::takeCalls(), std::back_inserter(calls));
            return !calls.empty() && calls.back() == "reopening";
        }));
        EXPECT_EQ(calls,
                  (std::vector<std::string>{"updater started", "status item", "hotkey 1", "hotkey 2", "reopening"}));
        EXPECT_EQ(title(), "");

        [button() performClick:nil];
        EXPECT_TRUE(isShown());
        NSView* const content = standIn::popover.contentViewController.view.subviews.firstObject;
        const double height = content.frame.size.height;
        EXPECT_EQ(content.window.firstResponder, content);
        EXPECT_TRUE(standIn::pressElsewhere(NSLeftMouseDown));
        EXPECT_TRUE(comesTrue([] { return !isShown(); }));

        const auto fileItem = [](const std::string& path) {
            return standIn::itemOf(NSPasteboardTypeFileURL, FileURL::fromPath(path)->string());
        };
        EXPECT_TRUE(drop(@[ fileItem(write("a b.txt")), fileItem(write("\xC3\xA9.txt")) ]));
        EXPECT_TRUE(comesTrue([] { return title() == " 2"; }));
        EXPECT_TRUE(drop(@[ standIn::promiseOf(@ [@"public.png"], { "promised.png" }) ]));
        EXPECT_TRUE(comesTrue([] { return title() == " 3"; }));
        standIn::openFiles({write("c"), write("d")});
        EXPECT_TRUE(comesTrue([] { return title() == " 5"; }));
        EXPECT_TRUE(comesTrue([&] { return content.frame.size.height > height; })) << "it follows what is in it";
        EXPECT_NE(standIn::noted(button().image, "symbol").find("fill|Shelf with 5 items|16 "), std::string::npos);

        EXPECT_TRUE(standIn::isSwallowed(@"s", shelfKey, optionShiftFlags) && !isShown());
        EXPECT_TRUE(standIn::pressHotkey(shelfKey, optionShift) && isShown());
        EXPECT_TRUE(standIn::pressHotkey(shelfKey, optionShift));
        EXPECT_TRUE(comesTrue([] { return !isShown(); }));
        EXPECT_TRUE(standIn::reopen() && isShown());
        standIn::pressEscape();
        EXPECT_FALSE(isShown());
    });
}

TEST_F(ApplicationTest, isThereAgainAfterARestart) {
    run([&] { EXPECT_TRUE(comesTrue([] { return title() == " 5"; })); });
    std::map<std::string, int> begun;
    for (const std::string& call : standIn::takeCalls()) {
        const std::size_t space = call.find(' ');
        if (call.starts_with("begin ") || call.starts_with("end "))
            begun[call.substr(space + 1)] += call.starts_with("begin ") ? 1 : -1;
    }
    EXPECT_EQ(begun.size(), 5u);
    EXPECT_TRUE(std::ranges::all_of(begun, [](const auto& access) { return access.second == 0; }));
}

}  // namespace
}  // namespace stowpocket
