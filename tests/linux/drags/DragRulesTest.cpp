// SPDX-License-Identifier: MIT
#include "platform/linux/drags/DirectSaves.h"
#include "platform/linux/drags/DragWatching.h"
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
    for (const auto& [proposed, name] : std::vector<std::pair<std::string_view, std::string_view>>{
             {"folder/", "folder"}, {"../x", "x"}, {"/etc/passwd", "passwd"}, {"\xFF.txt", "\xFF.txt"}})
        EXPECT_EQ(directSaveName(proposed), name) << proposed;
    for (const std::string_view refused : {""sv, "///"sv, ".."sv, "a/."sv, "a\0b"sv, "\0"sv})
        EXPECT_EQ(directSaveName(refused), std::nullopt) << refused;
    EXPECT_TRUE(directSaveName(std::string(255, 'x')));
    EXPECT_FALSE(directSaveName(std::string(256, 'x')));
}

TEST(DirectSaveProgressTest, succeedsOnlyOnTheLetterForSuccess) {
    EXPECT_EQ(DirectSaveProgress().replied("S", Arrival::content), Step::collect);
    EXPECT_EQ(DirectSaveProgress().replied("S", Arrival::nothing), Step::fail);
    for (const std::optional<std::string_view> reply :
         {std::optional<std::string_view>("F"), {"E"}, {""}, {"SS"}, {}})
        EXPECT_EQ(DirectSaveProgress().replied(reply, Arrival::content), Step::fail) << reply.value_or("none");
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

using Watch = DragWatching::Step;
using Owner = DragWatching::Owner;

constexpr std::uint32_t uriList = 7;
constexpr std::uint32_t directSave = 8;
constexpr std::uint32_t text = 9;

DragWatching asked() {
    DragWatching watching;
    EXPECT_EQ(watching.ownerChanged(Owner::another, true), Watch::ask);
    return watching;
}

TEST(DragOffer, isJudgedByTypesAndUnknownWhereNoneAreTold) {
    const auto judge = [](std::optional<std::vector<std::uint32_t>> targets, std::vector<std::uint32_t> list = {}) {
        return judgeDrag(targets, list, uriList, directSave);
    };
    EXPECT_EQ(judge({{text, uriList}}), DragOffer::files);
    EXPECT_EQ(judge({{directSave, uriList}}), DragOffer::files);
    EXPECT_EQ(judge({{text, directSave}}), DragOffer::promise);
    EXPECT_EQ(judge({{text}}), DragOffer::nothing);
    EXPECT_EQ(judge(std::vector<std::uint32_t>(), {uriList}), DragOffer::nothing);
    EXPECT_EQ(judge(std::nullopt, {text, uriList}), DragOffer::files);
    EXPECT_EQ(judge(std::nullopt, {text}), DragOffer::nothing);
    EXPECT_EQ(judge(std::nullopt), DragOffer::unknown);
}

TEST(DragWatching, followsADragToItsEnd) {
    DragWatching watching = asked();
    EXPECT_EQ(watching.answered(DragOffer::files), Watch::announce);
    EXPECT_EQ(watching.buttonsSeen(true), Watch::none);
    EXPECT_EQ(watching.buttonsSeen(false), Watch::settle);
    EXPECT_EQ(watching.buttonsSeen(false), Watch::none);
    EXPECT_EQ(watching.settled(), Watch::end);
    EXPECT_EQ(watching.ending(), DragEnd::released);
    EXPECT_EQ(watching.settled(), Watch::none);

    EXPECT_EQ(watching.ownerChanged(Owner::nobody, false), Watch::end) << "a late drop will not come any more";
    EXPECT_EQ(watching.ending(), DragEnd::sourceGone);
    EXPECT_EQ(watching.ownerChanged(Owner::nobody, false), Watch::none);
}

TEST(DragWatching, restsOnDragsThatAreNotForTheShelf) {
    DragWatching watching = asked();
    EXPECT_EQ(watching.answered(DragOffer::nothing), Watch::rest);
    EXPECT_EQ(watching.buttonsSeen(false), Watch::none);
    EXPECT_EQ(watching.ownerChanged(Owner::ourselves, true), Watch::none);
    EXPECT_EQ(watching.answered(DragOffer::files), Watch::none);
    EXPECT_EQ(watching.ownerChanged(Owner::another, false), Watch::none);

    DragWatching silent = asked();
    EXPECT_EQ(silent.buttonsSeen(false), Watch::settle);
    EXPECT_EQ(silent.answered(DragOffer::files), Watch::none);
    EXPECT_EQ(silent.settled(), Watch::rest);
}

TEST(DragWatching, endsOnceWhereADragFollowsAtOnce) {
    DragWatching watching = asked();
    EXPECT_EQ(watching.answered(DragOffer::files), Watch::announce);
    EXPECT_EQ(watching.buttonsSeen(false), Watch::settle);
    EXPECT_EQ(watching.ownerChanged(Owner::another, true), Watch::ask);
    EXPECT_EQ(watching.settled(), Watch::none);
    EXPECT_EQ(watching.answered(DragOffer::promise), Watch::announce);
    EXPECT_EQ(watching.ownerChanged(Owner::another, true), Watch::ask);
    EXPECT_EQ(watching.answered(DragOffer::nothing), Watch::end);
}

TEST(WaylandDrag, endsWithTheFirstSignOfItsEndOrSomeTimeAfterTheLastOfItsLife) {
    using namespace std::chrono_literals;
    constexpr WaylandDrag::Pointer place{640, 450};
    WaylandDrag drag;
    EXPECT_FALSE(drag.isOn(0s, {}));
    const auto begin = [&drag](WaylandDrag::Types types) { drag.begin(100s, place, types); };

    begin(WaylandDrag::Types::toldAtTimes);
    EXPECT_FALSE(drag.isOn(101s, {641, 450})) << "the server sees the pointer move";
    drag.answered(false, 101s);
    EXPECT_TRUE(drag.isOn(109s, place));
    EXPECT_FALSE(drag.isOn(111s, place) || drag.isWorthAsking(109s));
    drag.seen(DragSign::entered, 105s);
    EXPECT_TRUE(drag.isOn(500s, place));
    drag.seen(DragSign::left, 105s);
    EXPECT_TRUE(drag.isOn(107s, place));
    EXPECT_FALSE(drag.isOn(108s, place));
    drag.seen(DragSign::entered, 108s);
    drag.seen(DragSign::dropped, 109s);
    EXPECT_FALSE(drag.isOn(109s, place));

    begin(WaylandDrag::Types::toldThroughout);
    EXPECT_FALSE(drag.isWorthAsking(100s));
    EXPECT_TRUE(drag.isWorthAsking(101s));
    drag.answered(true, 108s);
    EXPECT_FALSE(drag.isWorthAsking(108s));
    drag.seen(DragSign::left, 108s);
    EXPECT_TRUE(drag.isOn(117s, place));
    drag.answered(false, 117s);
    EXPECT_FALSE(drag.isOn(117s, place));
}

}  // namespace
}  // namespace stowpocket
