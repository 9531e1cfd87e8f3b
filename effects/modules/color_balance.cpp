/// Module zel_color_balance.

#include "effects/CAEFxLutBalance.h"
#include "host/Entry.h"

CAEFxLutBalance g_AEFx;

CAEFx& TheEffect() { return g_AEFx; }
