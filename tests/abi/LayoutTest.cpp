/// Compiling this file is the test, for each layout once: sizes and offsets by the header
/// included here, codes and flag bits by the assertions below.

#include "abi/Layout.h"

#include <type_traits>

static_assert(ZEL_ABI_32 == (sizeof(void*) == 4), "the layout is not the target's");

// Records travel between compilers: no constructors, no virtual tables, bytes are all.
template <class... Records>
constexpr bool kPlain = ((std::is_standard_layout_v<Records> && std::is_trivial_v<Records>)&&...);
static_assert(kPlain<PF_InData, PF_OutData, PF_ParamDef, PF_LayerDef, PF_UtilCallbacks,
                     SPBasicSuite, PF_PixelFormatSuite1>);

/// A pixel-format code from its text: the first character in the lowest byte.
constexpr std::uint32_t Text(const char (&c)[5]) {
    std::uint32_t code = 0;
    for (int i = 3; i >= 0; --i) code = code << 8 | static_cast<unsigned char>(c[i]);
    return code;
}

// clang-format off
static_assert(PrPixelFormat_BGRA_4444_8u     == Text("bgra"));
static_assert(PrPixelFormat_ARGB_4444_8u     == Text("argb"));
static_assert(PrPixelFormat_BGRA_4444_16u    == Text("Bgra"));
static_assert(PrPixelFormat_ARGB_4444_16u    == Text("Argb"));
static_assert(PrPixelFormat_BGRA_4444_32f    == Text("BGra"));
static_assert(PrPixelFormat_ARGB_4444_32f    == Text("ARgb"));
static_assert(PrPixelFormat_BGRX_4444_8u     == Text("bgrx"));
static_assert(PrPixelFormat_VUYA_4444_8u     == Text("vuya"));
static_assert(PrPixelFormat_V210_422_10u_601 == Text("v210"));
static_assert(PrPixelFormat_UYVY_422_8u_601  == Text("uyvy"));
static_assert(PrPixelFormat_Invalid          == Text("badf"));
static_assert(PrPixelFormat_Any              == 0);

static_assert(PF_Cmd_ABOUT           ==  0 && PF_Cmd_GLOBAL_SETUP     ==  1);
static_assert(PF_Cmd_UNUSED_0        ==  2 && PF_Cmd_GLOBAL_SETDOWN   ==  3);
static_assert(PF_Cmd_PARAMS_SETUP    ==  4 && PF_Cmd_SEQUENCE_SETUP   ==  5);
static_assert(PF_Cmd_SEQUENCE_RESETUP == 6 && PF_Cmd_SEQUENCE_FLATTEN ==  7);
static_assert(PF_Cmd_SEQUENCE_SETDOWN == 8 && PF_Cmd_DO_DIALOG        ==  9);
static_assert(PF_Cmd_FRAME_SETUP     == 10 && PF_Cmd_RENDER           == 11);
static_assert(PF_Cmd_FRAME_SETDOWN   == 12);

static_assert(PF_Err_NONE == 0 && PF_Err_OUT_OF_MEMORY == 4);
static_assert(PF_Err_INTERNAL_STRUCT_DAMAGED == 512 && PF_Err_INVALID_INDEX     == 513);
static_assert(PF_Err_UNRECOGNIZED_PARAM_TYPE == 514 && PF_Err_INVALID_CALLBACK  == 515);
static_assert(PF_Err_BAD_CALLBACK_PARAM      == 516);

static_assert(PF_Stage_DEVELOP == 0 && PF_Stage_ALPHA == 1);
static_assert(PF_Stage_BETA == 2 && PF_Stage_RELEASE == 3);

static_assert(PF_OutFlag_DISPLAY_ERROR_MESSAGE == 0x100);
static_assert(PF_OutFlag_PIX_INDEPENDENT       == 0x400);
static_assert(PF_OutFlag_CUSTOM_UI             == 0x8000);
static_assert(PF_OutFlag_DEEP_COLOR_AWARE      == 0x2000000);

static_assert(PF_WorldFlag_DEEP == 1 && PF_WorldFlag_WRITEABLE == 2);

static_assert(PF_Param_LAYER       ==  0 && PF_Param_CHECKBOX  ==  4);
static_assert(PF_Param_FLOAT_SLIDER == 10);
static_assert(PF_Param_GROUP_START == 13 && PF_Param_GROUP_END == 14);

static_assert(PF_ParamFlag_CANNOT_TIME_VARY == 0x2 && PF_ParamFlag_COLLAPSE_TWIRLY == 0x20);
static_assert(PF_Quality_LO == 0 && PF_Quality_HI == 1);
// clang-format on

/// Host and error codes of four characters have the first one in the highest byte.
constexpr A_long Reversed(const char (&c)[5]) {
    std::uint32_t code = 0;
    for (int i = 0; i < 4; ++i) code = code << 8 | static_cast<unsigned char>(c[i]);
    return static_cast<A_long>(code);
}
static_assert(zel::abi::kApplAfterEffects == Reversed("FXTC"));
static_assert(zel::abi::kApplPremiere == Reversed("PrMr"));
static_assert(zel::abi::kSuiteNotFound == Reversed("S!Fd"));
