/// Module zel_gamma_gain_offset.

#include "effects/CAEFxLutGamma.h"
#include "host/Entry.h"

CAEFxLutGamma g_AEFx;

CAEFx& TheEffect() { return g_AEFx; }
