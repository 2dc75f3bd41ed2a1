// On Windows the C library has one locale for the whole process: a host's other threads must not see it change.
#include <atomic>
#include <clocale>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "features/NumberText.h"

using namespace orvo::cognex;

namespace {

TEST(HostLocale, StaysWhileFloatsAreReadAndWritten)
{
    ASSERT_NE(std::setlocale(LC_ALL, "German"), nullptr);
    const std::string host = std::setlocale(LC_NUMERIC, nullptr);
    std::atomic<bool> watches{false};
    std::atomic<bool> done{false};
    int changes = 0;
    std::thread watcher([&] {
        do {
            changes += std::setlocale(LC_NUMERIC, nullptr) == host ? 0 : 1;
            watches = true;
        } while (!done);
    });
    while (!watches)
        std::this_thread::yield();
    for (int i = 0; i < 20'000; ++i)
        EXPECT_EQ(formatNumber(*parseNumber<double>("2.5")), "2.5");
    done = true;
    watcher.join();
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(changes, 0);
}

}   // namespace
