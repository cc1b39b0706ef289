// SPDX-License-Identifier: MIT
#include "platform/linux/session/XdgLoginItem.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace stowpocket {
namespace {

namespace fs = std::filesystem;
using Status = LoginItem::Status;

class XdgLoginItemTest : public testing::Test {
protected:
    TemporaryFolder folder;
    const std::string config = folder.path("config");
    const std::string entryName = "config/autostart/com.example.stowpocket.desktop";
    const fs::path entry = folder.path(entryName);
    XdgLoginItem item{config, "/usr/bin/stowpocket"};
};

TEST_F(XdgLoginItemTest, needsAPlaceAndKeepsItPrivate) {
    XdgLoginItem homeless(std::nullopt, "/usr/bin/stowpocket");
    EXPECT_EQ(homeless.status(), Status::notFound);
    EXPECT_FALSE(homeless.registerItem());
    const mode_t before = ::umask(0);
    EXPECT_TRUE(item.registerItem());
    ::umask(before);
    for (const fs::path& made : {entry.parent_path(), fs::path(config)})
        EXPECT_EQ(fs::status(made).permissions(), fs::perms::owner_all) << "others could have programs started";
}

TEST_F(XdgLoginItemTest, startsAnExecutableOfAnyName) {
    for (const std::string name : {"/a b/c", "/\"quoted\"", "/$HOME/`x`", "/back\\slash\\\\", "/100%f%%",
                                   "/tab\there", "/new\nExec=evil\n", "/\xC3\xBC", "/;#=[]"}) {
        XdgLoginItem named(config, name);
        EXPECT_TRUE(named.registerItem()) << name;
        EXPECT_EQ(named.status(), Status::enabled) << folder.read(entryName);
        EXPECT_EQ(item.status(), Status::notRegistered) << "that starts another one";
        EXPECT_EQ(folder.read(entryName).find("\nExec=evil"), std::string::npos);
    }
    for (const std::string name : {"relative", "", "/not\xFFutf8"}) {
        fs::remove(entry);
        EXPECT_FALSE(XdgLoginItem(config, name).registerItem()) << name;
        EXPECT_FALSE(fs::exists(entry));
    }
}

TEST_F(XdgLoginItemTest, seesWhatTheDesktopAndTheUserDid) {
    const std::pair<std::string, Status> table[] = {
        {"Exec=\"/usr/bin/stowpocket\"\n", Status::enabled},
        {"Exec=\"/usr/bin/stowpocket\" --anything %F\nX-GNOME-Autostart-enabled=true\nHidden=false\n",
         Status::enabled},
        {"Exec=\"/usr/bin/stowpocket\"\n[Desktop Action x]\nHidden=true\n", Status::enabled},
        {"Exec=\"/usr/bin/stowpocket\"\nHidden=true\n", Status::requiresApproval},
        {"Hidden=True\nExec=\"/usr/bin/stowpocket\"\n", Status::requiresApproval},
        {"Exec=\"/usr/bin/stowpocket\"\nX-GNOME-Autostart-enabled=false\n", Status::requiresApproval},
        {"Exec=\"/usr/bin/stowpocket\"\nTryExec=/usr/bin/stowpocket\n", Status::enabled},
        {"Exec=\"/usr/bin/stowpocket\"\nTryExec=/opt/gone\n", Status::notRegistered},
        {"Exec=\"/opt/stowpocket\"\n", Status::notRegistered},
        {"Exec=\"/opt/stowpocket\"\nHidden=true\n", Status::notRegistered},
        {"Exec=\"/usr/bin/stowpocket\n", Status::notRegistered},
        {"Hidden=true\n", Status::notRegistered},
    };
    for (const auto& [lines, status] : table) {
        folder.write(entryName, "[Desktop Entry]\nType=Application\n" + lines);
        EXPECT_EQ(item.status(), status) << lines;
        EXPECT_TRUE(item.registerItem());
        EXPECT_EQ(item.status(), Status::enabled) << lines;
        EXPECT_NE(folder.read(entryName).find("\nTryExec=/usr/bin/stowpocket\n"), std::string::npos);
    }
    folder.write(entryName, std::string(1000, '\0'));
    EXPECT_EQ(item.status(), Status::notRegistered);
    EXPECT_TRUE(item.registerItem());
    EXPECT_EQ(item.status(), Status::enabled) << "a damaged entry is replaced";
}

TEST_F(XdgLoginItemTest, aFolderThatRefusesIsLeftAsItWas) {
    folder.write("config/autostart", "a file in the way");
    EXPECT_FALSE(item.registerItem());
    EXPECT_EQ(item.status(), Status::notRegistered);
    EXPECT_TRUE(item.unregisterItem());

    fs::remove(config + "/autostart");
    fs::create_directories(entry / "a folder in the way");
    EXPECT_FALSE(item.registerItem());
    EXPECT_EQ(std::distance(fs::directory_iterator(entry.parent_path()), {}), 1) << "nothing else is left there";
    EXPECT_FALSE(item.unregisterItem());

    fs::remove_all(entry);
    ASSERT_EQ(::mkfifo(entry.c_str(), 0600), 0);
    EXPECT_EQ(item.status(), Status::notRegistered) << "answers at once";
}

}  // namespace
}  // namespace stowpocket
