#pragma once

/// The host's binary interface: the basic suite, through which every other
/// suite is acquired by name and version, and the one suite that is used.

#include "abi/HostTypes.h"
#include "abi/PixelFormats.h"

#if defined(ZEL_USE_VENDOR_HEADERS)

#include "PrSDKAESupport.h"
#include "SPBasic.h"

#else

using SPErr = std::int32_t;
#if defined(_WIN32)
using SPBoolean = int;
#else
using SPBoolean = unsigned char;
#endif

struct SPBasicSuite {
    SPErr (*AcquireSuite)(const char* name, std::int32_t version, const void** suite);
    SPErr (*ReleaseSuite)(const char* name, std::int32_t version);
    SPBoolean (*IsEqual)(const char*, const char*);
    SPErr (*AllocateBlock)(std::size_t, void**);
    SPErr (*FreeBlock)(void*);
    SPErr (*ReallocateBlock)(void*, std::size_t, void**);
    SPErr (*Undefined)();
};

/// Premiere's pixel-format services. After Effects publishes a different suite
/// of this name as version 2: never ask for anything but version 1.
struct PF_PixelFormatSuite1 {
    PF_Err (*AddSupportedPixelFormat)(PF_ProgPtr, PrPixelFormat);
    PF_Err (*ClearSupportedPixelFormats)(PF_ProgPtr);
    PF_Err (*NewWorldOfPixelFormat)(PF_ProgPtr, A_u_long width, A_u_long height, PF_NewWorldFlags,
                                    PrPixelFormat, PF_EffectWorld*);
    PF_Err (*DisposeWorld)(PF_ProgPtr, PF_EffectWorld*);
    PF_Err (*GetPixelFormat)(PF_EffectWorld*, PrPixelFormat*);
    PF_Err (*GetBlackForPixelFormat)(PrPixelFormat, void*);
    PF_Err (*GetWhiteForPixelFormat)(PrPixelFormat, void*);
    PF_Err (*ConvertColorToPixelFormattedData)(PrPixelFormat, float alpha, float red, float green,
                                               float blue, void*);
};

#endif

namespace zel::abi {

inline constexpr const char* kPixelFormatSuiteName = "PF Pixel Format Suite";
inline constexpr std::int32_t kPixelFormatSuiteVersion = 1;

}  // namespace zel::abi
