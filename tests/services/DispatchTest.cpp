// SPDX-License-Identifier: MIT
#include "fakes/FakeDispatch.h"
#include "platform/qt/QtDispatch.h"
#include "support/ComesTrue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>

using namespace std::chrono_literals;

namespace stowpocket {
namespace {

struct Faked {
    FakeDispatch dispatch;
    void step() {
        dispatch.runAll();
        dispatch.advance(5ms);
    }
};

struct OnQt {
    QtDispatch dispatch;
    void step() {}
};

template <class Subject>
struct DispatchContract : testing::Test {
    [[nodiscard]] bool runUntil(const std::function<bool()>& condition) {
        return comesTrue([this] { subject.step(); }, condition);
    }
    Subject subject;
    Dispatch& dispatch = subject.dispatch;
};

using Subjects = testing::Types<Faked, OnQt>;
TYPED_TEST_SUITE(DispatchContract, Subjects);

TYPED_TEST(DispatchContract, runsMainWorkInOrderAndLater) {
    std::string order;
    this->dispatch.async([&] {
        order += 'a';
        this->dispatch.async([&] { order += 'c'; });
    });
    this->dispatch.async([&] { order += 'b'; });
    EXPECT_EQ(order, "");
    EXPECT_TRUE(this->runUntil([&] { return order.size() == 3; }));
    EXPECT_EQ(order, "abc");
}

TYPED_TEST(DispatchContract, delayedWorkRunsUntilItIsCancelledWhichItMayDoItselfAndNotWhileItIsPaused) {
    int early = 0;
    int ticks = 0;
    bool isOver = false;
    std::unique_ptr<ScheduledWork> earlyWork = this->dispatch.after(5ms, [&] {
        ++early;
        earlyWork.reset();
    });
    auto cancelled = this->dispatch.after(10ms, [] { FAIL(); });
    std::unique_ptr<ScheduledWork> repeated = this->dispatch.every(5ms, [&] {
        if (++ticks == 3)
            repeated.reset();
    });
    const auto late = this->dispatch.after(20ms, [&] { isOver = true; });
    cancelled.reset();
    repeated->pause();
    EXPECT_TRUE(this->runUntil([&] { return isOver; }));
    EXPECT_EQ(early, 1);
    EXPECT_EQ(ticks, 0);
    repeated->resume();
    EXPECT_TRUE(this->runUntil([&] { return ticks == 3; }));
    const auto later = this->dispatch.after(20ms, [&] { isOver = false; });
    EXPECT_TRUE(this->runUntil([&] { return !isOver; }));
    EXPECT_EQ(ticks, 3);
}

TYPED_TEST(DispatchContract, serialQueueKeepsOrderAndOutlivesItsHandle) {
    std::unique_ptr<SerialQueue> queue = this->dispatch.serialQueue("queue.under.test");
    constexpr int blocks = 200;
    std::atomic<int> next{0};
    std::atomic<bool> inOrder{true};
    for (int block = 0; block < blocks; ++block)
        queue->async([&, block] { inOrder = inOrder && next.fetch_add(1) == block; });
    queue.reset();
    EXPECT_TRUE(this->runUntil([&] { return next == blocks; }));
    EXPECT_TRUE(inOrder);
}

TEST(QtDispatch, mainWorkEndsOnTheMainThreadWithAllThatItOwns) {
    QtDispatch dispatch;
    constexpr int jobs = 500;
    std::atomic<int> ended{0};
    std::atomic<int> endedElsewhere{0};
    const auto note = [&, mainThread = std::this_thread::get_id()](const int* owned) {
        delete owned;
        endedElsewhere += std::this_thread::get_id() == mainThread ? 0 : 1;
        ++ended;
    };
    dispatch.background([&] {
        for (int job = 0; job < jobs; ++job)
            dispatch.async([owned = std::shared_ptr<const int>(new int(job), note)] {});
    });
    EXPECT_TRUE(comesTrue([] {}, [&] { return ended == jobs; }));
    EXPECT_EQ(endedElsewhere, 0);
}

TEST(QtDispatch, queuesRunHoweverMuchHangsInTheBackground) {
    QtDispatch dispatch;
    std::promise<void> mountAnswers;
    std::atomic<int> ended{0};
    constexpr int jobs = 20;
    const std::shared_future<void> answer(mountAnswers.get_future());
    for (int job = 0; job < jobs; ++job)
        dispatch.background([&ended, answer] {
            answer.wait();
            ++ended;
        });
    const auto queue = dispatch.serialQueue("queue.under.test");
    EXPECT_TRUE(queue->await([] {}, 20s));
    EXPECT_FALSE(queue->await([answer] { answer.wait(); }, 1ms));
    mountAnswers.set_value();
    EXPECT_TRUE(queue->await([] {}, 20s));
    EXPECT_TRUE(comesTrue([] {}, [&] { return ended == jobs; }));
}

TEST(WorkerThreads, keepTheirLimitUnlessOneOnlyWaits) {
    std::promise<void> go;
    const std::shared_future<void> released(go.get_future());
    std::atomic<int> ran{0};
    WorkerThreads threads(1, 1ms);
    threads.start([&threads, released] {
        EXPECT_TRUE(threads.runWait([released] {
            released.wait();
            return true;
        }));
    });
    threads.start([&ran, released] {
        ++ran;
        released.wait();
    });
    threads.start([&ran] { ++ran; });
    EXPECT_TRUE(comesTrue([] {}, [&] { return ran == 1; }));
    EXPECT_FALSE(threads.finish(WorkerThreads::Clock::now()));
    threads.clear();
    go.set_value();
    EXPECT_TRUE(threads.finish(WorkerThreads::Clock::now() + 20s));
    EXPECT_EQ(ran, 1) << "what was dropped never runs, nor two at a time";
}

TEST(WorkerThreads, whatHangsIsLeftBehindAndMayEndLater) {
    std::promise<void> answer;
    const auto ended = std::make_shared<std::promise<void>>();
    std::future<void> end = ended->get_future();
    {
        std::promise<void> started;
        WorkerThreads threads(2, 1ms);
        threads.start([&started, ended, answered = std::shared_future<void>(answer.get_future())] {
            started.set_value();
            answered.wait();
            ended->set_value();
        });
        started.get_future().wait();
    }
    answer.set_value();
    EXPECT_EQ(end.wait_for(20s), std::future_status::ready);
}

}  // namespace
}  // namespace stowpocket
