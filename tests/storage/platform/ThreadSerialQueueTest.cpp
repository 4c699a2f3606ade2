#include "platform/posix/ThreadSerialQueue.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>
#include <vector>

using namespace corvane;

TEST(ThreadSerialQueue, RunsWorkInOrderOffTheCallingThreadAndFinishesItBeforeGoing) {
    std::vector<int> order;
    std::vector<std::thread::id> threads;
    {
        ThreadSerialQueue queue;
        for (int i = 0; i < 200; ++i)
            queue.async([&, i] {
                order.push_back(i);
                threads.push_back(std::this_thread::get_id());
                // Work may queue more work; it runs too.
                if (i == 199) queue.async([&] { order.push_back(200); });
            });
    }
    ASSERT_EQ(order.size(), 201u);
    for (int i = 0; i <= 200; ++i) EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
    EXPECT_NE(threads.front(), std::this_thread::get_id());
    EXPECT_EQ(std::count(threads.begin(), threads.end(), threads.front()), 200);
}
