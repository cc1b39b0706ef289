// SPDX-License-Identifier: MIT
// The adapters that need no display, run on GNUstep's Foundation. Stand-ins take the place of what it lacks.
#include "gnustep/StandIns.h"
#import "platform/macos/Conversions.h"
#include "platform/macos/MacStorage.h"
#include "platform/macos/MacSystem.h"
#include "platform/posix/FileProbe.h"
#include "services/FilesContract.h"
#include "services/PreferencesContract.h"

#import <Sparkle/Sparkle.h>

#include <sys/stat.h>

@interface SPUUpdater (StandIn)
- (void)setCanCheckForUpdates:(BOOL)can;
@end

namespace stowpocket {

struct MacFiles {
    FileProbe probe{[](const std::string&) { return std::nullopt; }};
    const std::unique_ptr<FileManager> ownedFiles = makeMacFileManager(probe);
    const std::unique_ptr<Bookmarks> ownedBookmarks = makeMacBookmarks(probe);
    FileManager& files = *ownedFiles;
    Bookmarks& bookmarks = *ownedBookmarks;
};

class MacPreferences {
public:
    [[nodiscard]] PreferenceStore& store() { return *store_; }
    void restart() {
        [NSUserDefaults.standardUserDefaults synchronize];
        [NSUserDefaults resetStandardUserDefaults];
        store_ = makeUserDefaultsStore();
    }

private:
    std::unique_ptr<PreferenceStore> store_ = makeUserDefaultsStore();
};

INSTANTIATE_TYPED_TEST_SUITE_P(FilesOnMacOS, FilesContract, OnDisk<MacFiles>);
INSTANTIATE_TYPED_TEST_SUITE_P(PreferencesOnMacOS, PreferencesContract, MacPreferences);

namespace {

using standIn::comesTrue;

using Calls = std::vector<std::string>;

TEST(ConversionsTest, carryEveryNameBothWays) {
    for (const std::string name : {"a b.txt", "100%.txt", "#1?.txt", "a;b&c=d", "\"q\"", "back\\slash", "e\xCC\x81",
                                   "\xF0\x9F\x93\x81", "line\nname", "a:b", "[x]", "\x01", "folder/"}) {
        const FileURL url = *FileURL::fromPath("/folder/" + name);
        EXPECT_EQ(fileURLOf(nsURL(url)), url) << name;
        EXPECT_EQ(utf8(nsPath(url)), url.path()) << name;
    }
    const FileURL foreign = *FileURL::fromPath("/folder/d\xFFr");
    EXPECT_EQ(fileURLOf(nsURL(foreign)), foreign);
    EXPECT_EQ(utf8(nsPath(foreign)), "");
    EXPECT_FALSE(fileURLOf([NSURL URLWithString:@"https://example.com/x"]) || fileURLOf(nil) || utf8(nil));
    EXPECT_EQ(utf8(nsString("a\xFFz")), "a\xEF\xBF\xBDz");
    EXPECT_EQ(utf8(nsString(std::string("a\0b", 3))), std::string("a\0b", 3));
}

TEST(ConversionsTest, leaveOutWhatNoPropertyListHolds) {
    NSDictionary* const mixed = @{@1 : @"no text", @"a" : @[ @YES, [NSNull null], @"x" ], @"b" : [NSNull null]};
    EXPECT_EQ(propertyValueOf(mixed),
              PropertyValue(PropertyValue::Dictionary{{"a", PropertyValue::Array{true, "x"}}}));
    EXPECT_FALSE(propertyValueOf(nil) || propertyValueOf([NSDate dateWithTimeIntervalSince1970:1e12]));
    NSArray* nested = @[];
    for (int level = 0; level < 100; ++level)
        nested = @[ nested ];
    int depth = 0;
    const std::optional<PropertyValue> value = propertyValueOf(nested);
    for (const PropertyValue* at = &*value; !at->array()->empty(); at = &at->array()->front())
        ++depth;
    EXPECT_EQ(depth, 63);
}

TEST(PropertyListParserTest, readsLists) {
    const auto parsed = [](const std::string& text) {
        return makeMacPropertyListParser()->parse(Bytes(text.begin(), text.end()));
    };
    EXPECT_EQ(parsed("<?xml version=\"1.0\"?><plist "
                     "version=\"1.0\"><dict><key>a</key><true/><key>b</key><integer>7</integer></dict></plist>"),
              PropertyValue(PropertyValue::Dictionary{{"a", true}, {"b", 7}}));
    EXPECT_FALSE(parsed("") || parsed("bplist00") || parsed("<plist>") || parsed("rubbish \xFF"));
}

class MacFilesTest : public testing::Test {
protected:
    TemporaryFolder folder;
    MacFiles mac;
    FileManager& files = mac.files;
};

TEST_F(MacFilesTest, makesPrivateFoldersAndKeepsLinks) {
    EXPECT_TRUE(files.createDirectory(folder.url("new/deep")));
    EXPECT_TRUE(files.createDirectory(folder.url("new/deep"))) << "there already";
    struct stat status {};
    ASSERT_EQ(::lstat(folder.path("new/deep").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777u, 0700u);
    folder.write("file");
    std::filesystem::create_symlink("/nowhere", folder.path("dangling"));
    EXPECT_FALSE(files.copyItem(folder.url("file"), folder.url("dangling")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("dangling")));
    EXPECT_TRUE(files.removeItem(folder.url("dangling")));
    EXPECT_FALSE(std::filesystem::is_symlink(folder.path("dangling")));
}

TEST_F(MacFilesTest, knowsTheUsersFoldersAndTheTrash) {
    const std::string home = ::getenv("HOME");
    EXPECT_EQ(files.homeDirectory(), FileURL::fromPath(home + "/"));
    const std::string support = files.applicationSupportDirectory().value().path();
    EXPECT_TRUE(support.starts_with(home + '/') && support.find("Application") != std::string::npos) << support;
    folder.write("image");
    EXPECT_TRUE(makeMacTrash()->trashItem(folder.url("image")));
    EXPECT_FALSE(makeMacTrash()->trashItem(folder.url("image")));
    EXPECT_TRUE(std::filesystem::remove(home + "/.Trash/image"));
}

TEST_F(MacFilesTest, endsEveryAccessThatItBegan) {
    folder.write("file");
    const FileURL file = folder.url("file");
    static_cast<void>(standIn::takeCalls());
    {
        const auto bookmarks = makeMacBookmarks(mac.probe);
        const Bytes bookmark = bookmarks->create(file).value();
        EXPECT_EQ(bookmarks->resolve(std::span(&bookmark, 1)).at(0).value().url, file);
        EXPECT_TRUE(bookmarks->startAccessing(file) && bookmarks->startAccessing(file));
        bookmarks->stopAccessing(file);
        EXPECT_EQ(standIn::takeCalls(), (Calls{"begin resolved file", "begin file", "end resolved file"}));
    }
    EXPECT_EQ(standIn::takeCalls(), Calls{"end file"});
}

TEST(MacVolumesTest, findsRemoteMountsOnTheWay) {
    standIn::mounts = {{"/", true}, {"/Volumes/Server", false}};
    EXPECT_EQ(remoteMountOn("/Volumes/Server/file"), "/Volumes/Server");
    EXPECT_EQ(remoteMountOn("/Volumes/Server 2/file"), std::nullopt);
    standIn::mounts = {{"/", false}};
    EXPECT_EQ(remoteMountOn("/anything"), "/");
}

TEST(MacChildProcessTest, returnsAllOutputOfWhatEnds) {
    const auto process = makeMacChildProcess();
    const auto output = [&](const std::string& script) {
        const std::optional<Bytes> bytes = process->run("/bin/sh", {"-c", script, "a b"});
        return bytes ? std::string(bytes->begin(), bytes->end()) : "none";
    };
    EXPECT_EQ(output("echo \"$0\"; cat; exit 1"), "a b\n") << "there is no input";
    EXPECT_EQ(output("head -c 300000 /dev/zero >&2; echo end"), "end\n") << "nobody reads its complaints";
    EXPECT_EQ(output("exec yes"), "none") << "it writes without end";
    EXPECT_EQ(process->run("/nowhere/tool", {}), std::nullopt);
}

TEST(AppleScriptTest, readsItemsFromTheFirstOn) {
    const auto service = makeAppleScriptService();
    EXPECT_EQ(service->makeScript("refused")->execute(), nullptr);
    standIn::scripts = {{"list \xC3\xA9", "one\ntwo\n"}};
    const auto list = service->makeScript("list \xC3\xA9")->execute();
    EXPECT_EQ(list->numberOfItems(), 2);
    EXPECT_EQ(list->descriptorAtIndex(2)->stringValue(), "two");
    EXPECT_EQ(list->descriptorAtIndex(3), nullptr);
}

TEST(MacFeedSessionTest, answersOnTheMainThreadUpToItsLimit) {
    const TemporaryFolder folder;
    folder.write("feed", "12345");
    folder.write("large", std::string(maxAnswerSize + 1, 'x'));
    static_cast<void>(standIn::takeCalls());
    auto session = makeMacFeedSession();
    std::map<std::string, std::optional<FeedResponse>> answers;
    const auto ask = [&](const std::string& url) {
        session->dataTask(url, [&answers, url](const std::optional<FeedResponse>& response) {
            EXPECT_TRUE(NSThread.isMainThread);
            answers[url] = response;
        });
        return url;
    };
    @autoreleasepool {
        const std::string feed = ask(folder.url("feed").string());
        const std::string large = ask(folder.url("large").string());
        const std::string absent = ask(folder.url("absent").string());
        const std::string invalid = ask("ht tp://x y");
        EXPECT_TRUE(comesTrue([&] { return answers.size() == 4; }));
        EXPECT_EQ(answers[feed].value().body, (Bytes{'1', '2', '3', '4', '5'}));
        EXPECT_EQ(answers[absent].value().statusCode, 404);
        EXPECT_FALSE(answers[large] || answers[invalid] || session->isValid(invalid));
        EXPECT_EQ(standIn::takeCalls(), Calls{"request cancelled"});
        answers.clear();
        ask(feed);
        session.reset();
    }
    EXPECT_TRUE(comesTrue([] { return standIn::living()["StandInURLSessionDataTask"] == 0; }));
    EXPECT_TRUE(answers.empty());
}

TEST(StandardUpdateFrameworkTest, followsTheUpdaterUntilItEnds) {
    static_cast<void>(standIn::takeCalls());
    @autoreleasepool {
        auto framework = startStandardUpdateFramework();
        SPUUpdater* const updater = standIn::updater;
        std::vector<bool> told;
        const Subscription watching =
            framework->canCheckForUpdatesChanged().connect([&](bool can) { told.push_back(can); });
        [updater setCanCheckForUpdates:YES];
        EXPECT_TRUE(framework->canCheckForUpdates());
        [updater setCanCheckForUpdates:NO];
        framework->setAutomaticallyDownloadsUpdates(true);
        EXPECT_TRUE(updater.automaticallyDownloadsUpdates);
        framework->checkForUpdates();
        framework.reset();
        [updater setCanCheckForUpdates:YES];
        EXPECT_EQ(told, (std::vector<bool>{true, false}));
    }
    EXPECT_EQ(standIn::takeCalls(), (Calls{"updater started", "check for updates", "updater gone"}));
}

}  // namespace
}  // namespace stowpocket
