// SPDX-License-Identifier: MIT
// Starts and command verbs as the user gives them, each a process of its own.
#include "session/BusFixture.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace stowpocket {
namespace {

using Paths = std::vector<std::string>;

class BusInstanceTest : public testing::Test, protected BusFixture {
protected:
    [[nodiscard]] std::string path(const std::string& name) const { return bus.folder() + '/' + name; }
};

TEST_F(BusInstanceTest, verbsReachTheProgramThatRuns) {
    ASSERT_TRUE(start());
    bus.makeFile("a b");
    bus.makeFile("n\xFF\n");
    const Ended added = bus.runPeer({"add", "--", "a b", "./x/../n\xFF\n", "gone"});
    EXPECT_EQ(added.code, 1);
    EXPECT_EQ(added.out, "added: " + path("a b") + "\nadded: $'" + path("n\\xff\\n'") + '\n');
    EXPECT_EQ(added.err, "stowpocket: gone: no such file, or it may not be looked at\n");
    EXPECT_EQ(staged(), (Paths{path("a b"), path("n\xFF\n")})) << "every byte of a name arrives";
    EXPECT_EQ(log, CallLog());

    EXPECT_EQ(bus.runPeer({"list"}).out, path("a b") + "\n$'" + path("n\\xff\\n'") + '\n');
    const std::string json = bus.runPeer({"list", "--json"}).out;
    EXPECT_NE(
        json.find("\"url\": \"file://" + path("n%FF%0A") + "\", \"path\": null, \"available\": false, \"size\": 0"),
        std::string::npos)
        << json;
    EXPECT_EQ(bus.runPeer({"remove", "a b", shelf().items().back().id.text()}).code, 0);
    EXPECT_EQ(staged(), Paths());

    bus.environment.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"), QStringLiteral("token"));
    EXPECT_EQ(bus.runPeer({"show"}).code, 0);
    EXPECT_EQ(log, (CallLog{"show", "key", "activate"}));
    EXPECT_EQ(tokens, (std::vector<StartupTokens>{{.activationToken = "token", .startupID = {}}}));
    EXPECT_EQ(bus.runPeer({"toggle"}).code, 0);
    EXPECT_EQ(log.back(), "close");
    selection.files = {*FileURL::fromPath("/selected")};
    EXPECT_EQ(bus.runPeer({"quick-drop"}).code, 0);
    EXPECT_EQ(staged(), Paths{"/selected"});
    EXPECT_EQ(bus.runPeer({"clear"}).code, 0);
    EXPECT_EQ(staged(), Paths());
}

TEST_F(BusInstanceTest, manyFilesAreOneDrop) {
    ASSERT_TRUE(start());
    Paths arguments{"add"};
    for (int number = 0; number < 2000; ++number) {
        arguments.push_back(std::to_string(number));
        bus.makeFile(arguments.back());
    }
    const Ended added = bus.runPeer(arguments);
    EXPECT_EQ(added.code, 1);
    EXPECT_EQ(std::ranges::count(added.out, '\n'), 20);
    EXPECT_EQ(std::ranges::count(added.err, '\n'), 1980);
    EXPECT_EQ(shelf().items().size(), 20u) << "they stand there when the command ends";
    EXPECT_EQ(app->shelfViewModel().capacityMessage(), "Added 20 of 2000 files - shelf is full");
}

TEST_F(BusInstanceTest, aSecondStartHandsItsFilesOverAndOpensTheShelf) {
    ASSERT_TRUE(start());
    bus.makeFile("one");
    EXPECT_EQ(bus.runPeer({"one"}).code, 0);
    EXPECT_EQ(staged(), Paths{path("one")});
    EXPECT_EQ(log, (CallLog{"show", "key", "activate"}));
    EXPECT_EQ(bus.runPeer({}).code, 0);
}

TEST_F(BusInstanceTest, startsAtTheSameMomentMakeOneProgram) {
    std::vector<std::unique_ptr<QProcess>> starts;
    Paths names{"a", "b", "c", "d"};
    for (const std::string& name : names) {
        bus.makeFile(name);
        starts.push_back(bus.startPeer({name}));
    }
    const auto hasEnded = [](const auto& process) { return process->state() == QProcess::NotRunning; };
    bus.waitUntil([&] { return std::ranges::count_if(starts, hasEnded) == 3; });
    for (const auto& process : starts) {
        if (hasEnded(process)) {
            EXPECT_EQ(process->exitCode(), 0) << process->readAllStandardError().toStdString();
        }
    }
    const std::string list = bus.runPeer({"list"}).out;
    EXPECT_EQ(std::ranges::count(list, '\n'), 4) << list;
    const auto winner = std::ranges::find_if_not(starts, hasEnded);
    (*winner)->terminate();
    EXPECT_NE(bus.run(**winner).out.find("ready"), std::string::npos);
}

TEST_F(BusInstanceTest, addStartsTheProgramWhenNoneRuns) {
    bus.makeFile("one");
    bus.environment.insert(QStringLiteral("SESSION_PEER_CANNOT_START"), QStringLiteral("1"));
    const Ended failed = bus.runPeer({"add", "one"});
    EXPECT_EQ(failed.code, 3);
    EXPECT_EQ(failed.err, "stowpocket: stowpocket is not running and could not be started\n");
    bus.environment.remove(QStringLiteral("SESSION_PEER_CANNOT_START"));
    EXPECT_EQ(bus.runPeer({"list"}).code, 3) << "not for a question";

    const Ended added = bus.runPeer({"add", "one"});
    EXPECT_EQ(added.code, 0) << added.err;
    EXPECT_EQ(added.out, "added: " + path("one") + '\n');
    EXPECT_EQ(bus.runPeer({"list"}).out, path("one") + '\n') << "it stays when the command has ended";
}

TEST_F(BusInstanceTest, withoutABusTheProgramRunsAloneAndVerbsSaySo) {
    bus.environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nonexistent"));
    for (const char* verb : {"list", "show", "toggle"}) {
        const Ended ended = bus.runPeer({verb});
        EXPECT_EQ(ended.code, 3);
        EXPECT_EQ(ended.err, "stowpocket: there is no session bus to reach the program on\n");
    }
    EXPECT_EQ(bus.runPeer({"show", "a"}).code, 2);
    EXPECT_EQ(bus.runPeer({"--version"}).out, "stowpocket 7.8.9\n");

    const auto alone = bus.startPeer({});
    bus.waitUntil([&] { return alone->state() == QProcess::NotRunning || alone->canReadLine(); });
    EXPECT_EQ(alone->readLine(), "ready\n");
    alone->terminate();
    EXPECT_NE(bus.run(*alone).err.find("no session bus"), std::string::npos);
}

}  // namespace
}  // namespace stowpocket
