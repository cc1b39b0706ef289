// SPDX-License-Identifier: MIT
#include "platform/linux/drags/DirectSaves.h"

#include "platform/linux/drags/PromisedFiles.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace stowpocket {
namespace {

namespace fs = std::filesystem;
using Step = DirectSaveProgress::Step;
using Arrival = DirectSaveProgress::Arrival;

TEST(DirectSaveProgressTest, takesOnlyThePlainNameOfWhatIsProposed) {
    using namespace std::string_view_literals;
    const std::string longest(255, 'x');
    const std::vector<std::pair<std::string_view, std::optional<std::string>>> cases{
        {"a b.txt", "a b.txt"},    {"folder/", "folder"},    {"../x", "x"},
        {"/etc/passwd", "passwd"}, {"\xFF.txt", "\xFF.txt"}, {longest, longest},
        {"", std::nullopt},        {"///", std::nullopt},    {"..", std::nullopt},
        {"a/.", std::nullopt},     {"a\0b"sv, std::nullopt}, {std::string_view("\0", 1), std::nullopt},
    };
    for (const auto& [proposed, name] : cases)
        EXPECT_EQ(directSaveName(proposed), name) << proposed;
    EXPECT_EQ(directSaveName(std::string(300, 'x')), std::nullopt);
}

TEST(DirectSaveProgressTest, succeedsOnlyOnTheLetterForSuccess) {
    const std::vector<std::pair<std::optional<std::string_view>, Step>> cases{
        {"S", Step::collect}, {"F", Step::fail},  {"E", Step::fail},
        {"", Step::fail},     {"SS", Step::fail}, {std::nullopt, Step::fail}};
    for (const auto& [reply, step] : cases)
        EXPECT_EQ(DirectSaveProgress().replied(reply, Arrival::content), step) << reply.value_or("none");
    EXPECT_EQ(DirectSaveProgress().replied("S", Arrival::nothing), Step::fail);
}

TEST(DirectSaveProgressTest, waitsForASourceThatWritesAndEndsOnce) {
    DirectSaveProgress save;
    EXPECT_EQ(save.written(Arrival::content), Step::none) << "another file may follow";
    EXPECT_EQ(save.timeLimitReached(10, Arrival::content), Step::wait);
    EXPECT_EQ(save.timeLimitReached(20, Arrival::content), Step::wait);
    EXPECT_EQ(save.timeLimitReached(20, Arrival::content), Step::fail);
    EXPECT_EQ(save.timeLimitReached(30, Arrival::content), Step::none);
    for (const Arrival arrival : {Arrival::content, Arrival::emptyFiles})
        EXPECT_EQ(save.replied("S", arrival), Step::none);
    EXPECT_EQ(save.sourceGone(), Step::none);

    DirectSaveProgress abandoned;
    EXPECT_EQ(abandoned.sourceGone(), Step::fail);
    EXPECT_EQ(abandoned.replied("S", Arrival::content), Step::none);
    EXPECT_EQ(DirectSaveProgress().timeLimitReached(0, Arrival::nothing), Step::fail);
}

TEST(DirectSaveProgressTest, waitsForContentThatComesAfterTheSuccess) {
    const auto succeeded = [] {
        DirectSaveProgress save;
        EXPECT_EQ(save.replied("S", Arrival::emptyFiles), Step::wait);
        EXPECT_EQ(save.sourceGone(), Step::none);
        EXPECT_EQ(save.written(Arrival::emptyFiles), Step::none);
        return save;
    };
    EXPECT_EQ(succeeded().written(Arrival::content), Step::collect);
    EXPECT_EQ(succeeded().timeLimitReached(0, Arrival::emptyFiles), Step::fail) << "it stays empty";
    DirectSaveProgress unwatched = succeeded();
    EXPECT_EQ(unwatched.timeLimitReached(5, Arrival::content), Step::wait) << "it is being written";
    EXPECT_EQ(unwatched.timeLimitReached(5, Arrival::content), Step::collect);
}

TEST(DropFolder, isFreshPrivateAndListsWhatArrivedWithoutLinks) {
    const QTemporaryDir spool;
    const FileURL parent = *FileURL::fromPath(spool.path().toStdString());
    const auto folder = DropFolder::make(parent);
    const auto other = DropFolder::make(parent);
    ASSERT_TRUE(folder && other);
    EXPECT_NE(folder->url(), other->url());
    EXPECT_EQ(folder->url().parent(), parent);
    const fs::path place = folder->url().path();
    EXPECT_EQ(fs::status(place).permissions(), fs::perms::owner_all);

    std::ofstream(place / "b") << "";
    EXPECT_FALSE(folder->hasContent());
    std::ofstream(place / "b") << "12345";
    EXPECT_TRUE(folder->hasContent());
    fs::create_directory(place / "a");
    std::ofstream(place / "a" / "inside") << "123";
    fs::create_symlink("/etc/passwd", place / "link");
    EXPECT_EQ(folder->files(), (std::vector{folder->url().appending("a"), folder->url().appending("b")}));
    EXPECT_EQ(folder->size(), 8U);

    folder->discardIfEmpty();
    std::ofstream(other->url().appending("empty").path()) << "";
    other->discardIfEmpty();
    EXPECT_TRUE(fs::exists(place / "b"));
    EXPECT_FALSE(fs::exists(other->url().path()));
    EXPECT_FALSE(DropFolder::make(parent.appending("none")));
}

}  // namespace
}  // namespace stowpocket
