// SPDX-License-Identifier: MIT
#include "platform/linux/session/DesktopEntry.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using Words = std::vector<std::string>;

TEST(DesktopEntryTest, readsWhatOthersWrite) {
    const auto entry = parsedDesktopEntry("# a comment = none\n"
                                          "Lost=before any group\n"
                                          "[Desktop Entry]\r\n"
                                          " Name = A\\sB\\\\n\\nC\\q\\ \r\n"
                                          "Name[de]=andere\n"
                                          "=nothing\n"
                                          "no value\n"
                                          "Twice=1\n"
                                          "Twice=2\n"
                                          "[Desktop Action x]\n"
                                          "Name=other\n"
                                          "Hidden=true");
    ASSERT_TRUE(entry);
    EXPECT_EQ(*entry, (DesktopEntry{{"Name", "A B\\n\nC\\q\\"}, {"Twice", "2"}}));
    for (const std::string& none : {std::string(), std::string("Name=x\n"), std::string("[Desktop Entry"),
                                    "[Desktop Entry]\n" + std::string(maxDesktopEntrySize, '#')})
        EXPECT_FALSE(parsedDesktopEntry(none)) << none.substr(0, 20);
}

TEST(DesktopEntryTest, takesCommandsApart) {
    const std::pair<std::string, std::optional<Words>> table[] = {
        {"a b", Words{"a", "b"}},
        {"  /usr/bin/x   --y  ", Words{"/usr/bin/x", "--y"}},
        {R"("/a b/c" "" d)", Words{"/a b/c", "", "d"}},
        {R"("\"\`\$\\" "\x")", Words{"\"`$\\", "\\x"}},
        {"a %F 100%% %u", Words{"a", "100%"}},
        {"a%fb \"%%F\"", Words{"ab", "%F"}},
        {"\"a\"b", Words{"ab"}},
        {"a %", Words{"a", "%"}},
        {"\"a", std::nullopt},
        {R"("a\")", std::nullopt},
        {"", std::nullopt},
        {"%F", std::nullopt},
    };
    for (const auto& [value, command] : table)
        EXPECT_EQ(commandOfExec(value), command) << value;
}

}  // namespace
}  // namespace stowpocket
