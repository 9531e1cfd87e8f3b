/// The curves of every effect as digests that all targets must give: neutral and twenty
/// random settings, the float entries and both integer exports.
///
/// The digests are those of g++ on x86-64 Linux, where the other tests hold the same
/// curves against plain restatements of the arithmetic. Here they show that another
/// compiler, processor or C library changes no bit.

#include "effects/CAEFxLutBalance.h"
#include "effects/CAEFxLutBrightness.h"
#include "effects/CAEFxLutGamma.h"
#include "effects/CAEFxLutLog.h"
#include "tests/effects/TableDigests.h"
#include "tests/support/Lut.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <iomanip>
#include <random>
#include <sstream>

namespace {

using namespace zel::test;

constexpr unsigned kSeed = 20260207;

/// FNV-1a over bytes, lowest byte of a value first.
class Digest {
public:
    void Add(std::uint32_t value, int bytes) {
        for (int i = 0; i < bytes; ++i, value >>= 8)
            m_state = (m_state ^ (value & 0xFF)) * 0x100000001B3u;
    }
    std::uint64_t Value() const { return m_state; }

private:
    std::uint64_t m_state = 0xCBF29CE484222325u;
};

std::uint64_t DigestOf(CUtilLut& lut) {
    Digest digest;
    for (int i = 0; i < CUtilLut::kChannels * CUtilLut::kEntries; ++i)
        digest.Add(std::bit_cast<std::uint32_t>(AnyNaN(lut.m_pLut[i]).value), 4);
    unsigned char narrow[3][256];
    lut.Build8Bit(narrow[0], narrow[1], narrow[2]);
    for (const auto& table : narrow)
        for (const unsigned char code : table) digest.Add(code, 1);
    unsigned short wide[3][CUtilLut::kEntries];
    lut.Build10Bit(wide[0], wide[1], wide[2]);
    for (const auto& table : wide)
        for (const unsigned short code : table) digest.Add(code, 2);
    return digest.Value();
}

/// Where the controls start.
Params Neutral(CAEFxLut& effect) {
    Params params{};
    for (int i = 0; i < effect.QueryGuiElementCount(); ++i) {
        const AEFxGuiElement& element = *effect.QueryGuiElement(i);
        if (element.type == zel::kFloatSlider)
            params[static_cast<std::size_t>(i)] = AEFxRangeTable[element.range].initial;
    }
    return params;
}

/// Every control anywhere in its range. The standard's own distributions differ between
/// libraries, so the numbers are scaled here.
Params Random(CAEFxLut& effect, std::mt19937& random) {
    Params params{};
    for (int i = 0; i < effect.QueryGuiElementCount(); ++i) {
        const AEFxGuiElement& element = *effect.QueryGuiElement(i);
        float& value = params[static_cast<std::size_t>(i)];
        if (element.type == zel::kFloatSlider) {
            const AEFxRange& range = AEFxRangeTable[element.range];
            const double part = static_cast<double>(random()) / 4294967296.0;
            const double extent = double{range.sliderMax} - double{range.sliderMin};
            value = static_cast<float>(double{range.sliderMin} + extent * part);
        } else if (element.type == zel::kCheckBox) {
            value = random() >= 0x80000000u ? 1.0f : 0.0f;
        }
    }
    return params;
}

template <class Effect>
void ExpectDigests(const EffectDigests& expected) {
    Effect effect;
    std::mt19937 random(kSeed);
    std::ostringstream got;
    bool same = true;
    for (std::size_t run = 0; run < kDigestRuns; ++run) {
        Params params = run == 0 ? Neutral(effect) : Random(effect, random);
        OpenLut lut;
        effect.BuildLut(&lut, params.data());
        const std::uint64_t digest = DigestOf(lut);
        EXPECT_EQ(digest, expected[run]) << "setting " << run << std::hex << ": got 0x" << digest
                                         << ", expected 0x" << expected[run];
        same = same && digest == expected[run];
        got << "0x" << std::hex << std::setw(16) << std::setfill('0') << digest << ",\n";
    }
    if (!same) ADD_FAILURE() << "seed " << kSeed << "; all digests here:\n" << got.str();
}

TEST(TableDigests, ColorBalance) { ExpectDigests<CAEFxLutBalance>(kBalanceDigests); }
TEST(TableDigests, Brightness) { ExpectDigests<CAEFxLutBrightness>(kBrightnessDigests); }
TEST(TableDigests, Gamma) { ExpectDigests<CAEFxLutGamma>(kGammaDigests); }
TEST(TableDigests, Log) { ExpectDigests<CAEFxLutLog>(kLogDigests); }

}  // namespace
