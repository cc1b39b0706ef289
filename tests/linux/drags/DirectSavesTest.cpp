// SPDX-License-Identifier: MIT
#include "platform/linux/drags/DirectSaves.h"
#include "linux/drags/FakeDragSource.h"
#include "platform/qt/QtDispatch.h"
#include "support/ComesTrue.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <future>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

class DirectSavesTest : public testing::Test {
protected:
    DirectSavesTest() { source.propose("../../a\xFF\n"); }

    template <class Condition>
    bool waitFor(Condition condition) {
        return comesTrue([this] { source.work(); }, condition);
    }
    void receive(DirectSaves& from) {
        from.receiver()->receivePromisedFiles(
            spool, [this](const std::optional<FileURL>& file) { answers.push_back(file); });
    }
    static std::string pathOf(const std::string& url) {
        return FileURL::parse(url, QSysInfo::machineHostName().toStdString()).value().path();
    }
    /// What a source does that was given this URL.
    static void write(const std::string& url) { std::ofstream(pathOf(url)) << "promised"; }

    std::unique_ptr<X11Connection> connection = X11Connection::ofApplication();
    QtDispatch dispatch;
    FakeDragSource source;
    TemporaryFolder folder;
    FileURL spool = *FileURL::fromPath(folder.path());
    std::vector<std::optional<FileURL>> answers;
    DirectSaves saves{*connection, dispatch};
};

TEST_F(DirectSavesTest, deliversEveryFileThatArrivedOnceThereIsContent) {
    std::ofstream late;
    source.replyWith("S", [&](const std::string& url) { late.open(pathOf(url)); });
    receive(saves);
    ASSERT_TRUE(waitFor([&] { return late.is_open(); }));
    source.propose("../../a\xFF\n");
    source.replyWith("S", [](const std::string& url) {
        write(url);
        write(url.substr(0, url.rfind('/')) + "/second");
    });
    receive(saves);
    ASSERT_TRUE(waitFor([this] { return answers.size() == 2; }));
    ASSERT_TRUE(answers[0] && answers[1]);
    EXPECT_EQ(answers[0]->lastPathComponent(), "a\xFF\n");
    EXPECT_EQ(answers[1]->lastPathComponent(), "second");
    EXPECT_EQ(answers[0]->parent().parent(), spool);
    EXPECT_TRUE(fs::exists(answers[0]->path()));
    late << "late";
    late.close();
    ASSERT_TRUE(waitFor([this] { return answers.size() == 3; }));
    EXPECT_EQ(fs::file_size(answers[2].value().path()), 4U);
}

TEST_F(DirectSavesTest, givesUpASourceThatVanishesAndAnswersWhatIsOnItsWayWhenItEnds) {
    receive(saves);
    receive(saves);
    ASSERT_TRUE(waitFor([this] { return source.wasSaveWanted(); }));
    source.vanish();
    ASSERT_TRUE(waitFor([this] { return answers.size() == 2; }));
    receive(saves);
    EXPECT_EQ(answers, std::vector<std::optional<FileURL>>(3)) << "at once where there is no source";
    EXPECT_TRUE(fs::is_empty(spool.path()));
    {
        FakeDragSource silent;
        silent.propose("a");
        DirectSaves ending(*connection, dispatch);
        receive(ending);
        EXPECT_EQ(answers.size(), 3U);
    }
    EXPECT_EQ(answers, std::vector<std::optional<FileURL>>(4));
}

TEST_F(DirectSavesTest, areOneFileOrOneFolderOfADrop) {
    for (const bool isAlone : {true, false}) {
        source.replyWith("S", [isAlone](const std::string& url) {
            write(url);
            if (!isAlone)
                write(url + "2");
        });
        const std::shared_ptr<ItemProvider> provider = saves.itemProvider();
        EXPECT_FALSE(provider->hasItemConformingTo(uniformType::fileURL));
        std::promise<std::string> seen;
        auto file = seen.get_future();
        std::optional<FileURL> thing;
        provider->loadFileRepresentation(provider->registeredTypeIdentifiers().front(), [&](const auto& written) {
            thing = written;
            seen.set_value(written && fs::exists(written->path()) ? "there" : "not there");
        });
        ASSERT_TRUE(waitFor([&] { return file.wait_for(0s) == std::future_status::ready; }));
        EXPECT_EQ(file.get(), "there");
        EXPECT_EQ(thing->lastPathComponent().starts_with("Files "), !isAlone);
        EXPECT_TRUE(waitFor([&] { return !fs::exists(thing->path()); }));
    }
}

}  // namespace
}  // namespace stowpocket
