#include "ip/Ip.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <latch>
#include <thread>
#include <vector>

namespace {

// What -fsanitize=thread is to look at: modules are set up on one thread while they render
// on others.

constexpr int kRounds = 200, kWidth = 96, kHeight = 4;

/// A frame through every table that start-up fills: identity tables and black.
bool FrameIsRight() {
    std::vector<std::uint16_t> src(4 * kWidth * kHeight), dst(src.size());
    for (std::size_t i = 0; i < src.size(); ++i) src[i] = static_cast<std::uint16_t>(i * 64);
    IpFrame_Lut_BGRA16(dst.data(), kWidth * 8, src.data(), kWidth * 8, kWidth, kHeight, unityLut10,
                       unityLut10, unityLut10);
    if (dst != src) return false;

    std::vector<std::uint32_t> pairs(kWidth * kHeight / 2, 1);
    IpTransformArg nothingShown{};
    nothingShown.dstBase = nothingShown.srcBase = pairs.data();
    nothingShown.dstRowBytes = kWidth * 2;
    nothingShown.dstWidth = kWidth;
    nothingShown.dstHeight = kHeight;
    nothingShown.inPixels = true;
    IpFrame_Transform_UYVY8(&nothingShown);
    return pairs == std::vector<std::uint32_t>(pairs.size(), 0x00800080);
}

TEST(StartUp, MayBeRepeatedWhileOtherThreadsRender) {
    IpInitialize();
    constexpr int kThreads = 4;
    std::latch start(kThreads);
    std::atomic<int> wrong = 0;
    const auto run = [&](const std::function<bool()>& work) {
        start.arrive_and_wait();
        for (int i = 0; i < kRounds; ++i) wrong += !work();
    };
    const auto setUp = [] {
        IpInitialize();
        return true;
    };
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < kThreads; ++i)
            threads.emplace_back([&, i] { i < 2 ? run(setUp) : run(FrameIsRight); });
    }
    EXPECT_EQ(wrong, 0) << "frames that came out wrong";
}

}  // namespace
