#include "host/GuiElement.h"

// clang-format off
const AEFxRange AEFxRangeTable[8] = {
    // valid            slider           default  decimals
    {-100.0f,  100.0f,  -100.0f,  100.0f,    0.0f, 2},  // kPercent
    {   0.0f,    1.0f,     0.0f,    1.0f,    0.5f, 2},  // kFraction
    {   0.0f, 1023.0f,     0.0f, 1023.0f,   95.0f, 2},  // kBlackReference
    {   0.0f, 1023.0f,     0.0f, 1023.0f,  685.0f, 2},  // kWhiteReference
    {   0.0f,    5.0f,     0.0f,    5.0f,    1.0f, 2},  // kDisplayGamma
    {   0.0f,    5.0f,     0.0f,    5.0f,    0.6f, 2},  // kFilmGamma
    {   0.0f,   10.0f,     0.0f,   10.0f,    1.0f, 2},  // kFactor
    {   0.0f,  100.0f,     0.0f,  100.0f,    0.0f, 2},  // kPositive
};
// clang-format on
