// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"

#include "cli/CommandText.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using namespace std::string_literals;
using Words = std::vector<std::string>;

std::variant<Command, UsageError> parsed(const Words& arguments) {
    return parsedCommandLine(arguments, [](const std::string& argument) { return argument.ends_with(".txt"); });
}

TEST(CommandLineTest, readsVerbsOptionsAndFiles) {
    const std::vector<std::pair<Words, Command>> table{
        {{}, {Verb::open, false, {}}},
        {{"a.txt", "b"}, {Verb::open, false, {"a.txt", "b"}}},
        {{"./add"}, {Verb::open, false, {"./add"}}},
        {{"--", "add"}, {Verb::open, false, {"add"}}},
        {{"a.txt", "list"}, {Verb::open, false, {"a.txt", "list"}}},
        {{"--", "bogus"}, {Verb::open, false, {"bogus"}}},
        {{"bogus/", "file:bogus"}, {Verb::open, false, {"bogus/", "file:bogus"}}},
        {{"add", "add"}, {Verb::add, false, {"add"}}},
        {{"add", "--", "--json", "--", "-"}, {Verb::add, false, {"--json", "--", "-"}}},
        {{"add", "-"}, {Verb::add, false, {"-"}}},
        {{"add", ""}, {Verb::add, false, {""}}},
        {{"list", "--json"}, {Verb::list, true, {}}},
        {{"list", "-0", "--format", "--"}, {Verb::list, false, {}, "--", '\0'}},
        {{"list", "--format="}, {Verb::list, false, {}, ""}},
        {{"remove", "a", "--", "-b"}, {Verb::remove, false, {"a", "-b"}}},
        {{"quick-drop"}, {Verb::quickDrop, false, {}}},
        {{"toggle", "--"}, {Verb::toggle, false, {}}},
        {{"add", "a", "--help"}, {Verb::help, false, {}}},
        {{"--version", "--nonsense"}, {Verb::version, false, {}}},
    };
    for (const auto& [arguments, expected] : table) {
        const auto result = parsed(arguments);
        const Command* const command = std::get_if<Command>(&result);
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
        {{"list", "--format"}, "list: --format needs a format"},
        {{"list", "--format", "%p%"}, "list: the format %p% is not understood"},
        {{"list", "--format=\\x"}, R"(list: the format \x is not understood)"},
        {{"list", "-0", "--json"}, "list: --json goes with no other option"},
        {{"add", "-0", "a"}, "add: unknown option -0"},
        {{"lst"}, "lst is neither a verb nor a file; the nearest verb is list"},
        {{"tog"}, "tog is neither a verb nor a file; the nearest verb is toggle"},
        {{"quickdrop", "a.txt"}, "quickdrop is neither a verb nor a file; the nearest verb is quick-drop"},
        {{"Remove\n"}, "$'Remove\\n' is neither a verb nor a file; the nearest verb is remove"},
        {{"-\x1B[2J"}, "unknown option $'-\\x1b[2J'"},
    };
    for (const auto& [arguments, message] : table) {
        const auto result = parsed(arguments);
        const UsageError* const error = std::get_if<UsageError>(&result);
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
    // U+061C, the first and the last of each range, and their neighbours.
    for (const std::string deceptive :
         {"\xD8\x9C", "\xE2\x80\x8E", "\xE2\x80\x8F", "\xE2\x80\xA8", "\xE2\x80\xAE", "\xE2\x81\xA6", "\xE2\x81\xA9"})
        EXPECT_TRUE(printable(deceptive).starts_with("$'\\x")) << printable(deceptive);
    for (const std::string harmless :
         {"\xD8\x9B", "\xE2\x80\x8D", "\xE2\x80\x90", "\xE2\x80\xA7", "\xE2\x80\xAF", "\xE2\x81\xA5", "\xE2\x81\xAA"})
        EXPECT_EQ(printable(harmless), harmless);
}

TEST(CommandTextTest, listsForPeopleAndForPrograms) {
    const std::vector<StagedFile> files{{"ID-1", *FileURL::fromPath("/a \"b\"\\\n"), true, 5},
                                        {"ID-3", *FileURL::fromPath("/\xC2\x9B\xE2\x80\xAE"), true, 1},
                                        {"ID-2", *FileURL::fromPath("/\xFF"), false, 0}};
    EXPECT_EQ(listText(files, "%p", '\n'), "$'/a \"b\"\\\\\\n'\n$'/\\xc2\\x9b\\xe2\\x80\\xae'\n$'/\\xff'\n");
    EXPECT_EQ(listText(files, "%n", '\0'), "a \"b\"\\\n\0\xC2\x9B\xE2\x80\xAE\0\xFF\0"s);
    EXPECT_EQ(listText({&files.back(), 1}, R"(%i\t%s\0%u\n%%\\n%n)", '\n'), "ID-2\t0\0file:///%FF\n%\\n$'\\xff'\n"s);
    EXPECT_EQ(listJSON(files), R"([
  {"id": "ID-1", "url": "file:///a%20%22b%22%5C%0A", "path": "/a \"b\"\\\u000a", "available": true, "size": 5},
  {"id": "ID-3", "url": "file:///%C2%9B%E2%80%AE", "path": "/\u009b\u202e", "available": true, "size": 1},
  {"id": "ID-2", "url": "file:///%FF", "path": null, "available": false, "size": 0}
]
)");
    EXPECT_EQ(listJSON({}), "[]\n");
}

}  // namespace
}  // namespace stowpocket
