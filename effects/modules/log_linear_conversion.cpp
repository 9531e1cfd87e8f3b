/// Module zel_log_linear_conversion.

#include "effects/CAEFxLutLog.h"
#include "host/Entry.h"

CAEFxLutLog g_AEFx;

CAEFx& TheEffect() { return g_AEFx; }
