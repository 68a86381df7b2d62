#include "foundation/ThreadQueue.h"

#include <future>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

namespace brindle {
namespace {

const QString label = QStringLiteral("com.brindle.test");

TEST(ThreadQueue, RunsWorkInTheOrderOfPostingOnOneOtherThread)
{
    ThreadQueue queue(label);
    std::vector<int> ran;
    std::vector<Qt::HANDLE> threads;
    std::promise<void> done;
    for (int i = 0; i < 100; ++i) {
        queue.post([&, i] {
            ran.push_back(i);
            threads.push_back(QThread::currentThreadId());
        });
    }
    queue.post([&] { done.set_value(); });
    done.get_future().wait();

    ASSERT_EQ(ran.size(), 100u);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(ran.at(std::size_t(i)), i);
    EXPECT_THAT(threads, testing::Each(threads.front()));
    EXPECT_NE(threads.front(), QThread::currentThreadId());
}

TEST(ThreadQueue, WorkMayPostMore)
{
    ThreadQueue queue(label);
    std::promise<void> done;
    queue.post([&] { queue.post([&] { done.set_value(); }); });
    done.get_future().wait();
}

TEST(ThreadQueue, GoingWaitsForThePieceThatRunsAndDropsTheRest)
{
    std::promise<void> begun;
    std::promise<void> mayEnd;
    auto held = std::make_shared<int>(0);
    const std::weak_ptr<int> rest = held;
    bool ended = false;
    bool restRan = false;
    auto queue = std::make_unique<ThreadQueue>(label);
    queue->post([&] {
        begun.set_value();
        mayEnd.get_future().wait();
        ended = true;
    });
    queue->post([&restRan, held = std::move(held)] { restRan = true; });
    begun.get_future().wait();

    // The rest is let go of before the running piece is waited for, so its going shows that the end has
    // begun.
    auto going = std::async(std::launch::async, [&] { queue.reset(); });
    while (!rest.expired())
        std::this_thread::yield();
    mayEnd.set_value();
    going.wait();
    EXPECT_TRUE(ended);
    EXPECT_FALSE(restRan);
}

} // namespace
} // namespace brindle
