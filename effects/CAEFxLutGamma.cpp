#include "effects/CAEFxLutGamma.h"

#include "effects/ToneTable.h"
#include "lut/CUtilLut.h"

#include <cstring>

namespace {

using namespace zel;

// clang-format off
constexpr auto GammaElementList = ToneTable({{
    // Only the enclosing group tells the channel.
    {"Gamma",  "Gamma",  "Gamma",  "Gamma",  kFactor},
    {"Gain",   "Gain",   "Gain",   "Gain",   kFactor},
    {"Offset", "Offset", "Offset", "Offset", kPercent},
}});
// clang-format on
static_assert(GammaElementList.size() == 81);
static_assert(IdsAreRowNumbers(GammaElementList));
static_assert(GroupsAreBalanced(GammaElementList));
static_assert(NamesFitHost(GammaElementList));
static_assert(IsSlider(GammaElementList, 1, "Gamma", kFactor));
static_assert(IsSlider(GammaElementList, 26, "Gain", kFactor));
static_assert(IsSlider(GammaElementList, 77, "Offset", kPercent));

}  // namespace

CAEFxLutGamma::CAEFxLutGamma() {
    // Deliberate: the second text lands in the name too, so the name has no "ZEL " and
    // the description stays empty. docs/quirks.md, "names without ZEL".
    std::strcpy(m_szName, "ZEL Gamma/Gain/Offset");
    std::strcpy(m_szName, "Gamma/Gain/Offset");
    m_nElementCount = static_cast<std::int32_t>(GammaElementList.size());
    m_pElements = GammaElementList.data();
}

CAEFxLutGamma::~CAEFxLutGamma() = default;

void CAEFxLutGamma::BuildLut(CUtilLut* lut, float* values) {
    if (lut) lut->ApplyGamma2(values);
}
