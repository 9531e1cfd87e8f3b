#pragma once

/// What a module must define for the entry point: see effects/modules/.

class CAEFx;

/// The module's one effect object, `g_AEFx`.
CAEFx& TheEffect();
