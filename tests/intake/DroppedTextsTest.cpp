// SPDX-License-Identifier: MIT
#include "intake/ExchangeFormats.h"

#include "foundation/Text.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace stowpocket {
namespace {

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
    EXPECT_FALSE(linkOfMozURL("http://a\nb")) << "not UTF-16";
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
