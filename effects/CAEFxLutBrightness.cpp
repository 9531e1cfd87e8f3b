#include "effects/CAEFxLutBrightness.h"

#include "effects/ToneTable.h"
#include "lut/CUtilLut.h"

#include <cstring>

namespace {

using namespace zel;

// clang-format off
constexpr auto BrightnessElementList = ToneTable({{
    // all channels     red                   green                   blue
    {"Brightness",     "Red Brightness",     "Green Brightness",     "Blue Brightness",     kPercent},
    {"Contrast",       "Red Contrast",       "Green Contrast",       "Blue Contrast",       kPercent},
    {"Contrast Pivot", "Red Contrast Pivot", "Green Contrast Pivot", "Blue Contrast Pivot", kFraction},
}});
// clang-format on
static_assert(BrightnessElementList.size() == 81);
static_assert(IdsAreRowNumbers(BrightnessElementList));
static_assert(GroupsAreBalanced(BrightnessElementList));
static_assert(NamesFitHost(BrightnessElementList));
static_assert(IsSlider(BrightnessElementList, 1, "Brightness", kPercent));
static_assert(IsSlider(BrightnessElementList, 26, "Red Contrast", kPercent));
static_assert(IsSlider(BrightnessElementList, 77, "Blue Contrast Pivot", kFraction));

}  // namespace

CAEFxLutBrightness::CAEFxLutBrightness() {
    // Deliberate: the second text lands in the name too, so the name has no "ZEL " and
    // the description stays empty. docs/quirks.md, "names without ZEL".
    std::strcpy(m_szName, "ZEL Brightness/Contrast/Pivot");
    std::strcpy(m_szName, "Brightness/Contrast/Pivot");
    m_nElementCount = static_cast<std::int32_t>(BrightnessElementList.size());
    m_pElements = BrightnessElementList.data();
}

CAEFxLutBrightness::~CAEFxLutBrightness() = default;

void CAEFxLutBrightness::BuildLut(CUtilLut* lut, float* values) {
    if (lut) lut->ApplyBrightness2(values);
}
