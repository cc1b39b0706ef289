// SPDX-License-Identifier: MIT
#include "updates/AppcastUpdater.h"
#include "fakes/FakeCore.h"
#include "fakes/FakeUpdates.h"
#include "presentation/UpdatePresentation.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

AppcastItem item(const char* version, const char* operatingSystem = "linux") {
    AppcastItem made;
    made.version = version;
    made.operatingSystem = operatingSystem;
    return made;
}

struct AppcastUpdaterTest : testing::Test, FakeCore {
    AppcastUpdaterTest() {
        bundle.infoDictionary = {{"CFBundleName", "stowpocket"},
                                 {"CFBundleVersion", "2.0"},
                                 {"SUFeedURL", "feed"},
                                 {"SUPublicEDKey", "key"}};
        start();
    }
    void start(bool ownsItsFile = true) {
        updater.reset();
        updater = std::make_unique<AppcastUpdater>(
            AppcastUpdaterServices{core,
                                   worker,
                                   window,
                                   {"linux", "6.1", "x86_64"},
                                   ownsItsFile,
                                   [this](const std::string& url) { openedPage = url; },
                                   [this] { ++restarts; }});
    }
    /// How many lists were asked for since the last call.
    [[nodiscard]] int checks() { return std::exchange(worker.lists, 0); }
    [[nodiscard]] std::string title() const { return window.shown ? presentationOf(*window.shown).title : ""; }
    void answerWith(const char* version) const {
        AppcastItem offered = item(version);
        offered.length = 100;
        offered.pageURL = "https://e.example/page";
        offered.notesURL = "https://e.example/notes";
        worker.listDone(std::vector{offered});
    }

    FakeUpdateTransport worker;
    FakeUpdateWindow window;
    std::string openedPage;
    int restarts = 0;
    std::unique_ptr<AppcastUpdater> updater;
};

TEST_F(AppcastUpdaterTest, whatTheUserAsksForIsOfferedFetchedInstalledAndStarted) {
    std::vector<bool> can;
    const Subscription subscription =
        updater->canCheckForUpdatesChanged().connect([&can](bool now) { can.push_back(now); });
    updater->checkForUpdates();
    updater->checkForUpdates();
    EXPECT_EQ(checks(), 1);
    answerWith("2.1");
    EXPECT_EQ(can, (std::vector{false, true}));
    worker.notesDone("Better.");
    EXPECT_EQ(window.shown->item.notes, "Better.");
    window.choices.emit(UpdateChoice::install);
    EXPECT_FALSE(worker.notesDone) << "notes that are still on their way are given up";
    worker.progress(50);
    EXPECT_EQ(presentationOf(*window.shown).progress, 0.5);
    worker.progress(100);
    worker.done(std::nullopt);
    EXPECT_EQ(presentationOf(*window.shown).onClose, std::nullopt);
    window.choices.emit(UpdateChoice::cancel);
    EXPECT_EQ(restarts, 0);
    worker.done(std::nullopt);
    EXPECT_EQ(restarts, 1);
    EXPECT_EQ(preferences.string(installedVersionKey), "2.1");
    EXPECT_EQ(worker.keys, (std::set<std::string>{"feed key", "key"}));
}

TEST_F(AppcastUpdaterTest, looksOnceADayAndFetchesButNeverInstallsUnasked) {
    dispatch.advance(59s);
    EXPECT_EQ(checks(), 0);
    dispatch.advance(1s);
    EXPECT_EQ(checks(), 1);
    worker.listDone(UpdateFailure::unreachable);
    dispatch.advance(1h);
    EXPECT_EQ(checks(), 1) << "what failed is tried again";
    answerWith("2.0");
    dispatch.advance(23h);
    EXPECT_EQ(checks(), 0);
    dispatch.advance(2h);
    EXPECT_EQ(checks(), 1);
    answerWith("2.1");
    EXPECT_EQ(worker.downloading, "2.1");
    worker.progress(100);
    worker.done(std::nullopt);
    EXPECT_EQ(title(), "stowpocket 2.1 is ready to be installed");
    EXPECT_EQ(worker.installing, "") << "the user is asked";
    EXPECT_EQ(window.timesInFront, 0) << "and left to type what they type";
    window.choices.emit(UpdateChoice::skip);
    EXPECT_EQ(worker.downloading, "") << "nothing of it is kept";
    dispatch.advance(25h);
    answerWith("2.1");
    EXPECT_EQ(title(), "") << "it was skipped";
    updater->checkForUpdates();
    answerWith("2.1");
    EXPECT_EQ(title(), "stowpocket 2.1 is available") << "but the user asks for it";
}

TEST_F(AppcastUpdaterTest, asksBeforeItFetchesWhereTheUserWantsThatOrTheFileIsNotItsOwn) {
    updater->setAutomaticallyDownloadsUpdates(false);
    dispatch.advance(1min);
    answerWith("2.1");
    start(false);
    updater->checkForUpdates();
    answerWith("2.1");
    window.choices.emit(UpdateChoice::install);
    EXPECT_EQ(presentationOf(*window.shown).buttons.back(), (UpdateButton{"Download Page", UpdateChoice::openPage}));
    window.choices.emit(UpdateChoice::openPage);
    EXPECT_EQ(openedPage, "https://e.example/page");
    EXPECT_EQ(worker.downloading, "");
}

TEST_F(AppcastUpdaterTest, aCheckByTheUserShowsWhatGoesOnUnseenAndHowItEnds) {
    dispatch.advance(1min);
    updater->checkForUpdates();
    EXPECT_EQ(window.shown->state, UpdateState::checking);
    EXPECT_EQ(window.timesInFront, 1);
    answerWith("1.0");
    EXPECT_EQ(title(), "You're up to date!");
    EXPECT_EQ(presentationOf(*window.shown).message, "stowpocket 2.0 is the latest version.");
    window.choices.emit(UpdateChoice::later);
    updater->checkForUpdates();
    worker.listDone(UpdateFailure::unreadableList);
    EXPECT_EQ(title(), "New versions could not be looked for");
    window.choices.emit(UpdateChoice::later);
    updater->checkForUpdates();
    answerWith("2.1");
    window.choices.emit(UpdateChoice::install);
    worker.done(UpdateFailure::badSignature);
    EXPECT_EQ(title(), "The update failed");
    EXPECT_TRUE(presentationOf(*window.shown).message.starts_with("The file on the server is not signed"));
}

TEST_F(AppcastUpdaterTest, theReplacedVersionGoesOnceTheNewOneHasRun) {
    preferences.setValue(enableAutomaticChecksKey, 0);
    preferences.setValue(installedVersionKey, "2.0");
    start();
    dispatch.advance(59s);
    EXPECT_TRUE(worker.isReplacedThere);
    dispatch.advance(24h);
    EXPECT_FALSE(worker.isReplacedThere);
    EXPECT_FALSE(preferences.value(installedVersionKey));
    EXPECT_EQ(checks(), 0) << "checks are off";
}

TEST_F(AppcastUpdaterTest, aVersionThatWasTakenBackIsToldOfOnceAndNoMoreInstalledUnasked) {
    preferences.setValue(installedVersionKey, "2.1");
    start();
    dispatch.advance(1s);
    EXPECT_EQ(title(), "The update failed");
    EXPECT_TRUE(presentationOf(*window.shown).message.ends_with("so the one before it is back."));
    EXPECT_EQ(window.timesInFront, 0);
    window.choices.emit(UpdateChoice::later);
    dispatch.advance(1min);
    answerWith("2.1");
    start();
    dispatch.advance(1s);
    EXPECT_EQ(title(), "");
}

TEST_F(AppcastUpdaterTest, withoutAFeedThereIsNothingToDo) {
    bundle.infoDictionary = std::nullopt;
    start();
    EXPECT_FALSE(updater->canCheckForUpdates());
    updater->checkForUpdates();
    dispatch.advance(25h);
    EXPECT_EQ(checks(), 0);
}

TEST(VersionComparison, ordersVersionsAsTheirMakersMeanThem) {
    const std::vector<const char*> ascending{
        "",       "0.0.9",   "0.1",     "1.0a1",   "1.0b1",       "1.0b2",   "1.0B9",
        "1.0b10", "1.0-rc1", "1.0",     "1.0 (1)", "1.0 (1234)",  "1.0.1b5", "1.0.1 (1)",
        "1.9",    "1.10",    "3.3 (5)", "3.3 (6)", "3.3.1b1 (7)", "9",       "18446744073709551617"};
    for (std::size_t older = 0; older < ascending.size(); ++older) {
        for (std::size_t newer = older + 1; newer < ascending.size(); ++newer) {
            EXPECT_TRUE(compareVersions(ascending[older], ascending[newer]) < 0) << ascending[older];
            EXPECT_TRUE(compareVersions(ascending[newer], ascending[older]) > 0) << ascending[newer];
        }
    }
    for (const auto& [left, right] :
         {std::pair("1.0", "1.0.0"), {"01.002", "1.2"}, {"1.0-rc1", "1.0 RC 1"}, {" 1.0", "1.0-"}, {"", "0"}})
        EXPECT_TRUE(compareVersions(left, right) == 0) << left << " = " << right;
}

/// The version chosen among `items` by a program of version 2.0.
std::string chosen(const std::vector<AppcastItem>& items, const char* skipped = "", const char* hardware = "x86_64") {
    const AppcastItem* const found = selectUpdate(items, {"linux", "6.1.0-13", hardware}, "2.0", skipped);
    return found == nullptr ? "none" : found->version;
}

TEST(UpdateSelection, takesTheNewestThatRunsHereAndIsNewer) {
    EXPECT_EQ(chosen({item("1.9"), item("2.0"), item("2.0.0"), item("2.0b1"), item("")}), "none") << "no way back";
    EXPECT_EQ(chosen({item("2.9"), item("2.10"), item("2.1")}), "2.10");
    EXPECT_EQ(chosen({item("2.1"), item("3", ""), item("3", "macos"), item("3", "windows")}), "2.1");
    EXPECT_EQ(chosen({item("2.1"), item("2.2")}, "2.2"), "2.1");
    std::vector<AppcastItem> items{item("2.1"), item("3"), item("4"), item("5"), item("2.2")};
    items[1].channel = "beta";
    items[2].minimumSystemVersion = "6.2";
    items[3].hardware = "arm64";
    items[4].minimumSystemVersion = "6.1";
    items[4].hardware = " x86_64 ";
    EXPECT_EQ(chosen(items), "2.2");
    EXPECT_EQ(chosen(items, "", "aarch64"), "5");
}

TEST(AppcastRecords, comeBackAsTheyWereAndRefuseRubbish) {
    std::vector<AppcastItem> items{item("1"), item("2")};
    items[1].notes = "a\nb \u00e9";
    items[1].length = 5'000'000'000;
    const std::string bytes = encodedItems(items);
    EXPECT_EQ(decodedItems(bytes), items);
    EXPECT_FALSE(decodedItems(bytes + "x"));
    items[0].notes = std::string("nul\0nul", 7);
    EXPECT_EQ(decodedItems(encodedItems(items))->at(0).notes, "nulnul");
}

}  // namespace
}  // namespace stowpocket
