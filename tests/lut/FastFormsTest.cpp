/// The forms in use against the plain ones, bit for bit.

#include "lut/Libm.h"
#include "lut/reference/ToneOperations.h"
#include "tests/lut/GroupEntries.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <random>

namespace {

using namespace zel::test;

constexpr float kWhiteLevels[] = {1023.0f, 1023.0f, 0.0f, 940.0f, 5000.0f, -3.0f, kInf, kNaN};

/// Curves to start from: the identity, one with hostile values, one that differs from
/// channel to channel, and one with two equal channels.
void Prepare(CUtilLut& lut, int kind) {
    if (kind % 4 == 1) MakeHostile(lut);
    if (kind % 4 == 2)
        for (int i = 0; i < 3072; ++i) lut.m_pLut[i] *= 1.0f - static_cast<float>(i) / 9000.0f;
    if (kind % 4 == 3)
        for (int i = 1024; i < 2048; ++i) lut.m_pLut[i] = 1023.0f - lut.m_pLut[i];
}

using Apply = void (CUtilLut::*)(float*);
using Reference = void (*)(float*, float, const float*);

testing::AssertionResult Agree(Apply apply, Reference reference, Params params, int run) {
    OpenLut fast, plain;
    Prepare(fast, run);
    Prepare(plain, run);
    fast.SetWhiteLevel(kWhiteLevels[static_cast<std::size_t>(run / 4) % std::size(kWhiteLevels)]);
    (fast.*apply)(params.data());
    reference(plain.m_pLut, fast.m_fWhiteLevel, params.data());
    return SameCurve(fast, plain);
}

// What allows a power of 1 to be skipped, on every platform this runs on.
TEST(FastForms, FirstPowerIsTheBase) {
    const auto check = [](float base) {
        const double power = zel::lut::Pow(base, 1.0f);
        if (std::isnan(base)) return std::isnan(power);
        return std::bit_cast<std::uint64_t>(power) == std::bit_cast<std::uint64_t>(double{base});
    };
    for (const float base : {0.0f, -0.0f, kInf, -kInf, kNaN, 1.0f, -1.0f, 1e-45f, -1e-45f,
                             1.17549435e-38f, 3.4028235e38f, -3.4028235e38f})
        EXPECT_TRUE(check(base)) << Bits{base};
    // Every exponent and sign with a sample of significands, evenly spread.
    for (std::uint32_t high = 0; high < 0x10000; ++high) {
        const float base = std::bit_cast<float>(high << 16 | (high * 0x9E37u & 0xFFFFu));
        ASSERT_TRUE(check(base)) << Bits{base};
    }
}

TEST(FastForms, Gamma2) {
    const unsigned seed = 20240615;
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> factor(0.0f, 10.0f), percent(-100.0f, 100.0f);
    const auto any = [&](int control) { return control == 2 ? percent(random) : factor(random); };
    const auto set = [](Params& params, int group, int control, int who, float value) {
        params[static_cast<std::size_t>(kEntry[group][control][who])] = value;
    };
    for (int run = 0; run < 384; ++run) {
        Params params = NeutralGamma();
        switch (run / 32) {
            case 0: break;  // neutral
            case 1:         // master sliders for all channels
                for (int k = 0; k < 3; ++k) set(params, kMasterGroup, k, 0, any(k));
                break;
            case 2:  // one range, all channels
                for (int k = 0; k < 3; ++k) set(params, 1 + run % 3, k, 0, any(k));
                break;
            case 3:  // one range, one channel
                for (int k = 0; k < 3; ++k) set(params, 1 + run % 3, k, 1 + run / 3 % 3, any(k));
                break;
            case 4:  // two ranges alike, one not
                for (int k = 0; k < 3; ++k) {
                    set(params, kMasterGroup, k, 0, any(k));
                    set(params, 1 + run % 3, k, 0, any(k));
                }
                break;
            case 5:  // equal gammas, gains and offsets apart
                set(params, kMasterGroup, 0, 0, any(0));
                for (int r = 1; r < 4; ++r)
                    for (int k = 1; k < 3; ++k) set(params, r, k, 0, any(k));
                break;
            case 6:  // equal bases, gammas apart
                set(params, kMasterGroup, 1, 0, any(1));
                for (int r = 1; r < 4; ++r) set(params, r, 0, 0, any(0));
                break;
            case 7:  // gamma 0 and its neighbours
                set(params, run % 4, 0, run % 3, 0.0f);
                set(params, kMasterGroup, 1, 0, any(1));
                break;
            case 8:  // beyond the sliders
                for (int k = 0; k < 3; ++k) {
                    set(params, run % 4, k, run % 3, any(k) * 100.0f);
                    set(params, run % 3, k, run % 4, k == run % 3 ? kNaN : -any(k));
                }
                break;
            case 9:  // gammas a bit or two off 1
                set(params, run % 4, 0, run % 3, 1.0f + static_cast<float>(run % 5 - 2) * 0x1p-23f);
                set(params, kMasterGroup, 1, 0, any(1));
                break;
            case 10: {  // gammas whose powers are roots and whole numbers
                constexpr float kGammas[] = {0.125f, 0.25f, 0.5f, 2.0f, 4.0f, 8.0f};
                set(params, kMasterGroup, 0, run % 4, kGammas[run % 6]);
                set(params, kMasterGroup, 1, 0, any(1));
                break;
            }
            default:  // everything
                for (int group = 0; group < 4; ++group)
                    for (int k = 0; k < 3; ++k)
                        for (int who = 0; who < 4; ++who) set(params, group, k, who, any(k));
        }
        ASSERT_TRUE(Agree(&CUtilLut::ApplyGamma2, zel::lut::reference::ApplyGamma2, params, run))
            << "seed " << seed << " run " << run;
    }
}

TEST(FastForms, Log) {
    const unsigned seed = 20240616;
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> code(0.0f, 1023.0f), gamma(0.0f, 5.0f);
    const auto any = [&](int control) { return control < 2 ? code(random) : gamma(random); };
    constexpr int kFirst[] = {1, 6, 12, 18};
    for (int run = 0; run < 256; ++run) {
        Params params = LogDefaults(static_cast<float>(run % 2));
        const auto set = [&](int who, int control, float value) {
            params[static_cast<std::size_t>(kFirst[who] + control)] = value;
        };
        switch (run / 32) {
            case 0: break;  // defaults
            case 1:         // all channels
                for (int k = 0; k < 4; ++k) set(0, k, any(k));
                break;
            case 2: set(1 + run % 3, run / 3 % 4, any(run / 3 % 4)); break;  // one slider
            case 3: set(0, 2, 0.0f); break;                                  // display gamma 0
            case 4: set(run % 4, 3, 0.0f); break;                            // film gamma 0
            case 5:                                                          // black above white
                set(0, 0, 800.0f);
                set(0, 1, any(1) / 2.0f);
                break;
            case 6: set(run % 4, run / 4 % 4, run % 3 ? kNaN : 1e6f); break;  // beyond
            default:                                                          // everything
                for (int who = 0; who < 4; ++who)
                    for (int k = 0; k < 4; ++k) set(who, k, any(k));
        }
        ASSERT_TRUE(Agree(&CUtilLut::ApplyLog, zel::lut::reference::ApplyLog, params, run))
            << "seed " << seed << " run " << run;
    }
}

}  // namespace
