// SPDX-License-Identifier: MIT
#include "platform/linux/preferences/LinuxPreferenceStore.h"
#include "fakes/FakeDispatch.h"
#include "platform/linux/preferences/PropertyList.h"
#include "support/ComesTrue.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <limits>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using Values = PropertyValue::Dictionary;

const std::string fileName = "preferences.plist";

class LinuxPreferenceStoreTest : public testing::Test {
protected:
    LinuxPreferenceStoreTest() {
        warningCount = 0;
        previous_ =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) { ++warningCount; });
    }
    ~LinuxPreferenceStoreTest() override { qInstallMessageHandler(previous_); }

    void open() {
        store.reset();
        store = std::make_unique<LinuxPreferenceStore>(dispatch, path);
    }
    void save(const std::string& key, int value) const {
        store->setValue(key, value);
        store->finish();
    }
    [[nodiscard]] Values onDisk() const {
        const std::optional<PropertyValue> values = parsePropertyList(folder.read(fileName));
        return values && values->dictionary() != nullptr ? *values->dictionary() : Values();
    }

    static inline int warningCount;
    TemporaryFolder folder;
    const std::string path = folder.path(fileName);
    FakeDispatch dispatch;
    std::unique_ptr<LinuxPreferenceStore> store;

private:
    QtMessageHandler previous_;
};

TEST_F(LinuxPreferenceStoreTest, endsWithEverythingOnTheDiskButTheDefaults) {
    open();
    store->registerDefaults({{"capacity", 20}});
    store->finish();
    EXPECT_TRUE(folder.names().empty()) << "there is nothing to save";
    store->setValue("a", 1);
    dispatch.advance(100ms);
    EXPECT_TRUE(folder.names().empty()) << "not on the main thread";
    store->setValue("a", 2);
    open();
    dispatch.runBackground();
    EXPECT_EQ(warningCount, 0);
}

TEST_F(LinuxPreferenceStoreTest, keepsWhatOtherProgramsWriteMeanwhile) {
    folder.write(fileName, writePropertyList(Values{{"a", 1}, {"b", 1}, {"c", 1}}));
    open();
    folder.write(fileName, writePropertyList(Values{{"a", 2}, {"b", 2}, {"foreign", 3}}));
    save("b", 4);
    EXPECT_EQ(onDisk(), (Values{{"a", 2}, {"b", 4}, {"foreign", 3}}));
    folder.write(fileName, "rubbish");
    save("b", 5);
    fs::remove(path);
    save("b", 6);
    EXPECT_EQ(onDisk(), (Values{{"a", 2}, {"b", 6}, {"foreign", 3}}));
}

TEST_F(LinuxPreferenceStoreTest, writesAgainWhatWasRemovedWhileItRuns) {
    const fs::path removed = folder.path("settings/" + fileName);
    fs::create_directory(removed.parent_path());
    LinuxPreferenceStore running(dispatch, removed);
    running.setValue("a", 1);
    for (const fs::path& gone : {fs::path(), removed.parent_path(), removed}) {
        fs::remove_all(gone);
        const auto work = [this] {
            dispatch.advance(100ms);
            dispatch.runAll();
        };
        EXPECT_TRUE(comesTrue(work, [&] { return fs::exists(removed) && dispatch.scheduledCount() == 0; })) << gone;
    }
}

TEST_F(LinuxPreferenceStoreTest, goesOnWithTheVersionBeforeADamagedOne) {
    open();
    save("a", 1);
    save("a", 2);
    fs::resize_file(path, 120);
    open();
    EXPECT_EQ(store->value("a"), PropertyValue(1));
    fs::remove(path);
    fs::create_symlink(fileName, path);  // to itself
    open();
    EXPECT_EQ(store->value("a"), PropertyValue(1));
    fs::remove(path);
    open();
    EXPECT_EQ(store->value("a"), std::nullopt) << "a file that was removed stays removed";
}

TEST_F(LinuxPreferenceStoreTest, setsDamagedFilesAside) {
    std::vector<std::string> damaged = {"", writePropertyList(PropertyValue::Array{1}), std::string(50'000'000, '<'),
                                        writePropertyList(Values{{"a", 1}}).substr(0, 120)};
    for (const std::string& contents : damaged) {
        folder.write(fileName, contents);
        open();
        EXPECT_EQ(store->value("a"), std::nullopt);
    }
    EXPECT_EQ(warningCount, 4);
    for (const std::string& name : folder.names()) {
        EXPECT_TRUE(name.starts_with(fileName + ".damaged-")) << name;
        std::erase(damaged, folder.read(name));
    }
    EXPECT_TRUE(damaged.empty()) << "an earlier one was covered";
}

TEST_F(LinuxPreferenceStoreTest, leavesWhatItCannotReadAloneUntilItIsGone) {
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    open();
    save("a", 1);
    EXPECT_TRUE(fs::is_fifo(path));
    EXPECT_EQ(warningCount, 1);
    fs::remove(path);
    save("a", 2);
    EXPECT_EQ(onDisk(), (Values{{"a", 2}}));
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
    const PropertyValue value(Values{
        {"", "empty key"},
        {"reals", PropertyValue::Array{1700000000.123456, -0.1, 5e-324, std::numeric_limits<double>::infinity()}},
        {"text", PropertyValue::Array{"a\x01\x1f\r\n\t\x7f]]>&amp;<>\"'", "\xC3\xA9\xF0\x9F\x93\x81"}},
        {"data", Bytes(100'000, 7)},
    });
    EXPECT_EQ(parsePropertyList(writePropertyList(value)), value);
}

TEST(PropertyList, readsWhatPeopleEditAndLeavesOutValuesWithoutAType) {
    EXPECT_EQ(parsePropertyList(plist("<array><integer>1</integer><integer>18446744073709551615</integer></array>")),
              PropertyValue(PropertyValue::Array{1}));
    EXPECT_EQ(parsePropertyList("<?xml version=\"1.0\"?>\n<!DOCTYPE plist PUBLIC \"x\" \"y\">\n<!-- </array> -->"
                                "<plist version=\"1.0\">\n<array >\n <!-- <array> -->\n <string><![CDATA[<array>]]>"
                                "</string><false/><real>.5</real></array>\n</plist>\n"),
              PropertyValue(PropertyValue::Array{"<array>", false, 0.5}));
}

TEST(PropertyList, refusesWhatIsNoneOrNestedBeyondMeasure) {
    constexpr int deep = 100'000;
    for (const std::string& text : {plist(repeated("<array><!--</array>-->", deep) + repeated("</array>", deep)),
                                    plist(repeated("<dict><key>k</key>", deep) + repeated("</dict>", deep)),
                                    plist("<array>" + repeated("<true/>", 300'000) + "</array>"),
                                    std::string("bplist00\xD0"), plist(""), plist("<dict><string>x</string></dict>"),
                                    plist("<array><dict></array></dict>"), std::string(maxPropertyListSize + 1, ' ')})
        EXPECT_FALSE(parsePropertyList(text)) << text.substr(0, 120);
    const std::string whole = writePropertyList(Values{{"a", PropertyValue::Array{1, "x"}}});
    for (std::size_t length = 0; length + 10 < whole.size(); ++length)
        EXPECT_FALSE(parsePropertyList(whole.substr(0, length))) << length;
}

}  // namespace
}  // namespace stowpocket
