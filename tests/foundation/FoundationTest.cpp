// SPDX-License-Identifier: MIT
#include "foundation/FileURL.h"
#include "foundation/Signal.h"
#include "foundation/Text.h"
#include "foundation/UUID.h"
#include "intake/ExchangeFormats.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using namespace std::string_literals;

TEST(FileURLTest, readsWhatOtherProgramsWrite) {
    const std::pair<std::string, std::string> table[] = {
        {"file:///home/u/a.txt", "/home/u/a.txt"},
        {"file:/home/u/a.txt", "/home/u/a.txt"},
        {"FILE://LocalHost/a", "/a"},
        {"file://Desk/a", "/a"},
        {"file:///a%20b%23%25c", "/a b#%c"},
        {"file:///a b\xC3\xBC", "/a b\xC3\xBC"},
        {"file:///n%FF%0Aame", "/n\xFF\name"},
        {"file:///a?query#fragment", "/a"},
        {"file:///a/../b/", "/a/../b"},
        {"file:///", "/"},
    };
    for (const auto& [text, path] : table) {
        const auto url = FileURL::parse(text, "desk");
        ASSERT_TRUE(url) << text;
        EXPECT_EQ(url->path(), path) << text;
        EXPECT_EQ(FileURL::parse(url->string()), url) << "its own text reads back: " << text;
    }
}

TEST(FileURLTest, refusesWhatIsNoLocalFile) {
    for (const std::string& text :
         {""s, "file:"s, "file://"s, "file://host"s, "file:relative"s, "/plain/path"s, "http://localhost/a"s,
          "file://elsewhere/a"s, "file:///a%00b"s, "file:///a%2Fb"s, "file:///a%2fb"s, "file:///a%"s, "file:///a%4"s,
          "file:///a%zz"s, "file:///a%+1"s, "file:///a\nb"s, "file:///a\0b"s, " file:///a"s})
        EXPECT_FALSE(FileURL::parse(text)) << text;
    EXPECT_FALSE(FileURL::fromPath("/a\0b"s));
}

TEST(FileURLTest, namesAndExtensions) {
    for (const auto& [path, name, extension] : {std::tuple("/a/b.tar.GZ", "b.tar.GZ", "GZ"),
                                                {"/a/.profile", ".profile", ""},
                                                {"/a/name.", "name.", ""},
                                                {"/a.d/name", "name", ""},
                                                {"/a/Tool.app/", "Tool.app", "app"},
                                                {"/", "/", ""}}) {
        EXPECT_EQ(FileURL::fromPath(path)->lastPathComponent(), name);
        EXPECT_EQ(FileURL::fromPath(path)->pathExtension(), extension);
    }
    EXPECT_EQ(FileURL::fromPath("/a (1)!.txt")->string(), "file:///a%20(1)!.txt");
    EXPECT_EQ(FileURL::fromPath("/a")->parent().path(), "/");
    EXPECT_EQ(FileURL::fromPath("/")->appending("x").path(), "/x");
}

TEST(FileURLDeathTest, isExtendedByPlainNamesOnly) {
    for (const std::string& name : {""s, "."s, ".."s, "a/b"s, "a\0b"s}) {
        EXPECT_FALSE(isPlainFileName(name));
        EXPECT_DEATH(static_cast<void>(FileURL::fromPath("/a")->appending(name)), "plain file name");
    }
}

TEST(Utf8Test, replacesEveryByteThatIsNoText) {
    const std::string mark = "\xEF\xBF\xBD";
    for (const std::string& valid :
         {"plain"s, "\xC3\xBC"s, "\xE2\x82\xAC"s, "\xF0\x9F\x93\xA6"s, "a\0b"s, "\xF4\x8F\xBF\xBF"s})
        EXPECT_EQ(validUtf8(valid), valid);
    EXPECT_EQ(validUtf8("\xC0\xAF"), mark + mark) << "overlong slash";
    EXPECT_EQ(validUtf8("\xE0\x80\xAF"), mark + mark + mark) << "overlong slash in three";
    EXPECT_EQ(validUtf8("\xED\xA0\x80"), mark + mark + mark) << "surrogate";
    EXPECT_EQ(validUtf8("\xF4\x90\x80\x80"), mark + mark + mark + mark) << "beyond Unicode";
}

TEST(UUIDTest, isRandomAndReadInItsCanonicalFormOnly) {
    const std::string text = "0F8FAD5B-D9CB-469F-A165-70867728950E";
    for (const std::string& bad : {""s, text + "0", " "s + text.substr(1), "{" + text + "}", text.substr(0, 35),
                                   "0F8FAD5BD-9CB-469F-A165-70867728950E"s, "0F8FAD5B-D9CB-469F-A165-7086772895 E"s,
                                   "0F8FAD5B-D9CB-469F-A165-70867728950G"s, "-F8FAD5B-D9CB-469F-A165-70867728950E"s,
                                   "0xFFAD5B-D9CB-469F-A165-70867728950E"s})
        EXPECT_FALSE(UUID::parse(bad)) << bad;
    const UUID one = UUID::random();
    EXPECT_NE(one, UUID::random());
}

TEST(UriListTest, takesTheLocalFilesInOrder) {
    const std::string text = "# comment\r\nfile:///one\r\nhttp://host/two\nfile://desk/three\rfile:four\r\n\r\n"
                             "/five\r\nfile:///a%00b\r\nfile:///six";
    EXPECT_EQ(uriListOf(filesOfUriList(text, "Desk")), "file:///one\r\nfile:///three\r\nfile:///six\r\n");
    const std::vector<FileURL> files{*FileURL::fromPath("/a\nb"), *FileURL::fromPath("/\xFF #1")};
    for (const std::size_t form : {0U, 1U})
        EXPECT_EQ(filesOfUriList(clipboardFormsOf(files)[form].bytes, ""), files);
}

TEST(SignalTest, aSlotMayDisconnectItselfAndOthers) {
    Signal<const std::string&> signal;
    std::string heard;
    auto held = std::make_shared<int>(1);
    Subscription first;
    Subscription second;
    first = signal.connect([&, held](const std::string& text) {
        heard += "1" + text;
        first.reset();
        second.reset();
        heard += "!";
    });
    second = signal.connect([&](const std::string& text) { heard += "2" + text; });
    const auto third = signal.connect([&](const std::string& text) { heard += "3" + text; });
    signal.emit("a");
    signal.emit("b");
    EXPECT_EQ(heard, "1a!3a3b");
    EXPECT_EQ(held.use_count(), 1) << "what a slot held is released";
}

TEST(SignalTest, aSlotMayEmitAgainAndOneConnectedMeanwhileWaitsForTheNext) {
    Signal<int> signal;
    std::string heard;
    Subscription late;
    const Subscription first = signal.connect([&](int depth) {
        heard += std::to_string(depth);
        if (depth == 1) {
            late = signal.connect([&](int) { heard += "late"; });
            signal.emit(2);
        }
    });
    signal.emit(1);
    EXPECT_EQ(heard, "12late");
}

TEST(SignalTest, aSlotMayDestroyTheSignal) {
    auto signal = std::make_unique<Signal<>>();
    int after = 0;
    const auto first = signal->connect([&] { signal.reset(); });
    const auto second = signal->connect([&] { ++after; });
    signal->emit();
    EXPECT_EQ(after, 0);
}

}  // namespace
}  // namespace stowpocket
