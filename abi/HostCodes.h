#pragma once

/// The host's binary interface: command selectors, result codes and flag bits.

#include "abi/HostTypes.h"

#if !defined(ZEL_USE_VENDOR_HEADERS)

enum : PF_Cmd {
    PF_Cmd_ABOUT = 0,
    PF_Cmd_GLOBAL_SETUP = 1,
    PF_Cmd_UNUSED_0 = 2,
    PF_Cmd_GLOBAL_SETDOWN = 3,
    PF_Cmd_PARAMS_SETUP = 4,
    PF_Cmd_SEQUENCE_SETUP = 5,
    PF_Cmd_SEQUENCE_RESETUP = 6,
    PF_Cmd_SEQUENCE_FLATTEN = 7,
    PF_Cmd_SEQUENCE_SETDOWN = 8,
    PF_Cmd_DO_DIALOG = 9,
    PF_Cmd_FRAME_SETUP = 10,
    PF_Cmd_RENDER = 11,
    PF_Cmd_FRAME_SETDOWN = 12,
};

enum : PF_Err {
    PF_Err_NONE = 0,
    PF_Err_OUT_OF_MEMORY = 4,
    PF_Err_INTERNAL_STRUCT_DAMAGED = 512,
    PF_Err_INVALID_INDEX = 513,
    PF_Err_UNRECOGNIZED_PARAM_TYPE = 514,
    PF_Err_INVALID_CALLBACK = 515,
    PF_Err_BAD_CALLBACK_PARAM = 516,
};

enum : A_long {
    PF_Stage_DEVELOP = 0,
    PF_Stage_ALPHA = 1,
    PF_Stage_BETA = 2,
    PF_Stage_RELEASE = 3,
};

enum : PF_OutFlags {
    PF_OutFlag_DISPLAY_ERROR_MESSAGE = 1 << 8,
    PF_OutFlag_PIX_INDEPENDENT = 1 << 10,
    PF_OutFlag_CUSTOM_UI = 1 << 15,
    PF_OutFlag_DEEP_COLOR_AWARE = 1 << 25,
};

enum : PF_WorldFlags {
    PF_WorldFlag_DEEP = 1 << 0,  // 16 bits a channel; hosts may set other bits
    PF_WorldFlag_WRITEABLE = 1 << 1,
};

enum : PF_ParamType {
    PF_Param_LAYER = 0,
    PF_Param_CHECKBOX = 4,
    PF_Param_FLOAT_SLIDER = 10,
    PF_Param_GROUP_START = 13,
    PF_Param_GROUP_END = 14,
};

enum : PF_ParamFlags {
    PF_ParamFlag_CANNOT_TIME_VARY = 1 << 1,
    PF_ParamFlag_COLLAPSE_TWIRLY = 1 << 5,
};

enum : PF_Quality {
    PF_Quality_LO = 0,
    PF_Quality_HI = 1,
};

#endif

namespace zel::abi {

/// `in_data->appl_id`: who the host is. First character in the highest byte.
inline constexpr A_long kApplAfterEffects = 0x46585443;  // 'FXTC'
inline constexpr A_long kApplPremiere = 0x50724D72;      // 'PrMr'

/// What AcquireSuite answers when the host has no such suite: 'S!Fd'.
inline constexpr std::int32_t kSuiteNotFound = 0x53214664;

/// Curve tolerance that the host takes as its default for sliders.
inline constexpr float kDefaultCurveTolerance = 0.05f;

}  // namespace zel::abi
