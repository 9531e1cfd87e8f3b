#include "effects/CAEFxLutBalance.h"

#include "lut/CUtilLut.h"

#include <cstring>
#include <iterator>

namespace {

using namespace zel;

// clang-format off
constexpr AEFxGuiElement BalanceElementList[] = {
    Group("Master"),
        Slider( 1, "RGB",   kPercent),
        Slider( 2, "Red",   kPercent),
        Slider( 3, "Green", kPercent),
        Slider( 4, "Blue",  kPercent),
    GroupEnd(),
    Group("Highlights"),
        Slider( 7, "RGB",   kPercent),
        Slider( 8, "Red",   kPercent),
        Slider( 9, "Green", kPercent),
        Slider(10, "Blue",  kPercent),
    GroupEnd(),
    Group("Midtones"),
        Slider(13, "RGB",   kPercent),
        Slider(14, "Red",   kPercent),
        Slider(15, "Green", kPercent),
        Slider(16, "Blue",  kPercent),
    GroupEnd(),
    Group("Shadows"),
        Slider(19, "RGB",   kPercent),
        Slider(20, "Red",   kPercent),
        Slider(21, "Green", kPercent),
        Slider(22, "Blue",  kPercent),
    GroupEnd(),
    Check(24, "ForceRender"),  // read by nobody: toggling it makes the host render again
};
// clang-format on
static_assert(std::size(BalanceElementList) == 25);
static_assert(IdsAreRowNumbers(BalanceElementList));
static_assert(GroupsAreBalanced(BalanceElementList));
static_assert(NamesFitHost(BalanceElementList));

}  // namespace

CAEFxLutBalance::CAEFxLutBalance() {
    std::strcpy(m_szName, "ZEL Color Balance");
    std::strcpy(m_szDescription, "Color Balance");
    m_nElementCount = static_cast<std::int32_t>(std::size(BalanceElementList));
    m_pElements = BalanceElementList;
}

CAEFxLutBalance::~CAEFxLutBalance() = default;

void CAEFxLutBalance::BuildLut(CUtilLut* lut, float* values) {
    if (lut) lut->ApplyBalance2(values);
}
