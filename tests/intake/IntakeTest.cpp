// SPDX-License-Identifier: MIT
#include "fakes/FakeDesktop.h"
#include "fakes/FakeDispatch.h"
#include "fakes/FakeDragging.h"
#include "foundation/Text.h"
#include "intake/ExchangeFormats.h"
#include "intake/StatusItemDrop.h"
#include "services/MainBundle.h"
#include "shelf/ShelfManager.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

/// What the script returns: a list of items, or one text.
struct FakeResult : EventDescriptor {
    using Text = std::optional<std::string>;
    explicit FakeResult(std::vector<Text> newItems = {}, Text newText = {})
        : items(std::move(newItems)), text(std::move(newText)) {}
    [[nodiscard]] int numberOfItems() const override { return static_cast<int>(items.size()); }
    [[nodiscard]] std::unique_ptr<EventDescriptor> descriptorAtIndex(int index) const override {
        const Text& item = items.at(static_cast<std::size_t>(index - 1));
        return item == "<none>" ? nullptr : std::make_unique<FakeResult>(std::vector<Text>(), item);
    }
    [[nodiscard]] Text stringValue() const override { return text; }

    std::vector<Text> items;
    Text text;
};

struct FakeScripts : ScriptService {
    [[nodiscard]] std::unique_ptr<Script> makeScript(const std::string& newSource) override {
        source = newSource;
        return makes ? std::make_unique<FakeScript>(result) : nullptr;
    }
    struct FakeScript : Script {
        explicit FakeScript(std::optional<FakeResult> made) : result(std::move(made)) {}
        [[nodiscard]] std::unique_ptr<EventDescriptor> execute() override {
            return result ? std::make_unique<FakeResult>(*result) : nullptr;
        }
        std::optional<FakeResult> result;
    };

    std::string source;
    bool makes = true;
    /// None for a script that ends in an error.
    std::optional<FakeResult> result;
};

struct FinderSelectionTest : testing::Test {
    Names selected() {
        Names paths;
        FinderSelection(scripts).read([&](const auto& files) { paths = namesOf(files, &FileURL::path); });
        return paths;
    }
    FakeScripts scripts;
};

TEST_F(FinderSelectionTest, takesAListInItsOrderOrOnePathAndSkipsWhatIsNone) {
    scripts.result = FakeResult({"/b", std::nullopt, "/a", "<none>", "/folder/", "/a"}, "/ignored");
    EXPECT_EQ(selected(), (Names{"/b", "/a", "/folder", "/a"}));
    scripts.result = FakeResult({}, "/only");
    EXPECT_EQ(selected(), Names{"/only"});
    EXPECT_EQ(scripts.source, "tell application \"Finder\"\n"
                              "    set theSelection to selection\n"
                              "    set thePaths to {}\n"
                              "    repeat with theItem in theSelection\n"
                              "        set end of thePaths to POSIX path of (theItem as alias)\n"
                              "    end repeat\n"
                              "    return thePaths\n"
                              "end tell");
}

TEST_F(FinderSelectionTest, everyFailureIsAnEmptySelection) {
    for (const auto& result : {std::optional<FakeResult>(), {FakeResult()}, {FakeResult({}, "")}}) {
        scripts.result = result;
        EXPECT_TRUE(selected().empty());
    }
    scripts.makes = false;
    EXPECT_TRUE(selected().empty());
}

struct StatusItemDropTest : testing::Test {
    StatusItemDropTest() { handler->install(); }

    DraggingDestination& view() { return *button->dropView; }

    std::shared_ptr<FakeStatusItemButton> button = std::make_shared<FakeStatusItemButton>();
    std::vector<std::vector<FileURL>> drops;
    FakeFiles files;
    FakeDispatch dispatch;
    std::shared_ptr<StatusItemDropHandler> handler = std::make_shared<StatusItemDropHandler>(
        button, files, dispatch, [this](const std::vector<FileURL>& urls) { drops.push_back(urls); }, [] {});
    FakePasteboard pasteboard;
};

TEST_F(StatusItemDropTest, deliversTheFilesOfOneDropTogetherAndSkipsTheRest) {
    EXPECT_EQ(view().registeredDraggedTypes(), (Names{"public.file-url", "com.apple.pasteboard.promised-file-url"}));
    pasteboard.addFileURL("file:relative");
    EXPECT_FALSE(view().performDragOperation(pasteboard)) << "no file at all";
    pasteboard.addFileURL("file:///b");
    pasteboard.addFileURL("https://example.com/x");
    pasteboard.content.push_back({{{"public.utf8-plain-text", "file:///no"}}});
    pasteboard.addFileURL("file:///a");
    EXPECT_TRUE(view().performDragOperation(pasteboard));
    ASSERT_EQ(drops.size(), 1u);
    EXPECT_EQ(drops[0], (std::vector<FileURL>{fileAt("/b"), fileAt("/a")}));
}

TEST_F(StatusItemDropTest, promisedFilesAreDeliveredTogetherInTheOrderOfTheirArrival) {
    struct Hasty : FakePromiseReceiver {
        void receivePromisedFiles(const FileURL& folder, Reader newReader) override {
            newReader(folder.appending("at once"));
            newReader(folder.appending("at once, too"));
        }
    };
    const auto one = std::make_shared<FakePromiseReceiver>();
    const auto two = std::make_shared<FakePromiseReceiver>();
    const auto failing = std::make_shared<FakePromiseReceiver>();
    pasteboard.receivers = {std::make_shared<Hasty>(), one, two, failing};
    EXPECT_TRUE(view().performDragOperation(pasteboard)) << "before all has arrived";
    const FileURL folder = ShelfManager::filePromiseDirectory(files);
    EXPECT_TRUE(files.fileExists(folder));
    two->arrive("two");
    failing->reader(std::nullopt);
    dispatch.runAll();
    EXPECT_TRUE(drops.empty()) << "what comes at once counts before the others are expected";
    two->arrive("more of two");
    EXPECT_TRUE(drops.empty()) << "delivered on the main queue";
    dispatch.runAll();
    ASSERT_EQ(drops.size(), 1u) << "one delivery each is waited for";
    EXPECT_EQ(namesOf(drops[0], &FileURL::lastPathComponent),
              (Names{"at once", "at once, too", "two", "more of two"}));
    one->arrive("surplus");
    dispatch.runAll();
    EXPECT_EQ(drops.size(), 1u);
}

TEST_F(StatusItemDropTest, promisesGiveWayToPlainFilesAndMayComeToNothing) {
    const auto receiver = std::make_shared<FakePromiseReceiver>();
    pasteboard.receivers = {receiver};
    pasteboard.addFileURL("file:///plain");
    EXPECT_TRUE(view().performDragOperation(pasteboard));
    EXPECT_FALSE(receiver->destination);
    EXPECT_EQ(drops.size(), 1u);

    pasteboard.content.clear();
    files.canCreateDirectories = false;
    EXPECT_TRUE(view().performDragOperation(pasteboard));
    receiver->reader(std::nullopt);
    dispatch.runAll();
    EXPECT_TRUE(view().performDragOperation(pasteboard));
    receiver->arrive("late");
    handler.reset();
    dispatch.runAll();
    EXPECT_EQ(drops.size(), 1u);
    EXPECT_FALSE(view().performDragOperation(pasteboard)) << "nothing is taken any more";
}

using namespace std::string_literals;

std::string utf16(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text)
        bytes.append(1, static_cast<char>(unit & 0xFF)).append(1, static_cast<char>(unit >> 8));
    return bytes;
}

TEST(DroppedTextsTest, aLinkKeepsItsAddressAndItsTitleOnOneLine) {
    const auto link =
        linkOfMozURL(utf16(u"https://a.org/?q=%20\\x\r\n T\u00fctle\t\u202eof\u2028\U0001F600\\ \nmore"));
    ASSERT_TRUE(link);
    EXPECT_EQ(*link, (DroppedLink{"https://a.org/?q=%20\\x", "T\u00fctle of \U0001F600\\"}));
    EXPECT_EQ(desktopEntryOf(*link), "[Desktop Entry]\nVersion=1.0\nType=Link\nName=T\u00fctle of \U0001F600\\\\\n"
                                     "URL=https://a.org/?q=%20\\\\x\nIcon=text-html\n");
    EXPECT_EQ(linkOfUriList("#\r\nfile:///a\r\nHTTP://b\r\nhttp://c"), (DroppedLink{"HTTP://b", "HTTP://b"}));
    for (const std::u16string_view bad : {u"", u"javascript:alert(1)\nx", u"file:///etc/passwd", u"http://a b",
                                          u"http://\u00fc", u"data:text/html,x", u"\nhttp://a"})
        EXPECT_FALSE(linkOfMozURL(utf16(bad)));
    EXPECT_EQ(linkOfMozURL(utf16(u"http://a\n") + "\x00\xD8\x00"s + "x")->title, "\uFFFD\u7800");
    EXPECT_FALSE(linkOfMozURL(utf16(u"http://" + std::u16string(9000, u'a'))));
}

TEST(DroppedTextsTest, theFirstWordsOfAnyTextAreAHarmlessName) {
    const std::vector<std::pair<std::string, std::string>> table{
        {"Hello,\n  world: C:\\\\x", "Hello, world C x"},
        {"../../etc/passwd", "etc passwd"},
        {"...", ""},
        {" \t\r\n\0"s, ""},
        {"a\0b\x1B[2Jc\x7F"s, "a b [2Jc"},
        {"gpj.\u202Eexe\u200B\uFEFF", "gpj.exe"},
        {".hidden.", "hidden"},
        {"\xFF\xFE\x80", "\uFFFD\uFFFD\uFFFD"},
        {std::string(500, 'x'), std::string(60, 'x')},
        {std::string(59, 'x') + "\u00fc", std::string(59, 'x')},
    };
    for (const auto& [text, name] : table)
        EXPECT_EQ(firstWords(text), name) << text;
    for (unsigned seed = 1; seed < 2000; ++seed) {
        std::string rubbish;
        for (unsigned value = seed; rubbish.size() < seed % 90; value = value * 1664525u + 1013904223u)
            rubbish += static_cast<char>(value >> 24);
        const std::string name = firstWords(rubbish);
        EXPECT_TRUE(validUtf8(name) == name && name.size() <= 60 && name.find('/') == std::string::npos);
        static_cast<void>(linkOfMozURL(rubbish));
    }
}

}  // namespace
}  // namespace stowpocket
