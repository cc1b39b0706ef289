// SPDX-License-Identifier: MIT
#include "foundation/FileURL.h"

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
    EXPECT_FALSE(FileURL::fromPath("relative"));
    EXPECT_FALSE(FileURL::fromPath("/a\0b"s));
    EXPECT_FALSE(FileURL::fromPath(""));
}

TEST(FileURLTest, namesAndExtensions) {
    const struct {
        std::string path;
        std::string name;
        std::string extension;
    } table[] = {
        {"/a/b.tar.GZ", "b.tar.GZ", "GZ"}, {"/a/.profile", ".profile", ""},     {"/a/name.", "name.", ""},
        {"/a.d/name", "name", ""},         {"/a/Tool.app/", "Tool.app", "app"}, {"/", "/", ""},
    };
    for (const auto& row : table) {
        const FileURL url = *FileURL::fromPath(row.path);
        EXPECT_EQ(url.lastPathComponent(), row.name);
        EXPECT_EQ(url.pathExtension(), row.extension);
    }
    EXPECT_EQ(FileURL::fromPath("/a")->parent().path(), "/");
    EXPECT_EQ(FileURL::fromPath("/")->appending("x").path(), "/x");
    EXPECT_EQ(FileURL::fromPath("/a/b/")->appending("x").path(), "/a/b/x");
}

TEST(FileURLTest, isEqualExactlyWhenItsTextIs) {
    const FileURL url = *FileURL::fromPath("/a (1)!.txt");
    EXPECT_EQ(url, *FileURL::parse("file:///a%20%281%29%21.txt"));
    EXPECT_EQ(url.string(), "file:///a%20(1)!.txt");
    EXPECT_NE(*FileURL::fromPath("/a"), *FileURL::fromPath("/a/"));
    EXPECT_NE(*FileURL::fromPath("/b"), *FileURL::fromPath("/a/../b"));
}

TEST(FileURLDeathTest, isExtendedByPlainNamesOnly) {
    for (const std::string& name : {""s, "."s, ".."s, "a/b"s, "a\0b"s}) {
        EXPECT_FALSE(isPlainFileName(name));
        EXPECT_DEATH(static_cast<void>(FileURL::fromPath("/a")->appending(name)), "plain file name");
    }
    EXPECT_TRUE(isPlainFileName("..."));
}

}  // namespace
}  // namespace stowpocket
