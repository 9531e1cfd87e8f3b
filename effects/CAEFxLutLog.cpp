#include "effects/CAEFxLutLog.h"

#include "lut/CUtilLut.h"

#include <cstring>
#include <iterator>

namespace {

using namespace zel;

// clang-format off
constexpr AEFxGuiElement LogElementList[] = {
    // Deliberate: off converts to linear. docs/quirks.md, "log direction".
    Check ( 0, "Convert to Linear"),
    Slider( 1, "Black Reference",         kBlackReference),
    Slider( 2, "White Reference",         kWhiteReference),
    Slider( 3, "Display Gamma",           kDisplayGamma),
    Slider( 4, "Film Gamma",              kFilmGamma),
    Group("Red Channel"),
        Slider( 6, "Red - Black Reference",   kBlackReference),
        Slider( 7, "Red - White Reference",   kWhiteReference),
        Slider( 8, "Red - Display Gamma",     kDisplayGamma),
        Slider( 9, "Red - Film Gamma",        kFilmGamma),
    GroupEnd(),
    Group("Green Channel"),
        Slider(12, "Green - Black Reference", kBlackReference),
        Slider(13, "Green - White Reference", kWhiteReference),
        Slider(14, "Green - Display Gamma",   kDisplayGamma),
        Slider(15, "Green - Film Gamma",      kFilmGamma),
    GroupEnd(),
    Group("Blue Channel"),
        Slider(18, "Blue - Black Reference",  kBlackReference),
        Slider(19, "Blue - White Reference",  kWhiteReference),
        Slider(20, "Blue - Display Gamma",    kDisplayGamma),
        Slider(21, "Blue - Film Gamma",       kFilmGamma),
    GroupEnd(),
    Check(23, "ForceRender"),  // read by nobody: toggling it makes the host render again
};
// clang-format on
static_assert(std::size(LogElementList) == 24);
static_assert(IdsAreRowNumbers(LogElementList));
static_assert(GroupsAreBalanced(LogElementList));
static_assert(NamesFitHost(LogElementList));

}  // namespace

CAEFxLutLog::CAEFxLutLog() {
    // Deliberate: the second text lands in the name too, so the name has no "ZEL " and
    // the description stays empty. docs/quirks.md, "names without ZEL".
    std::strcpy(m_szName, "ZEL Log/Linear Conversion");
    std::strcpy(m_szName, "Log/Linear Conversion");
    m_nElementCount = static_cast<std::int32_t>(std::size(LogElementList));
    m_pElements = LogElementList;
}

CAEFxLutLog::~CAEFxLutLog() = default;

void CAEFxLutLog::BuildLut(CUtilLut* lut, float* values) {
    if (lut) lut->ApplyLog(values);
}
