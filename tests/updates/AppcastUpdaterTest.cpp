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

using CallLog = std::vector<std::string>;

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
        log.clear();
        updater = std::make_unique<AppcastUpdater>(
            AppcastUpdaterServices{core,
                                   worker,
                                   window,
                                   {"linux", "6.1", "x86_64"},
                                   ownsItsFile,
                                   [this](const std::string& url) { log.push_back("open " + url); },
                                   [this] { log.push_back("restart"); }});
    }
    /// What it had to be done since the last call.
    [[nodiscard]] CallLog done() { return std::exchange(log, {}); }
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

    CallLog log;
    FakeUpdateTransport worker{log};
    FakeUpdateWindow window;
    std::unique_ptr<AppcastUpdater> updater;
};

TEST_F(AppcastUpdaterTest, whatTheUserAsksForIsOfferedFetchedInstalledAndStarted) {
    std::vector<bool> can;
    const Subscription subscription =
        updater->canCheckForUpdatesChanged().connect([&can](bool now) { can.push_back(now); });
    updater->checkForUpdates();
    updater->checkForUpdates();
    EXPECT_EQ(done(), CallLog{"list feed key"});
    answerWith("2.1");
    EXPECT_EQ(can, (std::vector{false, true}));
    EXPECT_EQ(window.timesInFront, 1);
    EXPECT_EQ(title(), "stowpocket 2.1 is available");
    worker.notesDone("Better.");
    EXPECT_EQ(window.shown->item.notes, "Better.");
    EXPECT_EQ(done(), CallLog{"notes https://e.example/notes"});
    window.choices.emit(UpdateChoice::install);
    worker.progress(50);
    EXPECT_EQ(presentationOf(*window.shown).progress, 0.5);
    worker.progress(100);
    EXPECT_EQ(window.shown->state, UpdateState::verifying);
    EXPECT_EQ(done(), (CallLog{"cancel", "download 2.1 key"}));
    worker.done(std::nullopt);
    EXPECT_EQ(done(), CallLog{"install 2.1 key"});
    EXPECT_EQ(presentationOf(*window.shown).onClose, std::nullopt);
    window.choices.emit(UpdateChoice::cancel);
    worker.done(std::nullopt);
    EXPECT_EQ(done(), CallLog{"restart"});
    EXPECT_EQ(preferences.string(installedVersionKey), "2.1");
}

TEST_F(AppcastUpdaterTest, looksOnceADayAndFetchesButNeverInstallsUnasked) {
    dispatch.advance(59s);
    EXPECT_EQ(done(), CallLog());
    dispatch.advance(1s);
    EXPECT_EQ(done(), (CallLog{"remove replaced", "list feed key"}));
    worker.listDone(UpdateFailure::unreachable);
    EXPECT_EQ(title(), "") << "in silence";
    dispatch.advance(1h);
    EXPECT_EQ(done(), CallLog{"list feed key"}) << "what failed is tried again";
    answerWith("2.0");
    EXPECT_EQ(title(), "");
    dispatch.advance(23h);
    EXPECT_EQ(done(), CallLog());
    dispatch.advance(2h);
    EXPECT_EQ(done(), CallLog{"list feed key"});
    answerWith("2.1");
    EXPECT_EQ(done(), CallLog{"download 2.1 key"});
    worker.progress(100);
    EXPECT_EQ(title(), "");
    worker.done(std::nullopt);
    EXPECT_EQ(title(), "stowpocket 2.1 is ready to be installed");
    EXPECT_EQ(done(), CallLog()) << "the user is asked";
    EXPECT_EQ(window.timesInFront, 0) << "and left to type what they type";
    window.choices.emit(UpdateChoice::skip);
    EXPECT_EQ(done(), (CallLog{"cancel", "discard"}));
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
    static_cast<void>(done());
    window.choices.emit(UpdateChoice::openPage);
    EXPECT_EQ(done(), (CallLog{"open https://e.example/page", "cancel"}));
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
    EXPECT_EQ(done(), CallLog());
    dispatch.advance(24h);
    EXPECT_EQ(done(), CallLog{"remove replaced"});
    EXPECT_FALSE(preferences.value(installedVersionKey));
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
    EXPECT_EQ(done().back(), "list feed key");
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
    EXPECT_EQ(done(), CallLog());
    EXPECT_EQ(title(), "");
}

}  // namespace
}  // namespace stowpocket
