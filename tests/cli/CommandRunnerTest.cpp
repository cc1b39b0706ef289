// SPDX-License-Identifier: MIT
#include "cli/CommandRunner.h"

#include "services/RunningShelf.h"

#include <gtest/gtest.h>

#include <map>

namespace stowpocket {
namespace {

TEST(CommandPathTest, followsLinksOnlyWhereTheKernelDoesBeforeGoingUp) {
    const LinkTarget links = [](const std::string& path) -> std::optional<std::string> {
        static const std::map<std::string, std::string> targets{
            {"/home/u/link", "/mnt/disk/deep"}, {"/top", "/"}, {"/l", "/x"}};
        const auto found = targets.find(path);
        return found == targets.end() ? std::nullopt : std::optional(found->second);
    };
    const std::vector<std::pair<std::string, std::string>> table{
        {"a", "/home/u/a"},
        {"./add", "/home/u/add"},
        {"/a//b/./c/", "/a/b/c"},
        {"../../../..", "/"},
        {".", "/home/u"},
        {"x/../y", "/home/u/y"},
        {"link/file", "/home/u/link/file"},
        {"link", "/home/u/link"},
        {"link/../file", "/mnt/disk/file"},
        {"link/sub/../../file", "/mnt/disk/file"},
        {"/top/../a", "/a"},
        {"/l/../a", "/a"},
        {"...", "/home/u/..."},
        {"file:///a%20b/../c", "/c"},
        {"FILE://desk/a%20b/", "/a b"},
    };
    for (const auto& [argument, path] : table)
        EXPECT_EQ(fileOfArgument(argument, "/home/u", "desk", links), FileURL::fromPath(path)) << argument;
    for (const std::string refused : {"", "file:a", "file://elsewhere/a", "file:///a%2Fb"})
        EXPECT_FALSE(fileOfArgument(refused, "/home/u", "desk", links)) << refused;
    EXPECT_FALSE(fileOfArgument("a", "", "desk", links)) << "the folder is gone";
    EXPECT_EQ(fileOfArgument("/a", "", "desk", links)->path(), "/a");
}

/// A shelf that notes what it is asked for.
struct FakeRunningShelf : RunningShelf {
    [[nodiscard]] bool reach(StartProgram start) override {
        isRunning = isRunning || start == StartProgram::ifNeeded;
        return isRunning;
    }
    [[nodiscard]] std::optional<std::vector<AddOutcome>> add(std::span<const FileURL> files) override {
        requests.push_back(files.size());
        return answers ? std::optional(std::vector(files.size(), AddOutcome::added)) : std::nullopt;
    }
    [[nodiscard]] std::optional<std::vector<StagedFile>> list() override { return std::vector<StagedFile>(); }
    [[nodiscard]] std::optional<std::vector<RemoveOutcome>> remove(std::span<const std::string> names) override {
        removed.assign(names.begin(), names.end());
        return std::vector(names.size(), RemoveOutcome::removed);
    }
    [[nodiscard]] bool perform(ShelfAction action) override {
        actions.push_back(action);
        return answers;
    }
    [[nodiscard]] std::string problem() const override { return isRunning ? "no answer" : "not running"; }
    [[nodiscard]] bool runsElsewhere() const override { return isElsewhere; }
    [[nodiscard]] std::string saveProblem() const override { return diskProblem; }

    std::vector<std::string> removed;
    std::string diskProblem;
    bool isElsewhere = false;
    bool isRunning = false;
    bool answers = true;
    std::vector<std::size_t> requests;
    std::vector<ShelfAction> actions;
};

class CommandRunnerTest : public testing::Test {
protected:
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
    EXPECT_EQ(run(Verb::open).code, ExitCode::done);
    EXPECT_EQ(run(Verb::clear).code, ExitCode::done);
    EXPECT_EQ(shelf.actions, (std::vector{ShelfAction::show, ShelfAction::clear}));

    shelf.answers = false;
    const CommandResult silent = run(Verb::add, {"a", "gone"});
    EXPECT_EQ(silent.code, ExitCode::unreachable) << "the worse of two troubles";
    EXPECT_TRUE(silent.err.ends_with("stowpocket: no answer\n")) << silent.err;
    EXPECT_EQ(run(Verb::toggle).code, ExitCode::unreachable);
    shelf.isElsewhere = true;
    EXPECT_EQ(run(Verb::toggle).code, ExitCode::runsElsewhere);
}

TEST_F(CommandRunnerTest, saysWhatIsDoneButNotSaved) {
    shelf.diskProblem = "the disk is full";
    const CommandResult added = run(Verb::add, {"a", "gone"});
    EXPECT_EQ(added.code, ExitCode::notSaved);
    EXPECT_EQ(added.out, "added: /home/u/a\n");
    EXPECT_TRUE(added.err.ends_with("stowpocket: not saved yet: the disk is full\n")) << added.err;
    EXPECT_EQ(run(Verb::remove, {"a"}).code, ExitCode::notSaved);
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
    EXPECT_EQ(result.code, ExitCode::done);
    EXPECT_EQ(shelf.requests, (std::vector{maxFilesPerRequest, maxFilesPerRequest, std::size_t{1}}));
    EXPECT_TRUE(result.out.ends_with("added: /home/u/" + names.back() + '\n'));
}

}  // namespace
}  // namespace stowpocket
