#include "lut/CUtilLut.h"
#include "tests/support/Bits.h"
#include "tests/support/RecordingLut.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <thread>
#include <vector>

namespace {

using zel::test::Bits;

constexpr int kAll = CUtilLut::kChannels * CUtilLut::kEntries;

TEST(CUtilLut, NewObjectIsClosedWithWhite1023) {
    CUtilLut lut;
    EXPECT_EQ(lut.m_pLut, nullptr);
    EXPECT_EQ(lut.QueryWhiteLevel(), 1023.0f);
}

TEST(CUtilLut, FieldsStandAloneBehindTheVirtualTable) {
    CUtilLut lut;
    const auto* object = reinterpret_cast<const char*>(&lut);
    EXPECT_EQ(reinterpret_cast<const char*>(&lut.m_pLut), object + sizeof(void*));
    EXPECT_EQ(reinterpret_cast<const char*>(&lut.m_fWhiteLevel), object + 2 * sizeof(void*));
    EXPECT_EQ(sizeof(CUtilLut), 3 * sizeof(void*));
}

TEST(CUtilLut, ResetMapsEveryCodeToItself) {
    CUtilLut lut;
    EXPECT_EQ(lut.Open(), 0);
    lut.SetWhiteLevel(800.0f);  // the last entry is 1023 all the same
    lut.Reset();
    float *r, *g, *b;
    lut.QueryBasePointers(&r, &g, &b);
    EXPECT_EQ(g, r + 1024);
    EXPECT_EQ(b, r + 2048);
    for (int i = 0; i < 1024; ++i) {
        ASSERT_EQ(r[i], static_cast<float>(i));
        ASSERT_EQ(g[i], static_cast<float>(i));
        ASSERT_EQ(b[i], static_cast<float>(i));
    }
}

TEST(CUtilLut, CloseTwiceReturnsZeroBothTimes) {
    CUtilLut lut;
    lut.Open();
    EXPECT_EQ(lut.Close(), 0);
    EXPECT_EQ(lut.m_pLut, nullptr);
    EXPECT_EQ(lut.Close(), 0);
}

TEST(CUtilLut, WhiteLevelTakesAnyFloatAndSurvivesClose) {
    CUtilLut lut;
    for (const float level : {0.0f, -7.5f, 4095.0f, std::numeric_limits<float>::infinity()}) {
        lut.SetWhiteLevel(level);
        lut.Open();
        lut.Close();
        EXPECT_EQ(Bits{lut.QueryWhiteLevel()}, Bits{level});
    }
}

TEST(CUtilLut, CopyOfNullChangesNothing) {
    CUtilLut lut;
    lut.Open();
    lut.Reset();
    lut.SetWhiteLevel(700.0f);
    const float* block = lut.m_pLut;
    lut.Copy(nullptr);
    EXPECT_EQ(lut.m_pLut, block);
    EXPECT_EQ(lut.m_pLut[2047], 1023.0f);
    EXPECT_EQ(lut.QueryWhiteLevel(), 700.0f);
}

TEST(CUtilLut, CopyTakesWhiteLevelAndEveryEntryAndIsIndependent) {
    CUtilLut source;
    source.Open();
    for (int i = 0; i < kAll; ++i) source.m_pLut[i] = static_cast<float>(i) * 0.37f;
    source.m_pLut[5] = std::numeric_limits<float>::quiet_NaN();
    source.SetWhiteLevel(800.0f);

    CUtilLut copy;
    copy.Open();  // an open object's block is replaced
    copy.Copy(&source);
    EXPECT_EQ(copy.QueryWhiteLevel(), 800.0f);
    EXPECT_NE(copy.m_pLut, source.m_pLut);
    EXPECT_EQ(std::memcmp(copy.m_pLut, source.m_pLut, sizeof(float) * kAll), 0);

    copy.m_pLut[0] = 1.0f;
    source.m_pLut[1] = 2.0f;
    EXPECT_EQ(source.m_pLut[0], 0.0f);
    EXPECT_EQ(copy.m_pLut[1], 0.37f);
}

TEST(CUtilLutWeights, TellingValues) {
    CUtilLut lut;
    EXPECT_TRUE(CUtilLut::m_bInitialized);
    EXPECT_EQ(CUtilLut::m_shadows[0], 1.0f);
    EXPECT_EQ(CUtilLut::m_shadows[1023], 0.0f);
    EXPECT_EQ(CUtilLut::m_highlights[0], 0.0f);
    EXPECT_EQ(CUtilLut::m_highlights[1023], 1.0f);
    EXPECT_EQ(CUtilLut::m_midtones[0], 0.0f);
    EXPECT_EQ(CUtilLut::m_midtones[1023], 0.0f);
    for (int i = 0; i < 1024; ++i) ASSERT_LE(CUtilLut::m_midtones[i], CUtilLut::m_midtones[511]);
    EXPECT_LT(CUtilLut::m_midtones[511], 0.5f);
    EXPECT_GT(CUtilLut::m_midtones[511], 0.4999f);
    EXPECT_EQ(CUtilLut::m_midtones[511], CUtilLut::m_midtones[512]);
}

TEST(CUtilLutWeights, EveryEntryIsTheStatedSingleAndDoubleArithmetic) {
    CUtilLut lut;
    for (int i = 0; i < 1024; ++i) {
        // Every single-precision step as an explicit double operation rounded once:
        // 53 bits are more than enough to hold the exact sum or product before rounding.
        const float x = static_cast<float>(static_cast<double>(i) / 1023.0);
        const float rest = static_cast<float>(1.0 - static_cast<double>(x));
        const float twice = static_cast<float>(2.0 * static_cast<double>(rest));
        const float times = static_cast<float>(static_cast<double>(twice) * i);
        ASSERT_EQ(Bits{CUtilLut::m_shadows[i]}, Bits{static_cast<float>(double{rest} * rest)}) << i;
        ASSERT_EQ(Bits{CUtilLut::m_midtones[i]}, Bits{static_cast<float>(times / 1023.0)}) << i;
        ASSERT_EQ(Bits{CUtilLut::m_highlights[i]}, Bits{static_cast<float>(double{x} * x)}) << i;
    }
}

TEST(CUtilLutWeights, SumToOneWithinRounding) {
    CUtilLut lut;
    for (int i = 0; i < 1024; ++i)
        ASSERT_NEAR(CUtilLut::m_shadows[i] + CUtilLut::m_midtones[i] + CUtilLut::m_highlights[i],
                    1.0f, 2e-7f)
            << i;
}

TEST(CUtilLutWeights, StayTheSameWhateverTheWhiteLevelAndTheNumberOfObjects) {
    CUtilLut first;
    const std::vector<float> before(CUtilLut::m_midtones, CUtilLut::m_midtones + 1024);
    first.SetWhiteLevel(512.0f);
    for (int i = 0; i < 100; ++i) {
        CUtilLut another;
        another.SetWhiteLevel(static_cast<float>(i));
    }
    EXPECT_EQ(std::memcmp(before.data(), CUtilLut::m_midtones, sizeof(float) * 1024), 0);
}

TEST(CUtilLut, VirtualTableOrder) {
    // Slots 0 and 1 are the two destructors. On the platforms this runs on, a virtual
    // function is called with the object as its first argument, and superfluous
    // arguments do no harm, so every slot can be called in one form.
    constexpr const char* kOrder[] = {"Copy",
                                      "Open",
                                      "Close",
                                      "Reset",
                                      "SetWhiteLevel",
                                      "QueryWhiteLevel",
                                      "ApplyBrightness",
                                      "ApplyLog",
                                      "ApplyGamma",
                                      "ApplyGamma2",
                                      "ApplyBrightness2",
                                      "ApplyBalance",
                                      "ApplyBalance2",
                                      "ApplyArithmetic",
                                      "ApplyInvert",
                                      "Build8Bit",
                                      "Build10Bit16",
                                      "Build10Bit32",
                                      "BuildZelLut"};
    zel::test::RecordingLut recorder;
    using Slot = void (*)(CUtilLut*, void*, void*, void*);
    Slot* slots;
    std::memcpy(&slots, static_cast<void*>(&recorder), sizeof slots);
    for (std::size_t i = 0; i < std::size(kOrder); ++i) {
        slots[2 + i](&recorder, nullptr, nullptr, nullptr);
        EXPECT_EQ(recorder.calls.back(), kOrder[i]) << "slot " << 2 + i;
        EXPECT_EQ(recorder.calls.size(), i + 1);
    }
}

}  // namespace
