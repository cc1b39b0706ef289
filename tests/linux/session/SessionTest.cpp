// SPDX-License-Identifier: MIT
#include "main/linux/LinuxServices.h"
#include "platform/linux/dbus/BusCalls.h"
#include "platform/linux/session/OwnProcess.h"
#include "platform/linux/session/ProgramLock.h"
#include "platform/linux/session/XdgLoginItem.h"
#include "support/ComesTrue.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

TEST(OwnExecutableTest, isTheAppImageOnlyForCodeInsideIt) {
    const auto image = "/home/u/Stow pocket.AppImage";
    EXPECT_EQ(executableToStart("/tmp/.mount_x/usr/bin/stowpocket", image, "/tmp/.mount_x/"), image);
    for (const char* folder : {"/usr/b", "", "/"})  // inherited from whoever started it
        EXPECT_EQ(executableToStart("/usr/bin/stowpocket", image, folder), "/usr/bin/stowpocket") << folder;
    EXPECT_EQ(executableToStart("/usr/bin/stowpocket (deleted)", "", ""), "/usr/bin/stowpocket");
    EXPECT_TRUE(ownExecutable().ends_with("/linux_tests")) << ownExecutable();
}

TEST(ExitHandlerDeathTest, runsOnlyWhenTheProcessEndsBeforeIt) {
    const auto say = [](const char* text) { return [text] { std::fputs(text, stderr); }; };
    EXPECT_EXIT(
        {
            { const ExitHandler ended(say("over ")); }
            const ExitHandler handler(say("saved"));
            std::exit(3);
        },
        testing::ExitedWithCode(3), "^saved$");
}

TEST(ProgramLock, tellsTheSecondProgramWhereTheFirstRuns) {
    const TemporaryFolder folder;
    const std::string path = ProgramLock::pathBeside(folder.path("new/folder/preferences.plist"));
    EXPECT_FALSE(ProgramLock::holderOf(path));
    ::setenv("DISPLAY", ":1234567", 1);
    std::optional<ProgramLock> first(path);
    first.reset();
    ::setenv("DISPLAY", ":17", 1);
    first.emplace(path);  // its place is shorter than the one before
    EXPECT_FALSE(first->holder());
    ::setenv("DISPLAY", ":18", 1);
    const std::string place = ", display :17, process " + std::to_string(::getpid());
    while (!ProgramLock::holderOf(path).value().ends_with(place)) {  // a thread of its own writes it
    }
    EXPECT_TRUE(ProgramLock(path, 0ms).holder().value().ends_with(place));
    first.reset();
    EXPECT_FALSE(ProgramLock::holderOf(path));
    EXPECT_FALSE(ProgramLock(path, 0ms).holder());
    ::unsetenv("DISPLAY");
}

TEST(ProgramLock, waitsForAProgramThatIsJustEnding) {
    const TemporaryFolder folder;
    std::optional<ProgramLock> ending(folder.path("lock"));
    std::thread end([&ending] { ending.reset(); });
    EXPECT_FALSE(ProgramLock(folder.path("lock"), 20s).holder());
    end.join();
}

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
    const mode_t before = ::umask(0);
    EXPECT_TRUE(item.registerItem());
    ::umask(before);
    for (const fs::path& made : {entry.parent_path(), fs::path(config)})
        EXPECT_EQ(fs::status(made).permissions(), fs::perms::owner_all) << "others could have programs started";
}

TEST_F(XdgLoginItemTest, startsAnExecutableOfAnyName) {
    for (const std::string name : {"/a b/c", R"(/"quoted")", "/$HOME/`x`", "/back\\slash\\\\", "/100%f%%",
                                   "/tab\there", "/new\nExec=evil\n", "/\xC3\xBC", "/;#=[]"}) {
        XdgLoginItem named(config, name);
        EXPECT_TRUE(named.registerItem()) << name;
        EXPECT_EQ(named.status(), Status::enabled) << folder.read(entryName);
        EXPECT_EQ(item.status(), Status::notRegistered) << "that starts another one";
        EXPECT_EQ(folder.read(entryName).find("\nExec=evil"), std::string::npos);
    }
    for (const std::string name : {"relative", "/not\xFFutf8"})
        EXPECT_FALSE(XdgLoginItem(config, name).registerItem()) << name;
}

TEST_F(XdgLoginItemTest, seesWhatTheDesktopAndTheUserDid) {
    const std::pair<std::string, Status> table[] = {
        {"Exec=\"/usr/bin/stowpocket\" --anything %F\nX-GNOME-Autostart-enabled=true\nHidden=false\n",
         Status::enabled},
        {"Exec=\"/usr/bin/stowpocket\"\n[Desktop Action x]\nHidden=true\n", Status::enabled},
        {"Exec=\"/usr/bin/stowpocket\"\nHidden=true\n", Status::requiresApproval},
        {"Hidden=True\nExec=\"/usr/bin/stowpocket\"\n", Status::requiresApproval},
        {"Exec=\"/usr/bin/stowpocket\"\nX-GNOME-Autostart-enabled=false\n", Status::requiresApproval},
        {"Exec=\"/usr/bin/stowpocket\"\nTryExec=/opt/gone\n", Status::notRegistered},
        {"Exec=\"/opt/stowpocket\"\n", Status::notRegistered},
        {"Exec=\"/usr/bin/stowpocket\"-too\n", Status::notRegistered},
        {"Hidden=true\n", Status::notRegistered},
    };
    for (const auto& [lines, status] : table) {
        folder.write(entryName, "[Desktop Entry]\nType=Application\n" + lines);
        EXPECT_EQ(item.status(), status) << lines;
    }
    folder.write(entryName, std::string(1000, '\0'));
    EXPECT_TRUE(item.registerItem());
    EXPECT_EQ(item.status(), Status::enabled) << "a damaged entry is replaced";
    for (int time = 0; time < 2; ++time)
        EXPECT_TRUE(item.unregisterItem());
}

TEST_F(XdgLoginItemTest, aFolderThatRefusesIsLeftAsItWas) {
    fs::create_directories(entry / "a folder in the way");
    EXPECT_FALSE(item.registerItem());
    EXPECT_EQ(std::distance(fs::directory_iterator(entry.parent_path()), {}), 1) << "nothing else is left there";
    EXPECT_FALSE(item.unregisterItem());

    fs::remove_all(entry);
    ASSERT_EQ(::mkfifo(entry.c_str(), 0600), 0);
    EXPECT_EQ(item.status(), Status::notRegistered) << "answers at once";
}

TEST(AccessibilityBusTest, oneThatIsSilentIsNotWaitedFor) {
    constexpr auto alwaysOn = "QT_LINUX_ACCESSIBILITY_ALWAYS_ON";
    qunsetenv(alwaysOn);
    PrivateBus bus;
    const QDBusConnection program = bus.connection(QStringLiteral("program"));
    EXPECT_TRUE(AccessibilityBusProbe(program).avoidSilentBus()) << "there is none";
    EXPECT_FALSE(qEnvironmentVariableIsSet(alwaysOn));
    // Its owner is this thread, which waits and so cannot answer.
    QDBusConnection owner = bus.connection(QStringLiteral("owner"));
    QObject silent;
    ASSERT_TRUE(owner.registerObject(QStringLiteral("/org/a11y/bus"), &silent, QDBusConnection::ExportAllProperties));
    ASSERT_TRUE(owner.registerService(QStringLiteral("org.a11y.Bus")));
    EXPECT_FALSE(AccessibilityBusProbe(program).avoidSilentBus());
    EXPECT_TRUE(qEnvironmentVariableIsSet(alwaysOn));
}

TEST(LinuxBackgroundTest, whatWorkUsesStaysForItWhenItDoesNotEnd) {
    const TemporaryFolder folder;
    folder.write("a");
    const std::unique_ptr<LinuxBackground> background(new LinuxBackground);
    OutlivesBackgroundWork<LinuxBackground> owner(background.get());
    std::atomic<bool> isToEnd = false;
    std::atomic<int> rounds = 0;
    background->dispatch.background([&] {
        for (; !isToEnd; ++rounds) {
            EXPECT_TRUE(background->files.fileExists(folder.url("a")) &&
                        background->bookmarks.create(folder.url("a")));
            EXPECT_GT(background->clock.now(), Date{});
            background->dispatch.async([] {});
        }
    });
    const auto worksOn = [&] {
        return comesTrue([] {}, [&, before = rounds.load()] { return rounds > before + 10; });
    };
    EXPECT_TRUE(worksOn());
    owner.reset();
    EXPECT_TRUE(worksOn());
    isToEnd = true;
    EXPECT_TRUE(comesTrue([&] { return background->dispatch.finish(); }));
}

}  // namespace
}  // namespace stowpocket
