// SPDX-License-Identifier: MIT
#include "app/CommandLine.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

CommandLine read(const std::vector<std::string_view>& arguments) {
    return readCommandLine(arguments, "/home/me");
}

TEST(CommandLine, takesFilesInTheFormInWhichFileManagersNameThem) {
    const std::vector<std::pair<std::string_view, std::string_view>> cases{
        {"/a/b.txt", "/a/b.txt"},
        {"b.txt", "/home/me/b.txt"},
        {"./x//b.txt", "/home/me/x/b.txt"},
        {"/a/folder/", "/a/folder"},
        {"../b", "/home/me/../b"},
        {"file:///a/b%20c", "/a/b c"},
        {"with space", "/home/me/with space"},
        {"\xFF", "/home/me/\xFF"},
        {"/", "/"},
    };
    for (const auto& [argument, path] : cases) {
        const CommandLine commandLine = read({argument});
        ASSERT_EQ(commandLine.files.size(), 1U) << argument;
        EXPECT_EQ(commandLine.files.front(), FileURL::fromPath(path)) << argument;
    }
}

TEST(CommandLine, tellsOptionsFromFiles) {
    EXPECT_EQ(read({"a", "--help"}).verb, CommandLineVerb::showHelp);
    EXPECT_EQ(read({"--version"}).verb, CommandLineVerb::showVersion);
    EXPECT_EQ(read({"--frobnicate", "a"}).refused, "--frobnicate");
    EXPECT_EQ(read({"--frobnicate", "a"}).verb, CommandLineVerb::refuse);

    const CommandLine dashed = read({"a", "--", "--help", ""});
    EXPECT_EQ(dashed.verb, CommandLineVerb::run);
    EXPECT_EQ(dashed.files.size(), 2U);
    EXPECT_EQ(dashed.files.back().path(), "/home/me/--help");
}

}  // namespace
}  // namespace stowpocket
