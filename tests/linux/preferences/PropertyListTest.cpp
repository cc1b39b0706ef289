// SPDX-License-Identifier: MIT
#include "platform/linux/preferences/PropertyList.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
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
}

TEST(PropertyList, bringsWhatItCannotHoldToTheNearest) {
    const auto written = [](PropertyValue value) { return parsePropertyList(writePropertyList(value)); };
    EXPECT_EQ(written("a\xFF z"), PropertyValue("a\xEF\xBF\xBD z"));
    EXPECT_EQ(written(std::string("a\0b", 3)), PropertyValue("a\xEF\xBF\xBD"
                                                             "b"));
    EXPECT_EQ(written(Date{std::chrono::microseconds(1'999'999)}), PropertyValue(Date{std::chrono::seconds(1)}));
    EXPECT_TRUE(written(Date::max()).value_or(false).date());
    EXPECT_TRUE(std::isnan(written(std::nan("")).value_or(0).real().value_or(0)));
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

TEST(PropertyList, refusesWhatIsNone) {
    const std::string whole = writePropertyList(PropertyValue::Dictionary{{"a", PropertyValue::Array{1, "x"}}});
    for (std::size_t length = 0; length + 10 < whole.size(); ++length)
        EXPECT_FALSE(parsePropertyList(whole.substr(0, length))) << length;
    for (const std::string& text :
         {std::string("bplist00\xD0"), plist(""), plist("<dict><string>x</string></dict>"),
          plist("<array><dict></array></dict>"), plist("<string>a\0</string>"),
          plist("<array a=\"</array>\"></array>"), std::string(maxPropertyListSize + 1, ' ')})
        EXPECT_FALSE(parsePropertyList(text)) << text.substr(0, 80);
}

TEST(PropertyList, isNotDrownedByNesting) {
    constexpr int deep = 100'000;
    const std::string arrays = repeated("<array>", deep) + repeated("</array>", deep);
    const std::string dictionaries = repeated("<dict><key>k</key>", deep) + repeated("</dict>", deep);
    const std::string hidden = repeated("<array><!--</array>-->", deep) + repeated("</array>", deep);
    for (const std::string& body : {arrays, dictionaries, hidden, repeated("<array>", deep)})
        EXPECT_FALSE(parsePropertyList(plist(body)));
    EXPECT_FALSE(parsePropertyList(plist("<array>" + repeated("<true/>", 300'000) + "</array>")));
    const std::string moderate = repeated("<array>", 60) + repeated("</array>", 60);
    EXPECT_TRUE(parsePropertyList(plist(moderate)));
}

}  // namespace
}  // namespace stowpocket
