// SPDX-License-Identifier: MIT
#include "updates/AppcastUpdater.h"

#include "fakes/FakeCore.h"
#include "fakes/FakeUpdates.h"
#include "presentation/UpdatePresentation.h"
#include "services/Preferences.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

class AppcastUpdaterTest : public testing::Test, protected FakeCore {
protected:
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
        AppcastItem item;
        item.version = version;
        item.operatingSystem = "linux";
        item.length = 100;
        item.pageURL = "https://e.example/page";
        item.notesURL = "https://e.example/notes";
        worker.listDone(std::vector{item});
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
    EXPECT_EQ(window.timesInFront, 1);
    EXPECT_EQ(title(), "stowpocket 2.1 is available");
    worker.notesDone("Better.");
    EXPECT_EQ(window.shown->item.notes, "Better.");
    window.choices.emit(UpdateChoice::install);
    EXPECT_FALSE(worker.notesDone) << "notes that are still on their way are given up";
    EXPECT_EQ(worker.downloading, "2.1");
    worker.progress(50);
    EXPECT_EQ(presentationOf(*window.shown).progress, 0.5);
    worker.progress(100);
    EXPECT_EQ(window.shown->state, UpdateState::verifying);
    EXPECT_EQ(worker.installing, "");
    worker.done(std::nullopt);
    EXPECT_EQ(worker.installing, "2.1");
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
    EXPECT_EQ(title(), "") << "in silence";
    dispatch.advance(1h);
    EXPECT_EQ(checks(), 1) << "what failed is tried again";
    answerWith("2.0");
    EXPECT_EQ(title(), "");
    dispatch.advance(23h);
    EXPECT_EQ(checks(), 0);
    dispatch.advance(2h);
    EXPECT_EQ(checks(), 1);
    answerWith("2.1");
    EXPECT_EQ(worker.downloading, "2.1");
    worker.progress(100);
    EXPECT_EQ(title(), "");
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
    EXPECT_EQ(window.shown->state, UpdateState::offered);
    start(false);
    updater->checkForUpdates();
    answerWith("2.1");
    window.choices.emit(UpdateChoice::install);
    EXPECT_EQ(presentationOf(*window.shown).buttons.back(), (UpdateButton{"Download Page", UpdateChoice::openPage}));
    window.choices.emit(UpdateChoice::openPage);
    EXPECT_EQ(openedPage, "https://e.example/page");
    EXPECT_EQ(worker.downloading, "");
    EXPECT_EQ(title(), "");
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
    EXPECT_FALSE(preferences.value(installedVersionKey));
    EXPECT_TRUE(updater->canCheckForUpdates());
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
    EXPECT_EQ(title(), "");
    EXPECT_EQ(worker.downloading, "");
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
    EXPECT_EQ(title(), "");
}

}  // namespace
}  // namespace stowpocket
