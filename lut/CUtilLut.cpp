#include "lut/CUtilLut.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

bool CUtilLut::m_bInitialized = false;
float CUtilLut::m_shadows[kEntries];
float CUtilLut::m_midtones[kEntries];
float CUtilLut::m_highlights[kEntries];

namespace {

constexpr std::size_t kBlockBytes = sizeof(float) * CUtilLut::kChannels * CUtilLut::kEntries;

float* AllocateBlock() {
    void* block = std::malloc(kBlockBytes);
    if (!block) throw std::bad_alloc();
    return static_cast<float*>(block);
}

float SquaredInDouble(float x) {
    return static_cast<float>(static_cast<double>(x) * static_cast<double>(x));
}

}  // namespace

void CUtilLut::FillWeights(float whiteLevel) {
    for (int i = 0; i < kEntries; ++i) {
        const float f = static_cast<float>(i);
        const float rest = 1.0f - f / whiteLevel;
        m_shadows[i] = SquaredInDouble(rest);
        m_midtones[i] = (rest + rest) * f / whiteLevel;
        m_highlights[i] = SquaredInDouble(f / whiteLevel);
    }
    m_bInitialized = true;
}

CUtilLut::CUtilLut() : m_pLut(nullptr), m_fWhiteLevel(1023.0f) {
    // Initialised once, however many threads construct their first object at a time.
    [[maybe_unused]] static const bool filled = (FillWeights(m_fWhiteLevel), true);
}

CUtilLut::~CUtilLut() { std::free(m_pLut); }

void CUtilLut::Copy(CUtilLut* source) {
    if (!source) return;
    std::free(m_pLut);
    m_pLut = nullptr;
    SetWhiteLevel(source->QueryWhiteLevel());
    m_pLut = AllocateBlock();
    std::memcpy(m_pLut, source->m_pLut, kBlockBytes);
}

int CUtilLut::Open() {
    m_pLut = nullptr;  // an open object's block is lost, as stated
    m_pLut = AllocateBlock();
    return 0;
}

int CUtilLut::Close() {
    std::free(m_pLut);
    m_pLut = nullptr;
    return 0;
}

void CUtilLut::Reset() {
    for (int c = 0; c < kChannels; ++c)
        for (int i = 0; i < kEntries; ++i) m_pLut[c * kEntries + i] = static_cast<float>(i);
}

void CUtilLut::SetWhiteLevel(float level) { m_fWhiteLevel = level; }

float CUtilLut::QueryWhiteLevel() { return m_fWhiteLevel; }

void CUtilLut::QueryBasePointers(float** channel0, float** channel1, float** channel2) {
    *channel0 = m_pLut;
    *channel1 = m_pLut + kEntries;
    *channel2 = m_pLut + 2 * kEntries;
}
