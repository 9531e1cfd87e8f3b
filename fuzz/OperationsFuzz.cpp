/// Tone operations and exports over any entries, white level and parameters.

#include "fuzz/Check.h"
#include "fuzz/Feed.h"
#include "lut/CUtilLut.h"
#include "lut/reference/ToneOperations.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace zel::fuzz;

constexpr int kAll = CUtilLut::kChannels * CUtilLut::kEntries;

struct Operation {
    const char* name;
    void (CUtilLut::*apply)(float*);
    void (*plain)(float*, float, const float*);  // null: it is the plain form itself
    float top;  // results end at the white level or at this, whichever is stated; 0: white
};

// clang-format off
constexpr Operation kOperations[] = {
    {"ApplyBrightness",  &CUtilLut::ApplyBrightness,  nullptr, 1023.0f},
    {"ApplyBalance",     &CUtilLut::ApplyBalance,     nullptr, 1023.0f},
    {"ApplyBalance2",    &CUtilLut::ApplyBalance2,    nullptr, 0.0f},
    {"ApplyBrightness2", &CUtilLut::ApplyBrightness2, nullptr, 0.0f},
    {"ApplyGamma2",      &CUtilLut::ApplyGamma2,      zel::lut::reference::ApplyGamma2, 0.0f},
    {"ApplyLog",         &CUtilLut::ApplyLog,         zel::lut::reference::ApplyLog,    0.0f},
    {"ApplyGamma",       &CUtilLut::ApplyGamma,       nullptr, 0.0f},
    {"ApplyArithmetic",  &CUtilLut::ApplyArithmetic,  nullptr, -1.0f},
    {"ApplyInvert",      &CUtilLut::ApplyInvert,      nullptr, -1.0f},
};
// clang-format on

bool SameFloat(float a, float b) {
    return std::isnan(a) ? std::isnan(b)
                         : std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
}

/// Results lie between 0 and the top, or are NaN. A white level below 0 is a top below the
/// bottom: such an entry is either of the two.
void CheckRange(const CUtilLut& lut, const Operation& operation) {
    if (operation.top < 0.0f) return;
    const float top = operation.top > 0.0f ? operation.top : lut.m_fWhiteLevel;
    if (std::isnan(top)) return;
    for (int i = 0; i < kAll; ++i) {
        const float t = lut.m_pLut[i];
        const bool within = t >= 0.0f && t <= top;
        if (!std::isnan(t) && !within && !(top < 0.0f && (t == top || t == 0.0f)))
            Found(std::string(operation.name) + " left " + std::to_string(t) + " at " +
                  std::to_string(i) + ", white level " + std::to_string(top));
    }
}

void Apply(Feed& feed, CUtilLut& lut) {
    const Operation& operation = kOperations[feed.Below(std::size(kOperations))];
    // Right behind the last value that an operation may read.
    const auto params = std::make_unique<std::array<float, 128>>();
    const int given = feed.Below(48);
    for (int i = 0; i < given; ++i) (*params)[feed.Any<std::uint8_t>() % 128] = feed.Setting();
    const auto before = *params;

    std::vector<float> plain(lut.m_pLut, lut.m_pLut + kAll);
    (lut.*operation.apply)(params->data());
    Check(std::memcmp(before.data(), params->data(), sizeof before) == 0,
          "an operation wrote its parameters");
    CheckRange(lut, operation);
    if (!operation.plain) return;
    operation.plain(plain.data(), lut.m_fWhiteLevel, params->data());
    for (int i = 0; i < kAll; ++i)
        if (!SameFloat(plain[static_cast<std::size_t>(i)], lut.m_pLut[i]))
            Found(std::string(operation.name) + " differs from its plain form at " +
                  std::to_string(i));
}

/// Truncated to int32 and cut to its low bits; what int32 cannot hold is 0.
std::uint32_t Low(float entry, std::uint32_t mask) {
    const double whole = std::trunc(double{entry});
    if (!(whole >= -2147483648.0 && whole <= 2147483647.0)) return 0;
    return static_cast<std::uint32_t>(static_cast<std::int64_t>(whole)) & mask;
}

std::uint32_t Wide(float entry) {
    if (!(entry > 0.0f)) return 0;
    return entry >= 4294967296.0f ? 0xFFFFFFFFu
                                  : static_cast<std::uint32_t>(static_cast<std::uint64_t>(entry));
}

void Export(CUtilLut& lut) {
    std::vector<unsigned char> bytes(3 * 256), packed(6144);
    std::vector<unsigned short> codes(kAll);
    std::vector<unsigned int> wide(kAll);
    lut.Build8Bit(&bytes[0], &bytes[256], &bytes[512]);
    lut.Build10Bit(&codes[0], &codes[1024], &codes[2048]);
    lut.Build10Bit(&wide[0], &wide[1024], &wide[2048]);
    lut.BuildZelLut(packed.data(), 0);
    for (std::size_t i = 0; i < kAll; ++i) {
        const float t = lut.m_pLut[i];
        Check(codes[i] == Low(t, 0xFFFF), "16-bit export");
        Check(wide[i] == Wide(t), "32-bit export");
        if (i % 4 == 0) Check(bytes[i / 4] == Low(t * 0.25f, 0xFF), "8-bit export");
        if (i % 2 == 0) {
            std::uint32_t word;
            std::memcpy(&word, &packed[i * 2], 4);
            Check(word == Low(lut.m_pLut[i + 1], 0xFFFF) * 4194304u + Low(t, 0xFFFF) * 64u,
                  "packed export");
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Feed feed(data, size);
    CUtilLut lut;
    lut.Open();
    lut.Reset();
    if (feed.Flag()) lut.SetWhiteLevel(feed.Flag() ? feed.Any<float>() : feed.Setting() * 10.0f);
    const int changed = feed.Below(32);
    for (int i = 0; i < changed; ++i)
        lut.m_pLut[feed.Any<std::uint16_t>() % kAll] = feed.Any<float>();
    for (int i = 0; i < 3 && !feed.Ended(); ++i) Apply(feed, lut);
    Export(lut);
    return 0;
}
