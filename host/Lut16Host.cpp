#include "host/Lut16Host.h"

#include "ip/IpLut.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zel {

namespace {

constexpr std::uint32_t kWhite = 32768, kTopCode = 1023;

/// What a code stands for, by code.
using Samples = std::array<std::uint16_t, kTopCode + 1>;

/// a / b to the nearest whole number, halves up.
constexpr std::uint32_t Nearest(std::uint32_t a, std::uint32_t b) { return (a + b / 2) / b; }

constexpr std::uint32_t CodeOf(std::uint32_t sample) {
    return Nearest(std::min(sample, kWhite) * kTopCode, kWhite);
}

constexpr std::uint16_t SampleOf(std::uint32_t code) {
    return static_cast<std::uint16_t>(Nearest(std::min(code, kTopCode) * kWhite, kTopCode));
}

constexpr Samples kIdentity = [] {
    Samples samples{};
    for (std::uint32_t code = 0; code <= kTopCode; ++code) samples[code] = SampleOf(code);
    return samples;
}();
static_assert(kIdentity.front() == 0 && kIdentity.back() == kWhite);

/// A table of codes as a table of samples.
Samples ToSamples(const void* table) {
    Samples samples;
    std::memcpy(samples.data(), table, sizeof samples);
    std::ranges::transform(samples, samples.begin(), SampleOf);
    return samples;
}

void Scan(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3) {
    const void* const tables[4] = {t0, t1, t2, t3};
    auto* to = static_cast<unsigned char*>(dst);
    const auto* from = static_cast<const unsigned char*>(src);
    for (int x = 0; x < width; ++x)
        for (const void* table : tables) {
            std::uint16_t sample;
            std::memcpy(&sample, from, sizeof sample);
            sample = static_cast<const Samples*>(table)->at(CodeOf(sample));
            std::memcpy(to, &sample, sizeof sample);
            to += sizeof sample, from += sizeof sample;
        }
}

}  // namespace

void LutBGRA16Host(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height,
                   void* tableR, void* tableG, void* tableB) {
    Samples r = ToSamples(tableR), g = ToSamples(tableG), b = ToSamples(tableB), a = kIdentity;
    IpFrame_Lut_Master(Scan, dst, dstRowBytes, src, srcRowBytes, width, height, &b, &g, &r, &a);
}

void LutARGB16Host(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height,
                   void* tableR, void* tableG, void* tableB) {
    Samples r = ToSamples(tableR), g = ToSamples(tableG), b = ToSamples(tableB), a = kIdentity;
    IpFrame_Lut_Master(Scan, dst, dstRowBytes, src, srcRowBytes, width, height, &a, &r, &g, &b);
}

}  // namespace zel
