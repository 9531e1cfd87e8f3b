#include "lut/CUtilLut.h"
#include "lut/Numeric.h"

#include <cstring>

using zel::lut::SaturatedUnsigned;
using zel::lut::Truncated;

namespace {

std::uint16_t Code16(float entry) { return static_cast<std::uint16_t>(Truncated(entry)); }

}  // namespace

void CUtilLut::Build8Bit(unsigned char* c0, unsigned char* c1, unsigned char* c2) {
    unsigned char* const to[kChannels] = {c0, c1, c2};
    for (int c = 0; c < kChannels; ++c)
        for (int j = 0; j < 256; ++j)
            to[c][j] = static_cast<unsigned char>(Truncated(m_pLut[c * kEntries + 4 * j] * 0.25f));
}

void CUtilLut::Build10Bit(unsigned short* c0, unsigned short* c1, unsigned short* c2) {
    unsigned short* const to[kChannels] = {c0, c1, c2};
    for (int c = 0; c < kChannels; ++c)
        for (int i = 0; i < kEntries; ++i) to[c][i] = Code16(m_pLut[c * kEntries + i]);
}

void CUtilLut::Build10Bit(unsigned int* c0, unsigned int* c1, unsigned int* c2) {
    unsigned int* const to[kChannels] = {c0, c1, c2};
    for (int c = 0; c < kChannels; ++c)
        for (int i = 0; i < kEntries; ++i) to[c][i] = SaturatedUnsigned(m_pLut[c * kEntries + i]);
}

void CUtilLut::BuildZelLut(void* destination, int) {
    auto* const words = static_cast<unsigned char*>(destination);
    for (int j = 0; j < kChannels * kEntries; j += 2) {
        const std::uint32_t low = Code16(m_pLut[j]), high = Code16(m_pLut[j + 1]);
        const std::uint32_t word = (high << 22) + (low << 6);
        std::memcpy(words + 2 * j, &word, sizeof word);
    }
}
