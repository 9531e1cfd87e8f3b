/// Module zel_brightness_contrast_pivot.

#include "effects/CAEFxLutBrightness.h"
#include "host/Entry.h"

CAEFxLutBrightness g_AEFx;

CAEFx& TheEffect() { return g_AEFx; }
