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

TEST_F(BusInstanceTest, namesAndTokensReachTheProgramThatRuns) {
    ASSERT_TRUE(start());
    bus.makeFile("n\xFF\n");
    EXPECT_EQ(bus.runPeer({"add", "./x/../n\xFF\n"}).out, "added: $'" + path("n\\xff\\n'") + '\n');
    EXPECT_EQ(staged(), Paths{path("n\xFF\n")}) << "every byte of a name arrives";
    EXPECT_EQ(log, CallLog());
    const std::string json = bus.runPeer({"list", "--json"}).out;
    EXPECT_NE(json.find("\"url\": \"file://" + path("n%FF%0A") + "\", \"path\": null"), std::string::npos) << json;

    bus.environment.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"), QStringLiteral("token"));
    EXPECT_EQ(bus.runPeer({"show"}).code, 0);
    EXPECT_EQ(log, (CallLog{"show", "key", "activate"}));
    EXPECT_EQ(tokens, (std::vector<StartupTokens>{{.activationToken = "token", .startupID = {}}}));
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

TEST_F(BusInstanceTest, aProgramThatCannotStartIsReported) {
    bus.makeFile("one");
    bus.environment.insert(QStringLiteral("SESSION_PEER_CANNOT_START"), QStringLiteral("1"));
    const Ended failed = bus.runPeer({"add", "one"});
    EXPECT_EQ(failed.code, 3);
    EXPECT_EQ(failed.err, "stowpocket: stowpocket is not running and could not be started\n");
}

TEST_F(BusInstanceTest, withoutABusTheProgramRunsAloneAndVerbsSaySo) {
    bus.environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nonexistent"));
    for (const char* verb : {"list", "show", "toggle"}) {
        const Ended ended = bus.runPeer({verb});
        EXPECT_EQ(ended.code, 3);
        EXPECT_EQ(ended.err, "stowpocket: there is no session bus to reach the program on\n");
    }
    const auto alone = bus.startPeer({});
    bus.waitUntil([&] { return alone->state() == QProcess::NotRunning || alone->canReadLine(); });
    EXPECT_EQ(alone->readLine(), "ready\n");
    alone->terminate();
    EXPECT_NE(bus.run(*alone).err.find("no session bus"), std::string::npos);
}

}  // namespace
}  // namespace stowpocket
