// SPDX-License-Identifier: MIT
// Runs the tests once, or with --rounds=N so many times more, after which no object of theirs may be left.
#include "gnustep/StandIns.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <set>

extern "C" void* objc_autoreleasePoolPush();
extern "C" void objc_autoreleasePoolPop(void* pool);

namespace {

/// With classes of its own whose names begin with GS: what notifications for a queue consist of, and appearances.
const std::set<std::string> keptByGNUstep{"NSAppearance", "NSCondition", "NSConditionLock", "NSOperationInternal",
                                          "NSRecursiveLock"};

/// Each test has an autorelease pool of its own, which ends after its fixture.
struct PoolOfEachTest : testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { pool = objc_autoreleasePoolPush(); }
    void OnTestEnd(const testing::TestInfo&) override { objc_autoreleasePoolPop(pool); }
    void* pool = nullptr;
};

int runTests(int rounds) {
    std::map<std::string, int> before;
    for (int round = 0; round <= rounds; ++round) {
        @autoreleasepool {
            if (const int failure = RUN_ALL_TESTS())
                return failure;
        }
        if (round == 0)
            before = stowpocket::standIn::living();
    }
    int failure = 0;
    for (const auto& [name, count] : stowpocket::standIn::living()) {
        if (count - before[name] <= rounds / 2 || name.starts_with("GS") || keptByGNUstep.contains(name))
            continue;
        std::printf("%d objects more of class %s\n", count - before[name], name.c_str());
        failure = 1;
    }
    return failure;
}

}  // namespace

int main(int argc, char** argv) {
    std::optional<stowpocket::TemporaryFolder> home;
    const bool hasDisplay = ::getenv("DISPLAY") != nullptr;
    if (!hasDisplay)
        ::setenv("HOME", home.emplace().path().c_str(), 1);
    std::freopen("/proc/version", "r", stdin);  // so that a child that inherits it shows
    ::setenv("LC_ALL", "C.UTF-8", 1);
    ::setenv("GNUSTEP_STRING_ENCODING", "NSUTF8StringEncoding", 1);
    @autoreleasepool {
        stowpocket::standIn::begin();
        testing::InitGoogleTest(&argc, argv);
        testing::UnitTest::GetInstance()->listeners().Append(new PoolOfEachTest);
        if (hasDisplay)
            [NSApplication sharedApplication];
        constexpr std::string_view option = "--rounds=";
        const bool hasRounds = argc > 1 && std::string_view(argv[1]).starts_with(option);
        return runTests(hasRounds ? std::atoi(argv[1] + option.size()) : 0);
    }
}
