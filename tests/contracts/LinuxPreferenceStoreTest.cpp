// SPDX-License-Identifier: MIT
#include "platform/linux/storage/LinuxPreferenceStore.h"

#include "contracts/FullDisk.h"
#include "contracts/TemporaryFolder.h"
#include "fakes/FakeDispatch.h"
#include "platform/linux/storage/PropertyList.h"

#include <QString>
#include <QtGlobal>

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>

using namespace std::chrono_literals;

namespace stowpocket {
namespace {

const std::string fileName = "preferences.plist";

class LinuxPreferenceStoreTest : public testing::Test {
protected:
    LinuxPreferenceStoreTest() {
        warnings.clear();
        previous_ = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& message) {
            warnings.push_back(message.toStdString());
        });
    }
    ~LinuxPreferenceStoreTest() override { qInstallMessageHandler(previous_); }

    [[nodiscard]] std::unique_ptr<LinuxPreferenceStore> open() {
        return std::make_unique<LinuxPreferenceStore>(dispatch, folder.path(fileName));
    }
    [[nodiscard]] std::optional<PropertyValue> onDisk() const { return parsePropertyList(folder.read(fileName)); }
    [[nodiscard]] std::vector<std::string> setAside() const {
        std::vector<std::string> names = folder.names();
        std::erase_if(names, [](const std::string& name) { return !name.starts_with(fileName + ".damaged-"); });
        return names;
    }

    static inline std::vector<std::string> warnings;
    TemporaryFolder folder;
    FakeDispatch dispatch;

private:
    QtMessageHandler previous_;
};

PropertyValue dictionary(PropertyValue::Dictionary values) {
    return values;
}

TEST_F(LinuxPreferenceStoreTest, answersByTypeAndStoredValuesFirst) {
    const auto store = open();
    store->registerDefaults({{"capacity", 20}});
    EXPECT_EQ(store->integer("capacity"), 20);
    store->setValue("capacity", 50);
    EXPECT_EQ(store->integer("capacity"), 50);
    EXPECT_EQ(store->string("capacity"), "") << "of another type";
    store->removeValue("capacity");
    EXPECT_EQ(store->integer("capacity"), 20);
    EXPECT_EQ(store->value("absent"), std::nullopt);
}

TEST_F(LinuxPreferenceStoreTest, announcesChangesOnlyAndAfterTheyHold) {
    const auto store = open();
    std::vector<std::string> announced;
    const Subscription subscription = store->changed().connect(
        [&](const std::string& key) { announced.push_back(key + '=' + store->string(key)); });
    store->setValue("letter", "D");
    store->setValue("letter", "D");
    store->removeValue("letter");
    store->removeValue("letter");
    EXPECT_EQ(announced, (std::vector<std::string>{"letter=D", "letter="}));
}

TEST_F(LinuxPreferenceStoreTest, writesWithinATenthOfASecondAndOffTheMainThread) {
    const auto store = open();
    store->setValue("a", 1);
    dispatch.advance(30ms);
    store->setValue("b", 2);
    dispatch.advance(70ms);
    EXPECT_EQ(dispatch.backgroundCount(), 1u);
    EXPECT_FALSE(std::filesystem::exists(folder.path(fileName)));
    dispatch.runBackground();
    EXPECT_EQ(onDisk(), dictionary({{"a", 1}, {"b", 2}}));
    EXPECT_EQ(dispatch.queueLabels, std::vector<std::string>{"com.example.stowpocket.preferences"});

    store->removeValue("a");
    dispatch.advance(100ms);
    dispatch.runBackground();
    EXPECT_EQ(onDisk(), dictionary({{"b", 2}}));
    dispatch.advance(10s);
    EXPECT_EQ(dispatch.backgroundCount() + dispatch.scheduledCount(), 0u);
}

TEST_F(LinuxPreferenceStoreTest, endsWithEverythingOnTheDiskButTheDefaults) {
    auto store = open();
    store->registerDefaults({{"capacity", 20}});
    store->setValue("a", 1);
    dispatch.advance(100ms);
    store->setValue("a", 2);
    store.reset();
    EXPECT_EQ(onDisk(), dictionary({{"a", 2}}));
    dispatch.runBackground();
    EXPECT_EQ(onDisk(), dictionary({{"a", 2}})) << "not undone by an earlier write";
    EXPECT_EQ(open()->value("a"), PropertyValue(2));
    EXPECT_TRUE(warnings.empty());
}

TEST_F(LinuxPreferenceStoreTest, setsDamagedFilesAside) {
    const std::string whole = writePropertyList(dictionary({{"a", 1}}));
    const std::vector<std::string> damaged = {"", std::string("\0\xFF\x89rubbish", 10), whole.substr(0, 120),
                                              writePropertyList(PropertyValue::Array{1}), "bplist00"};
    for (const std::string& contents : damaged) {
        warnings.clear();
        const std::size_t before = setAside().size();
        folder.write(fileName, contents);
        const auto store = open();
        EXPECT_EQ(store->value("a"), std::nullopt);
        EXPECT_EQ(setAside().size(), before + 1) << "an earlier one was covered";
        EXPECT_EQ(warnings.size(), 1u);
        EXPECT_FALSE(std::filesystem::exists(folder.path(fileName)));
    }
    std::vector<std::string> kept;
    for (const std::string& name : setAside())
        kept.push_back(folder.read(name));
    EXPECT_TRUE(std::ranges::is_permutation(kept, damaged));
    folder.write(fileName, "<");
    std::filesystem::resize_file(folder.path(fileName), 100'000'000);
    static_cast<void>(open());
    EXPECT_EQ(setAside().size(), damaged.size() + 1) << "a huge one, unread";
}

TEST_F(LinuxPreferenceStoreTest, leavesWhatItCannotReadAloneUntilItIsGone) {
    const std::string path = folder.path(fileName);
    for (const bool isPipe : {true, false}) {
        if (isPipe)
            ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
        else
            std::filesystem::create_symlink(fileName, path);  // to itself
        warnings.clear();
        const auto store = open();
        store->setValue("a", 1);
        store->flush();
        EXPECT_FALSE(std::filesystem::is_regular_file(std::filesystem::symlink_status(path)));
        EXPECT_EQ(folder.names(), std::vector<std::string>{fileName});
        EXPECT_EQ(warnings.size(), 1u);
        std::filesystem::remove(path);
        store->setValue("a", 2);
        store->flush();
        EXPECT_EQ(onDisk(), dictionary({{"a", 2}}));
        std::filesystem::remove(path);
    }
}

TEST_F(LinuxPreferenceStoreTest, triesAgainAfterAFailureAndLogsItOnce) {
    const auto store = open();
    store->setValue("a", 1);
    store->flush();
    {
        const FullDisk full;
        store->setValue("a", 2);
        dispatch.advance(100ms);
        dispatch.runBackground();
        store->flush();
    }
    EXPECT_EQ(warnings.size(), 1u);
    EXPECT_EQ(onDisk(), dictionary({{"a", 1}}));
    store->flush();
    EXPECT_EQ(onDisk(), dictionary({{"a", 2}}));
}

}  // namespace
}  // namespace stowpocket
