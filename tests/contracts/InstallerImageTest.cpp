// SPDX-License-Identifier: MIT
#include "contracts/TemporaryFolder.h"
#include "fakes/FakeDispatch.h"
#include "fakes/FakeFiles.h"
#include "platform/linux/storage/PlistParser.h"
#include "platform/qt/QtChildProcess.h"
#include "platform/qt/QtTrash.h"
#include "updates/InstallerImageCleanup.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

/// The clean-up with real processes and files, and a script in the place of the disk-image tool.
class InstallerImageTest : public testing::Test {
protected:
    InstallerImageTest() {
        ::setenv("XDG_DATA_HOME", folder.path("data").c_str(), 1);
        folder.write("old.dmg");
        folder.write("stowpocket 1.dmg");
        files.add(folder.path("Volumes/stowpocket 1/stowpocket.app"));
    }
    ~InstallerImageTest() override { ::unsetenv("XDG_DATA_HOME"); }

    /// Lets the tool print `information` when asked for it, and note everything it is asked.
    void cleanUp(const std::string& information, const std::string& more = "") {
        folder.write("information", information);
        folder.write("calls", "");
        folder.write("tool", "#!/bin/sh\necho \"$*\" >>'" + folder.path("calls") +
                                 "'\necho noise >&2\n[ \"$1\" = info ] && cat '" + folder.path("information") +
                                 "'\n" + more + "\nexit 3\n");
        std::filesystem::permissions(folder.path("tool"), std::filesystem::perms::owner_all);
        QtChildProcess process({2s, 100'000});
        PlistParser parser;
        QtTrash trash;
        InstallerImageCleanup cleanup({dispatch, process, parser, files, trash, folder.path("tool")},
                                      *FileURL::fromPath("/Applications/stowpocket.app"), std::nullopt);
        cleanup.cleanUp();
        dispatch.advance(8s);
        dispatch.runAll();
    }
    [[nodiscard]] bool isThere(const char* name) const { return std::filesystem::exists(folder.path(name)); }
    /// One image as the tool lists it.
    [[nodiscard]] std::string image(const std::string& path, const std::string& mountPoint) const {
        return "<dict>" + (path.empty() ? "" : "<key>image-path</key><string>" + folder.path(path) + "</string>") +
               "<key>image-type</key><string>read-only disk image</string><key>removable</key><true/>"
               "<key>blockcount</key><integer>81920</integer><key>system-entities</key><array>"
               "<dict><key>content-hint</key><string>GUID_partition_scheme</string><key>dev-entry</key>"
               "<string>/dev/disk4</string></dict><dict><key>content-hint</key><string>Apple_HFS</string>" +
               (mountPoint.empty() ? "" : "<key>mount-point</key><string>" + folder.path(mountPoint) + "</string>") +
               "</dict></array></dict>";
    }
    static std::string list(const std::string& images) {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
               "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist "
               "version=\"1.0\">\n<dict><key>framework</key>"
               "<string>628</string><key>images</key><array>" +
               images + "</array><key>vendor</key><string>maker</string></dict>\n</plist>\n";
    }

    TemporaryFolder folder;
    FakeFiles files;
    FakeDispatch dispatch;
    const std::string onlyAsked = "info -plist\n";
};

TEST_F(InstallerImageTest, detachesAndTrashesTheImageThatHoldsTheProgram) {
    cleanUp(list(image("", "Volumes/stowpocket 1") + image("old.dmg", "") + image("old.dmg", "Volumes/old") +
                 image("stowpocket 1.dmg", "Volumes/stowpocket 1") + image("old.dmg", "Volumes/stowpocket 1")));
    EXPECT_EQ(folder.read("calls"), onlyAsked + "detach " + folder.path("Volumes/stowpocket 1") + " -quiet\n");
    EXPECT_TRUE(isThere("old.dmg"));
    EXPECT_FALSE(isThere("stowpocket 1.dmg"));
    EXPECT_TRUE(isThere("data/Trash/files/stowpocket 1.dmg"));
}

TEST_F(InstallerImageTest, leavesEverythingAloneWhateverTheToolPrints) {
    const std::string good = list(image("stowpocket 1.dmg", "Volumes/stowpocket 1"));
    for (const std::string& printed : {std::string(), std::string("hdiutil: info failed\n"), list(""),
                                       good.substr(0, good.size() / 2), std::string(1000, '\xff')}) {
        cleanUp(printed);
        EXPECT_EQ(folder.read("calls"), onlyAsked);
    }
    cleanUp(good, "while :; do echo endless output, line after line; done");
    EXPECT_EQ(folder.read("calls"), onlyAsked);
    EXPECT_TRUE(isThere("stowpocket 1.dmg"));
}

TEST(QtChildProcess, endsWhatCannotBeStartedOrDoesNotEnd) {
    QtChildProcess process({300ms, 10});
    EXPECT_EQ(process.run("/bin/echo", {"a b", "$c"}), (Bytes{'a', ' ', 'b', ' ', '$', 'c', '\n'}));
    EXPECT_EQ(process.run("/bin/echo", {"more than ten"}), std::nullopt);
    EXPECT_EQ(process.run("/bin/sleep", {"60"}), std::nullopt);
    EXPECT_EQ(process.run("/nowhere/tool", {}), std::nullopt);
    EXPECT_EQ(process.run("/bin/false", {}), Bytes());
}

}  // namespace
}  // namespace stowpocket
