// SPDX-License-Identifier: MIT
#include "foundation/Utf8.h"
#include "foundation/UUID.h"
#include "intake/UriList.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using namespace std::string_literals;

TEST(Utf8Test, replacesEveryByteThatIsNoText) {
    const std::string mark = "\xEF\xBF\xBD";
    for (const std::string& valid :
         {"plain"s, "\xC3\xBC"s, "\xE2\x82\xAC"s, "\xF0\x9F\x93\xA6"s, "a\0b"s, "\xF4\x8F\xBF\xBF"s})
        EXPECT_EQ(validUtf8(valid), valid);
    EXPECT_EQ(validUtf8("a\xFFz"), "a" + mark + "z");
    EXPECT_EQ(validUtf8("\xC3"), mark) << "cut off";
    EXPECT_EQ(validUtf8("\xC0\xAF"), mark + mark) << "overlong slash";
    EXPECT_EQ(validUtf8("\xE0\x80\xAF"), mark + mark + mark) << "overlong slash in three";
    EXPECT_EQ(validUtf8("\xED\xA0\x80"), mark + mark + mark) << "surrogate";
    EXPECT_EQ(validUtf8("\xF4\x90\x80\x80"), mark + mark + mark + mark) << "beyond Unicode";
}

TEST(UUIDTest, readsTheCanonicalFormOnly) {
    const std::string text = "0F8FAD5B-D9CB-469F-A165-70867728950E";
    EXPECT_EQ(UUID::parse(text)->text(), text);
    EXPECT_EQ(UUID::parse("0f8fad5b-d9cb-469f-a165-70867728950e")->text(), text);
    for (const std::string& bad : {""s, text + "0", " "s + text.substr(1), "{" + text + "}", text.substr(0, 35),
                                   "0F8FAD5BD-9CB-469F-A165-70867728950E"s, "0F8FAD5B-D9CB-469F-A165-7086772895 E"s,
                                   "0F8FAD5B-D9CB-469F-A165-70867728950G"s, "-F8FAD5B-D9CB-469F-A165-70867728950E"s,
                                   "0xFFAD5B-D9CB-469F-A165-70867728950E"s})
        EXPECT_FALSE(UUID::parse(bad)) << bad;
}

TEST(UUIDTest, randomOnesDifferAndSayTheirKind) {
    const UUID one = UUID::random();
    EXPECT_NE(one, UUID::random());
    EXPECT_EQ(one.text()[14], '4');
    EXPECT_NE(std::string("89AB").find(one.text()[19]), std::string::npos);
    EXPECT_EQ(UUID::parse(one.text()), one);
}

std::vector<std::string> paths(const std::vector<FileURL>& files) {
    std::vector<std::string> list;
    for (const FileURL& file : files)
        list.push_back(file.path());
    return list;
}

TEST(UriListTest, takesTheLocalFilesInOrder) {
    const std::string text = "# comment\r\nfile:///one\r\nhttp://host/two\nfile://desk/three\rfile:four\r\n\r\n"
                             "/five\r\nfile:///a%00b\r\nfile:///six";
    EXPECT_EQ(paths(filesOfUriList(text, "Desk")), (std::vector<std::string>{"/one", "/three", "/six"}));
    EXPECT_EQ(paths(filesOfUriList("file:///a\0"s, "")), (std::vector<std::string>{"/a"}));
    EXPECT_TRUE(filesOfUriList("", "").empty());
}

TEST(UriListTest, writesWhatItReads) {
    const std::vector<FileURL> files{*FileURL::fromPath("/a\nb"), *FileURL::fromPath("/\xFF #1")};
    EXPECT_EQ(filesOfUriList(uriListOf(files), ""), files);
}

}  // namespace
}  // namespace stowpocket
