// SPDX-License-Identifier: MIT
#include "platform/linux/preferences/PropertyList.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>

namespace stowpocket {
namespace {

std::string plist(const std::string& body) {
    return R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0">)" + body + "</plist>";
}

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int time = 0; time < times; ++time)
        all += text;
    return all;
}

TEST(PropertyList, keepsWhatIsHardToWrite) {
    const PropertyValue value(PropertyValue::Dictionary{
        {"", "empty key"},
        {"reals", PropertyValue::Array{1700000000.123456, 1795247336.631275, -0.1, 5e-324,
                                       std::numeric_limits<double>::infinity()}},
        {"text", PropertyValue::Array{"a\x01\x1f\r\n\t\x7f]]>&amp;<>\"'", "\xC3\xA9\xF0\x9F\x93\x81"}},
        {"data", Bytes(100'000, 7)},
    });
    const std::string before = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "de_DE.UTF-8");  // where it is installed, its decimal comma changes nothing
    EXPECT_EQ(parsePropertyList(writePropertyList(value)), value);
    std::setlocale(LC_ALL, before.c_str());
    EXPECT_EQ(parsePropertyList(writePropertyList("a\xFF z")), PropertyValue("a\xEF\xBF\xBD z"));
}

TEST(PropertyList, readsWhatPeopleEditAndLeavesOutValuesWithoutAType) {
    EXPECT_EQ(parsePropertyList(plist("<array><integer>1</integer><integer>18446744073709551615</integer></array>")),
              PropertyValue(PropertyValue::Array{1}));
    EXPECT_FALSE(parsePropertyList(plist("<integer>9223372036854775808</integer>")));
    EXPECT_EQ(parsePropertyList("<?xml version=\"1.0\"?>\n<!DOCTYPE plist PUBLIC \"x\" \"y\">\n<!-- </array> -->"
                                "<plist version=\"1.0\">\n<array >\n <!-- <array> -->\n <string><![CDATA[<array>]]>"
                                "</string><false/><real>.5</real></array>\n</plist>\n"),
              PropertyValue(PropertyValue::Array{"<array>", false, 0.5}));
}

TEST(PropertyList, refusesWhatIsNoneOrNestedBeyondMeasure) {
    constexpr int deep = 100'000;
    for (const std::string& body : {repeated("<array><!--</array>-->", deep) + repeated("</array>", deep),
                                    repeated("<dict><key>k</key>", deep) + repeated("</dict>", deep),
                                    "<array>" + repeated("<true/>", 300'000) + "</array>"})
        EXPECT_FALSE(parsePropertyList(plist(body)));
    EXPECT_TRUE(parsePropertyList(plist(repeated("<array>", 60) + repeated("</array>", 60))));
    const std::string whole = writePropertyList(PropertyValue::Dictionary{{"a", PropertyValue::Array{1, "x"}}});
    for (std::size_t length = 0; length + 10 < whole.size(); ++length)
        EXPECT_FALSE(parsePropertyList(whole.substr(0, length))) << length;
    for (const std::string& text : {std::string("bplist00\xD0"), plist(""), plist("<dict><string>x</string></dict>"),
                                    plist("<array><dict></array></dict>"), std::string(maxPropertyListSize + 1, ' ')})
        EXPECT_FALSE(parsePropertyList(text)) << text.substr(0, 80);
}

}  // namespace
}  // namespace stowpocket
