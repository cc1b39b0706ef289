// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"
#include "cli/CommandRunner.h"
#include "cli/CommandText.h"

#include <gtest/gtest.h>

#include <map>

namespace stowpocket {
namespace {

using namespace std::string_literals;
using Words = std::vector<std::string>;

std::variant<Command, UsageError> parsed(const Words& arguments) {
    return parsedCommandLine(arguments, [](const std::string& argument) { return argument.ends_with(".txt"); });
}

TEST(CommandLineTest, readsVerbsOptionsAndFiles) {
    const std::vector<std::pair<Words, Command>> table{
        {{}, {Verb::start, false, {}}},
        {{"./add"}, {Verb::start, false, {"./add"}}},
        {{"--", "add"}, {Verb::start, false, {"add"}}},
        {{"a.txt", "list"}, {Verb::start, false, {"a.txt", "list"}}},
        {{"bogus/", "file:bogus"}, {Verb::start, false, {"bogus/", "file:bogus"}}},
        {{"add", "--", "--json", "--", "-"}, {Verb::add, false, {"--json", "--", "-"}}},
        {{"list", "-0", "--format", "--"}, {Verb::list, false, {}, "--", '\0'}},
        {{"list", "--format="}, {Verb::list, false, {}, ""}},
        {{"remove", "a", "--", "-b"}, {Verb::remove, false, {"a", "-b"}}},
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
        {{"add"}, "add: which files?"},
        {{"add", "--json", "a"}, "add: unknown option --json"},
        {{"remove", "--"}, "remove: which files?"},
        {{"clear", "a"}, "clear: takes no files"},
        {{"list", "--format"}, "list: --format needs a format"},
        {{"list", "--format", "%p%"}, "list: the format %p% is not understood"},
        {{"list", "--format=\\x"}, R"(list: the format \x is not understood)"},
        {{"list", "-0", "--json"}, "list: --json goes with no other option"},
        {{"add", "-0", "a"}, "add: unknown option -0"},
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
    EXPECT_EQ(printable("/\xFF\xC3\xBC"), R"($'/\xff\xc3\xbc')") << "no UTF-8";
    EXPECT_EQ(printable("/\xC2\xA0"), "/\xC2\xA0");
    for (const std::string deceptive : {"\xD8\x9C", "\xE2\x80\x8E", "\xE2\x80\xAE", "\xE2\x81\xA6", "\xE2\x81\xA9"})
        EXPECT_TRUE(printable(deceptive).starts_with("$'\\x")) << printable(deceptive);
    for (const std::string harmless : {"\xD8\x9B", "\xE2\x80\x8D", "\xE2\x80\xAF", "\xE2\x81\xAA"})
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

TEST(CommandPathTest, followsLinksOnlyWhereTheKernelDoesBeforeGoingUp) {
    const LinkTarget links = [](const std::string& path) -> std::optional<std::string> {
        static const std::map<std::string, std::string> targets{
            {"/home/u/link", "/mnt/disk/deep"}, {"/top", "/"}, {"/l", "/x"}};
        const auto found = targets.find(path);
        return found == targets.end() ? std::nullopt : std::optional(found->second);
    };
    const std::vector<std::pair<std::string, std::string>> table{
        {"/a//b/./c/", "/a/b/c"},
        {"../../../..", "/"},
        {"link", "/home/u/link"},
        {"link/../file", "/mnt/disk/file"},
        {"link/sub/../../file", "/mnt/disk/file"},
        {"/top/../a", "/a"},
        {"/l/../a", "/a"},
        {"file:///a%20b/../c", "/c"},
        {"FILE://desk/a%20b/", "/a b"},
    };
    for (const auto& [argument, path] : table)
        EXPECT_EQ(fileOfArgument(argument, "/home/u", "desk", links), FileURL::fromPath(path)) << argument;
    for (const std::string refused : {"", "file:a", "file://elsewhere/a", "file:///a%2Fb"})
        EXPECT_FALSE(fileOfArgument(refused, "/home/u", "desk", links)) << refused;
    EXPECT_FALSE(fileOfArgument("a", "", "desk", links)) << "the folder is gone";
}

/// A shelf that notes what it is asked for.
struct FakeRunningShelf : RunningShelf {
    [[nodiscard]] bool reach(StartProgram start) override {
        isRunning = isRunning || start == StartProgram::ifNeeded;
        return isRunning;
    }
    [[nodiscard]] std::optional<std::vector<AddOutcome>> add(std::span<const FileURL> files) override {
        requests.push_back(files.size());
        return answers ? std::optional(std::vector(files.size(), addOutcome)) : std::nullopt;
    }
    [[nodiscard]] std::optional<std::vector<StagedFile>> list() override { return onShelf; }
    [[nodiscard]] std::optional<std::vector<RemoveOutcome>> remove(std::span<const std::string> names) override {
        removed.assign(names.begin(), names.end());
        return std::vector(names.size(), removeOutcome);
    }
    [[nodiscard]] std::optional<std::vector<UseOutcome>> use(ItemUse, std::span<const std::string> names) override {
        used.assign(names.begin(), names.end());
        std::vector<UseOutcome> outcomes(names.size(), UseOutcome::missing);
        outcomes.front() = UseOutcome::done;
        return outcomes;
    }
    [[nodiscard]] bool perform(ShelfAction action) override {
        actions.push_back(action);
        return answers;
    }
    [[nodiscard]] std::string problem() const override { return isRunning ? "no answer" : "not running"; }
    [[nodiscard]] bool runsElsewhere() const override { return isElsewhere; }
    [[nodiscard]] std::string saveProblem() const override { return diskProblem; }

    std::vector<StagedFile> onShelf;
    std::vector<std::string> used;
    std::vector<std::string> removed;
    AddOutcome addOutcome = AddOutcome::added;
    RemoveOutcome removeOutcome = RemoveOutcome::removed;
    std::string diskProblem;
    bool isElsewhere = false;
    bool isRunning = false;
    bool answers = true;
    std::vector<std::size_t> requests;
    std::vector<ShelfAction> actions;
};

struct CommandRunnerTest : testing::Test {
    CommandResult run(Verb verb, std::vector<std::string> operands = {}) {
        return runCommand({verb, false, std::move(operands)}, environment, shelf);
    }

    FakeRunningShelf shelf;
    CommandEnvironment environment{
        .workingDirectory = "/home/u",
        .localHost = "desk",
        .version = "1.2",
        .linkTarget = [](const std::string&) { return std::nullopt; },
        .fileExists = [](const FileURL& file) { return file.lastPathComponent() != "gone"; }};
};

TEST_F(CommandRunnerTest, onlyWhatIsOfUseAfterAStartStartsTheProgram) {
    for (const Verb verb : {Verb::list, Verb::clear})
        EXPECT_EQ(run(verb).code, ExitCode::unreachable);
    EXPECT_EQ(run(Verb::add, {"gone"}).code, ExitCode::partlyDone);
    EXPECT_FALSE(shelf.isRunning) << "nothing to add, nothing to start";
    EXPECT_EQ(run(Verb::start).code, ExitCode::done);
    EXPECT_EQ(run(Verb::clear).code, ExitCode::done);
    EXPECT_EQ(shelf.actions, (std::vector{ShelfAction::show, ShelfAction::clear}));

    shelf.answers = false;
    const CommandResult silent = run(Verb::add, {"a", "gone"});
    EXPECT_EQ(silent.code, ExitCode::unreachable) << "the worse of two troubles";
    EXPECT_TRUE(silent.err.ends_with("stowpocket: no answer\n")) << silent.err;
    shelf.isElsewhere = true;
    EXPECT_EQ(run(Verb::toggle).code, ExitCode::runsElsewhere);
}

TEST_F(CommandRunnerTest, copiesAndOpensAllOfTheShelfOrWhatIsNamed) {
    shelf.isRunning = true;
    EXPECT_EQ(run(Verb::copy).code, ExitCode::done) << "an empty shelf";
    shelf.onShelf = {{"ID", *FileURL::fromPath("/a"), true, 1}, {"ID2", *FileURL::fromPath("/b"), true, 1}};
    const CommandResult all = run(Verb::copy);
    EXPECT_EQ(all.out + all.err, "copied: /a\nstowpocket: /b: the file is missing\n");
    EXPECT_EQ(shelf.used, (std::vector<std::string>{"ID", "ID2"}));
    const CommandResult one = run(Verb::open, {"x", "file:nothing"});
    EXPECT_EQ(one.out, "opened: x\n");
    EXPECT_EQ(shelf.used, std::vector<std::string>{"file:///home/u/x"});
}

TEST_F(CommandRunnerTest, tellsOfEachFileWhatBecameOfIt) {
    shelf.addOutcome = AddOutcome::alreadyOnShelf;
    shelf.removeOutcome = RemoveOutcome::notOnShelf;
    const CommandResult added = run(Verb::add, {"a", "file://elsewhere/b"});
    EXPECT_EQ(added.out, "already on the shelf: /home/u/a\n");
    EXPECT_EQ(added.err, "stowpocket: file://elsewhere/b: not a file of this machine\n");
    EXPECT_EQ(run(Verb::remove, {"a"}).err, "stowpocket: a: not on the shelf\n");
}

TEST_F(CommandRunnerTest, saysWhatIsDoneButNotSaved) {
    shelf.diskProblem = "the disk is full";
    const CommandResult added = run(Verb::add, {"a", "gone"});
    EXPECT_TRUE(added.err.ends_with("stowpocket: not saved yet: the disk is full\n")) << added.err;
    EXPECT_EQ(run(Verb::clear).code, ExitCode::notSaved);
}

TEST_F(CommandRunnerTest, removeTakesAnIdForTheNameOfAFileOnlyBehindAPath) {
    const std::string id = "0F8FAD5B-D9CB-469F-A165-70867728950E";
    shelf.isRunning = true;
    EXPECT_EQ(run(Verb::remove, {"gone", id, "./" + id, "file:x"}).code, ExitCode::partlyDone);
    EXPECT_EQ(shelf.removed, (std::vector<std::string>{"file:///home/u/gone", id, "file:///home/u/" + id}));
}

TEST_F(CommandRunnerTest, longListsAreSentInParts) {
    std::vector<std::string> names;
    for (std::size_t number = 0; number < 2 * maxFilesPerRequest + 1; ++number)
        names.push_back(std::to_string(number));
    const CommandResult result = run(Verb::add, names);
    EXPECT_EQ(shelf.requests, (std::vector{maxFilesPerRequest, maxFilesPerRequest, std::size_t{1}}));
    EXPECT_TRUE(result.out.ends_with("added: /home/u/" + names.back() + '\n'));
}

}  // namespace
}  // namespace stowpocket
