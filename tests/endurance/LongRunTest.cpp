#include "tests/endurance/LongRun.h"

#include <gtest/gtest.h>

namespace {

TEST(LongRun, MemoryStaysConstantAndResultsRight) {
    const auto report = zel::test::RunLong(4000, [](long, long) {});
    EXPECT_EQ(report.wrong, 0);
    EXPECT_GT(report.settledKiB, 1000) << "memory was not measured";
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)  // they keep what was freed
    EXPECT_TRUE(report.IsConstant())
        << report.settledKiB << " KiB in the first half, " << report.largestKiB << " in the second";
#endif
}

}  // namespace
