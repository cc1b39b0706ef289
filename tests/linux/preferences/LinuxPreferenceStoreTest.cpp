// SPDX-License-Identifier: MIT
#include "platform/linux/preferences/LinuxPreferenceStore.h"
#include "fakes/FakeDispatch.h"
#include "platform/linux/preferences/PropertyList.h"
#include "support/ComesTrue.h"
#include "support/FullDisk.h"
#include "support/TemporaryFolder.h"

#include <QString>
#include <QtGlobal>

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <clocale>
#include <limits>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

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

TEST_F(LinuxPreferenceStoreTest, endsWithEverythingOnTheDiskButTheDefaults) {
    auto store = open();
    store->finish();
    EXPECT_TRUE(folder.names().empty()) << "there is nothing to save";
    store->registerDefaults({{"capacity", 20}});
    store->setValue("a", 1);
    dispatch.advance(100ms);
    EXPECT_TRUE(folder.names().empty()) << "not on the main thread";
    store->setValue("a", 2);
    store.reset();
    EXPECT_EQ(onDisk(), dictionary({{"a", 2}}));
    dispatch.runBackground();
    EXPECT_EQ(open()->value("a"), PropertyValue(2));
    EXPECT_TRUE(warnings.empty());
}

TEST_F(LinuxPreferenceStoreTest, keepsWhatOtherProgramsWriteMeanwhile) {
    folder.write(fileName, writePropertyList(dictionary({{"a", 1}, {"b", 1}, {"c", 1}})));
    const auto store = open();
    folder.write(fileName, writePropertyList(dictionary({{"a", 2}, {"b", 2}, {"foreign", 3}})));
    store->setValue("b", 4);
    store->finish();
    EXPECT_EQ(onDisk(), dictionary({{"a", 2}, {"b", 4}, {"foreign", 3}}));
    for (const bool isThere : {true, false}) {
        if (isThere)
            folder.write(fileName, "rubbish");
        else
            std::filesystem::remove(folder.path(fileName));
        store->setValue("b", isThere ? 5 : 6);
        store->finish();
        EXPECT_EQ(onDisk(), dictionary({{"a", 2}, {"b", isThere ? 5 : 6}, {"foreign", 3}}));
    }
}

TEST_F(LinuxPreferenceStoreTest, writesAgainWhatWasRemovedWhileItRuns) {
    const std::string path = folder.path("settings/" + fileName);
    std::filesystem::create_directory(folder.path("settings"));
    LinuxPreferenceStore store(dispatch, path);
    store.setValue("a", 1);
    const auto isWritten = [&] {
        return comesTrue(
            [&] {
                dispatch.advance(100ms);
                dispatch.runAll();
            },
            [&] { return std::filesystem::exists(path) && dispatch.scheduledCount() == 0; });
    };
    EXPECT_TRUE(isWritten());
    for (const auto& gone : {std::filesystem::path(path).parent_path(), std::filesystem::path(path)}) {
        std::filesystem::remove_all(gone);
        EXPECT_TRUE(isWritten()) << gone;
    }
}

TEST_F(LinuxPreferenceStoreTest, goesOnWithTheVersionBeforeADamagedOne) {
    auto store = open();
    for (const int value : {1, 2}) {
        store->setValue("a", value);
        store->finish();
    }
    const std::string last = folder.read(fileName);
    for (const bool isReadable : {true, false}) {
        store.reset();
        if (isReadable) {
            folder.write(fileName, last.substr(0, 120));
        } else {
            std::filesystem::remove(folder.path(fileName));
            std::filesystem::create_symlink(fileName, folder.path(fileName));  // to itself
        }
        store = open();
        EXPECT_EQ(store->value("a"), PropertyValue(1));
    }
    std::filesystem::remove(folder.path(fileName));
    store.reset();
    EXPECT_EQ(open()->value("a"), std::nullopt) << "a file that was removed stays removed";
}

TEST_F(LinuxPreferenceStoreTest, setsDamagedFilesAside) {
    const std::string whole = writePropertyList(dictionary({{"a", 1}}));
    const std::vector<std::string> damaged = {"", whole.substr(0, 120), writePropertyList(PropertyValue::Array{1}),
                                              std::string(50'000'000, '<')};
    for (const std::string& contents : damaged) {
        folder.write(fileName, contents);
        EXPECT_EQ(open()->value("a"), std::nullopt);
        EXPECT_FALSE(std::filesystem::exists(folder.path(fileName)));
    }
    EXPECT_EQ(warnings.size(), damaged.size());
    std::vector<std::string> kept;
    for (const std::string& name : setAside())
        kept.push_back(folder.read(name));
    EXPECT_TRUE(std::ranges::is_permutation(kept, damaged)) << "an earlier one was covered";
}

TEST_F(LinuxPreferenceStoreTest, leavesWhatItCannotReadAloneUntilItIsGone) {
    const std::string path = folder.path(fileName);
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    const auto store = open();
    store->setValue("a", 1);
    store->finish();
    EXPECT_FALSE(std::filesystem::is_regular_file(path));
    EXPECT_EQ(folder.names(), std::vector<std::string>{fileName});
    EXPECT_EQ(warnings.size(), 1u);
    std::filesystem::remove(path);
    store->setValue("a", 2);
    store->finish();
    EXPECT_EQ(onDisk(), dictionary({{"a", 2}}));
}

TEST_F(LinuxPreferenceStoreTest, savesOnceTheDiskHasRoomAgainAndLogsTheFailureOnce) {
    const auto store = open();
    store->setValue("a", 1);
    store->finish();
    {
        const FullDisk full;
        store->setValue("a", 2);
        dispatch.advance(100ms);
        dispatch.runAll();
        EXPECT_TRUE(store->saveProblem());
    }
    EXPECT_EQ(warnings.size(), 1u);
    EXPECT_EQ(onDisk(), dictionary({{"a", 1}}));
    dispatch.advance(1s);
    dispatch.runAll();
    EXPECT_EQ(onDisk(), dictionary({{"a", 2}}));
    EXPECT_EQ(store->saveProblem(), std::nullopt);
}

std::string plist(const std::string& body) {
    return R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0">)" + body + "</plist>";
}

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int time = 0; time < times; ++time)
        all += text;
    return all;
}

TEST(PropertyList, keepsWhatIsHardToWrite) {
    const PropertyValue value(PropertyValue::Dictionary{
        {"", "empty key"},
        {"reals", PropertyValue::Array{1700000000.123456, 1795247336.631275, -0.1, 5e-324,
                                       std::numeric_limits<double>::infinity()}},
        {"text", PropertyValue::Array{"a\x01\x1f\r\n\t\x7f]]>&amp;<>\"'", "\xC3\xA9\xF0\x9F\x93\x81"}},
        {"data", Bytes(100'000, 7)},
    });
    const std::string before = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "de_DE.UTF-8");  // where it is installed, its decimal comma changes nothing
    EXPECT_EQ(parsePropertyList(writePropertyList(value)), value);
    std::setlocale(LC_ALL, before.c_str());
    EXPECT_EQ(parsePropertyList(writePropertyList("a\xFF z")), PropertyValue("a\xEF\xBF\xBD z"));
}

TEST(PropertyList, readsWhatPeopleEditAndLeavesOutValuesWithoutAType) {
    EXPECT_EQ(parsePropertyList(plist("<array><integer>1</integer><integer>18446744073709551615</integer></array>")),
              PropertyValue(PropertyValue::Array{1}));
    EXPECT_FALSE(parsePropertyList(plist("<integer>9223372036854775808</integer>")));
    EXPECT_EQ(parsePropertyList("<?xml version=\"1.0\"?>\n<!DOCTYPE plist PUBLIC \"x\" \"y\">\n<!-- </array> -->"
                                "<plist version=\"1.0\">\n<array >\n <!-- <array> -->\n <string><![CDATA[<array>]]>"
                                "</string><false/><real>.5</real></array>\n</plist>\n"),
              PropertyValue(PropertyValue::Array{"<array>", false, 0.5}));
}

TEST(PropertyList, refusesWhatIsNoneOrNestedBeyondMeasure) {
    constexpr int deep = 100'000;
    for (const std::string& body : {repeated("<array><!--</array>-->", deep) + repeated("</array>", deep),
                                    repeated("<dict><key>k</key>", deep) + repeated("</dict>", deep),
                                    "<array>" + repeated("<true/>", 300'000) + "</array>"})
        EXPECT_FALSE(parsePropertyList(plist(body)));
    EXPECT_TRUE(parsePropertyList(plist(repeated("<array>", 60) + repeated("</array>", 60))));
    const std::string whole = writePropertyList(PropertyValue::Dictionary{{"a", PropertyValue::Array{1, "x"}}});
    for (std::size_t length = 0; length + 10 < whole.size(); ++length)
        EXPECT_FALSE(parsePropertyList(whole.substr(0, length))) << length;
    for (const std::string& text : {std::string("bplist00\xD0"), plist(""), plist("<dict><string>x</string></dict>"),
                                    plist("<array><dict></array></dict>"), std::string(maxPropertyListSize + 1, ' ')})
        EXPECT_FALSE(parsePropertyList(text)) << text.substr(0, 80);
}

}  // namespace
}  // namespace stowpocket
