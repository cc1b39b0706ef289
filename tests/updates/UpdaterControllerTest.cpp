// SPDX-License-Identifier: MIT
#include "updates/UpdaterController.h"
#include "fakes/FakeCore.h"
#include "fakes/FakeUpdates.h"
#include "updates/InstallerImageCleanup.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

struct UpdaterControllerTest : testing::Test, FakeCore {
    UpdaterControllerTest() {
        bundle.infoDictionary = {{"CFBundleName", "stowpocket"},
                                 {"CFBundleShortVersionString", "2.1"},
                                 {"SUFeedURL", "https://stowpocket.example/appcast.xml"}};
        controller = make();
    }
    [[nodiscard]] std::shared_ptr<UpdaterController> make() {
        return UpdaterController::make({core, feed, alerts, [this] {
                                            auto made = std::make_unique<FakeUpdateFramework>();
                                            framework = made.get();
                                            return made;
                                        }});
    }
    /// What a check ends in when the feed answers so.
    std::string outcome(std::optional<int> status, const std::string& body) {
        framework->windows = 0;
        alerts.shown.clear();
        controller->checkForUpdates();
        feed.answer(status, body);
        EXPECT_TRUE(framework->windows == 0 && alerts.shown.empty()) << "the answer comes on some other thread";
        dispatch.runMain();
        return std::string(framework->windows == 1 ? "update window" : "") +
               (alerts.shown.empty() ? "" : "up to date");
    }

    FakeFeedSession feed;
    FakeAlerts alerts;
    FakeUpdateFramework* framework = nullptr;
    std::shared_ptr<UpdaterController> controller;
};

TEST_F(UpdaterControllerTest, theStoredChoiceReachesTheFrameworkWhichTellsWhenItIsReady) {
    EXPECT_TRUE(controller->automaticallyDownloadsUpdates());
    preferences.setValue(automaticallyUpdateKey, false);
    controller = make();
    EXPECT_EQ(framework->downloads, false);
    framework->downloads.reset();
    int changes = 0;
    const Subscription subscription = controller->changed().connect([&changes] { ++changes; });
    preferences.removeValue(automaticallyUpdateKey);
    controller->setAutomaticallyDownloadsUpdates(false);
    EXPECT_EQ(framework->downloads, false) << "told though unchanged";
    EXPECT_FALSE(preferences.boolean(automaticallyUpdateKey)) << "written though unchanged";
    EXPECT_EQ(changes, 0);
    controller->setAutomaticallyDownloadsUpdates(true);
    EXPECT_TRUE(preferences.boolean(automaticallyUpdateKey));
    framework->changed.emit(false);
    EXPECT_FALSE(controller->canCheckForUpdates());
    EXPECT_EQ(changes, 2);
    preferences.setValue(automaticallyUpdateKey, 1);
    controller = make();
    EXPECT_EQ(preferences.value(automaticallyUpdateKey), PropertyValue(true)) << "was stored as a number";
}

TEST_F(UpdaterControllerTest, onlyAFeedThatListsAVersionReachesTheFramework) {
    EXPECT_EQ(outcome(200, "<rss><item><title/></item></rss>"), "update window");
    EXPECT_EQ(outcome(200, "<rss><item foo=\"1\"/></rss>"), "update window");
    for (const char* const body : {"", "<rss><items/></rss>", "<ITEM>", "<item>\xff"})
        EXPECT_EQ(outcome(200, body), "up to date") << body;
    for (const std::optional<int> status : {std::optional(404), {204}, {302}, {}})
        EXPECT_EQ(outcome(status, "<item>"), "up to date");
    controller->checkForUpdates();
    feed.completion(std::nullopt);
    dispatch.runMain();
    EXPECT_EQ(alerts.shown.back(),
              (InformationalAlert{"You're up to date!", "stowpocket 2.1 is the latest version.", "OK"}));
}

TEST_F(UpdaterControllerTest, withoutAFeedAddressNothingIsAsked) {
    for (const PropertyValue& address : {PropertyValue(3), PropertyValue("no address")}) {
        bundle.infoDictionary = PropertyValue::Dictionary{{"SUFeedURL", address}};
        controller->checkForUpdates();
    }
    EXPECT_EQ(alerts.shown.size(), 2u);
    EXPECT_EQ(alerts.shown.back().informativeText, "This app 1.0 is the latest version.");
    EXPECT_TRUE(feed.asked.empty());
}

TEST_F(UpdaterControllerTest, anAnswerAfterItsEndDoesNothing) {
    controller->checkForUpdates();
    controller.reset();
    feed.answer(200, "<item>");
    dispatch.runMain();
    EXPECT_TRUE(alerts.shown.empty());
}

using namespace std::chrono_literals;
using Array = PropertyValue::Array;
using Dictionary = PropertyValue::Dictionary;

struct InstallerImageCleanupTest : testing::Test, FakeCore {
    void cleanUp(const char* program = "/Applications/stowpocket.app") {
        tool.looks = 0;
        InstallerImageCleanup cleanup({core, tool, tool, tool}, fileAt(program), FileURL::fromPath("/home/user"));
        cleanup.cleanUp();
        dispatch.advance(7999ms);
        EXPECT_EQ(dispatch.backgroundCount(), 0u);
        dispatch.advance(1ms);
        EXPECT_EQ(tool.looks, 0) << "not on the main thread";
        dispatch.runAll();
    }
    void expectUntouched() const { EXPECT_TRUE(tool.detached.empty() && tool.trashed.empty()); }
    static Dictionary image(const char* path, const char* mountPoint) {
        return {{"image-path", path},
                {"system-entities",
                 Array{"rubbish", Dictionary{{"dev-entry", "disk4"}}, Dictionary{{"mount-point", "/Volumes/EFI"}},
                       Dictionary{{"mount-point", mountPoint}}}}};
    }

    FakeImageTool tool;
};

TEST_F(InstallerImageCleanupTest, theFirstImageWithTheSameBundleIsDetachedAndTrashed) {
    files.add("/Volumes/nameless/stowpocket.app");
    files.add("/Volumes/b/stowpocket.app");
    files.add("/Volumes/c/stowpocket.app");
    Dictionary nameless = image("", "/Volumes/nameless");
    nameless.erase("image-path");
    tool.info = Dictionary{
        {"images", Array{3, nameless, Dictionary{{"image-path", "/bare.dmg"}}, image("/a.dmg", "/Volumes/a"),
                         image("/b.dmg", "/Volumes/b"), image("/c.dmg", "/Volumes/c")}}};
    tool.canDetach = false;
    cleanUp();
    expectUntouched();
    tool.canDetach = true;
    cleanUp();
    EXPECT_EQ(tool.detached, Names{"/Volumes/b"});
    EXPECT_EQ(tool.trashed, Names{"/b.dmg"});
    EXPECT_EQ(dispatch.idleWork, 2);
}

TEST_F(InstallerImageCleanupTest, onlyACopyInAnApplicationsFolderLooks) {
    for (const auto& [program, looks] : {std::pair("/Applications/stowpocket.app", 1),
                                         {"/ApplicationsBackup/stowpocket.app", 1},
                                         {"/home/user/Applications/stowpocket.app", 1},
                                         {"/home/user/ApplicationsBackup/stowpocket.app", 1},
                                         {"/Volumes/stowpocket/stowpocket.app", 0}}) {
        cleanUp(program);
        EXPECT_EQ(tool.looks, looks) << program;
    }
}

}  // namespace
}  // namespace stowpocket
