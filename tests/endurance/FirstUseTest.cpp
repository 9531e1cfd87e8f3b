/// The tables of the engine and of the image library when many threads want them first.
/// Every test is a process of its own under ctest, so it is the first use there.

#include "ip/Ip.h"
#include "lut/CUtilLut.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <barrier>
#include <thread>

namespace {

constexpr std::size_t kThreads = 8;

template <class Use>
void AtOnce(Use use) {
    std::barrier start(kThreads);
    std::vector<std::jthread> threads;
    for (std::size_t t = 0; t < kThreads; ++t)
        threads.emplace_back([&, t] {
            start.arrive_and_wait();
            use(t);
        });
}

TEST(FirstUse, OfTheWeightTables) {
    // A balance that weighs every range, so that every table is read.
    std::array<std::array<float, 3 * 1024>, kThreads> curves;
    const auto use = [&](std::size_t t) {
        CUtilLut lut;
        lut.Open();
        lut.Reset();
        std::array<float, 128> values{};
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = static_cast<float>(i % 7) * 5.0f;
        lut.ApplyBalance2(values.data());
        std::copy_n(lut.m_pLut, curves[t].size(), curves[t].begin());
    };
    AtOnce(use);
    for (std::size_t t = 1; t < kThreads; ++t) EXPECT_EQ(curves[t], curves[0]) << "thread " << t;
    const auto raced = curves[0];
    use(0);
    EXPECT_EQ(curves[0], raced) << "the same as from tables that were there";
}

TEST(FirstUse, OfTheImageLibrary) {
    std::array<std::array<unsigned char, 64>, kThreads> results{};
    AtOnce([&](std::size_t t) {
        IpInitialize();
        std::array<unsigned char, 64> source;
        for (std::size_t i = 0; i < source.size(); ++i)
            source[i] = static_cast<unsigned char>(i * 5);
        std::array<unsigned char, 256> inverse;
        for (std::size_t i = 0; i < inverse.size(); ++i)
            inverse[i] = static_cast<unsigned char>(255 - i);
        IpFrame_Lut_BGRA8(results[t].data(), 64, source.data(), 64, 16, 1, inverse.data(),
                          inverse.data(), inverse.data());
        IpFinalize();
    });
    for (std::size_t i = 0; i < 64; ++i) {
        const auto in = static_cast<unsigned char>(i * 5);
        const int expected = i % 4 == 3 ? in : 255 - in;
        for (std::size_t t = 0; t < kThreads; ++t)
            EXPECT_EQ(results[t][i], expected) << "thread " << t << ", byte " << i;
    }
}

}  // namespace
