#include "CorvaneWidgetsUI/usage/WorkerThread.hpp"

#include <gtest/gtest.h>

#include <atomic>

#ifdef __linux__
#include <sched.h>
#endif

using namespace corvane;

TEST(WorkerThread, RunsItsBodyOnceAndJoinsWhenDestroyed) {
    std::atomic<int> runs{0};
    {
        WorkerThread first([&] { ++runs; }, 0);
        WorkerThread second([&] { ++runs; }, 1);
    }
    EXPECT_EQ(runs, 2);
}

#ifdef __linux__
TEST(WorkerThread, MayRunWhereverTheProcessMayOnceStarted) {
    cpu_set_t process, worker;
    ASSERT_EQ(::sched_getaffinity(0, sizeof process, &process), 0);
    for (std::size_t index = 0; index < 3; ++index) {
        CPU_ZERO(&worker);
        { WorkerThread thread([&] { ::sched_getaffinity(0, sizeof worker, &worker); }, index); }
        EXPECT_TRUE(CPU_EQUAL(&process, &worker));
    }
}
#endif
