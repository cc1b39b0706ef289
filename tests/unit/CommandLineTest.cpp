// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"

#include "cli/CommandText.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using namespace std::string_literals;
using Words = std::vector<std::string>;

TEST(CommandLineTest, readsVerbsOptionsAndFiles) {
    const std::vector<std::pair<Words, Command>> table{
        {{}, {Verb::open, false, {}}},
        {{"a.txt", "b"}, {Verb::open, false, {"a.txt", "b"}}},
        {{"./add"}, {Verb::open, false, {"./add"}}},
        {{"--", "add"}, {Verb::open, false, {"add"}}},
        {{"a", "list"}, {Verb::open, false, {"a", "list"}}},
        {{"add", "add"}, {Verb::add, false, {"add"}}},
        {{"add", "--", "--json", "--", "-"}, {Verb::add, false, {"--json", "--", "-"}}},
        {{"add", "-"}, {Verb::add, false, {"-"}}},
        {{"add", ""}, {Verb::add, false, {""}}},
        {{"list", "--json"}, {Verb::list, true, {}}},
        {{"remove", "a", "--", "-b"}, {Verb::remove, false, {"a", "-b"}}},
        {{"quick-drop"}, {Verb::quickDrop, false, {}}},
        {{"toggle", "--"}, {Verb::toggle, false, {}}},
        {{"add", "a", "--help"}, {Verb::help, false, {}}},
        {{"--version", "--nonsense"}, {Verb::version, false, {}}},
    };
    for (const auto& [arguments, expected] : table) {
        const auto parsed = parsedCommandLine(arguments);
        const Command* const command = std::get_if<Command>(&parsed);
        EXPECT_TRUE(command != nullptr && *command == expected) << testing::PrintToString(arguments);
    }
}

TEST(CommandLineTest, saysWhatIsWrong) {
    const std::vector<std::pair<Words, std::string>> table{
        {{"--json"}, "unknown option --json"},
        {{"add"}, "add: which files?"},
        {{"add", "--json", "a"}, "add: unknown option --json"},
        {{"remove", "--"}, "remove: which files?"},
        {{"clear", "a"}, "clear: takes no files"},
        {{"list", "--json=1"}, "list: unknown option --json=1"},
        {{"-\x1B[2J"}, "unknown option $'-\\x1b[2J'"},
    };
    for (const auto& [arguments, message] : table) {
        const auto parsed = parsedCommandLine(arguments);
        const UsageError* const error = std::get_if<UsageError>(&parsed);
        ASSERT_NE(error, nullptr) << message;
        EXPECT_EQ(error->message, message);
    }
}

TEST(CommandTextTest, namesStayOnOneHarmlessLine) {
    EXPECT_EQ(printable("/a b/'q'\\\xC3\xBC\xF0\x9F\x98\x80"), "/a b/'q'\\\xC3\xBC\xF0\x9F\x98\x80");
    EXPECT_EQ(printable("/a\nb\tc'\\"), R"($'/a\nb\tc\'\\')");
    EXPECT_EQ(printable("/\x1B]0;x\x07\x7F"), R"($'/\x1b]0;x\x07\x7f')");
    EXPECT_EQ(printable("/\xFF\xC3\xBC"), R"($'/\xff\xc3\xbc')") << "no UTF-8";
    EXPECT_EQ(printable("/\xC2\x9B"), R"($'/\xc2\x9b')") << "a control character of two bytes";
    EXPECT_EQ(printable("/\xC2\xA0"), "/\xC2\xA0");
}

TEST(CommandTextTest, listsForPeopleAndForPrograms) {
    const std::vector<StagedFile> files{{"ID-1", *FileURL::fromPath("/a \"b\"\\\n"), true, 5},
                                        {"ID-2", *FileURL::fromPath("/\xFF"), false, 0}};
    EXPECT_EQ(listText(files), "$'/a \"b\"\\\\\\n'\n$'/\\xff'\n");
    EXPECT_EQ(listJSON(files), R"([
  {"id": "ID-1", "url": "file:///a%20%22b%22%5C%0A", "path": "/a \"b\"\\\u000a", "available": true, "size": 5},
  {"id": "ID-2", "url": "file:///%FF", "path": null, "available": false, "size": 0}
]
)");
    EXPECT_EQ(listText({}), "");
    EXPECT_EQ(listJSON({}), "[]\n");
}

}  // namespace
}  // namespace stowpocket
