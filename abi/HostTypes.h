#pragma once

/// The host's binary interface: scalar types and the records that an effect
/// and its host exchange. Declared here are only the members that this project
/// touches by name; everything between them keeps its place and size.
///
/// Two layouts exist, and the target decides which one is meant:
///   32-bit   interface generation 12, every record packed to 2 bytes
///   64-bit   interface generation 13, natural alignment (packing 8)
/// abi/Layout.h holds the sizes and offsets of both and asserts them.
///
/// A build with ZEL_AE_SDK set to the root of the host vendor's own kit takes
/// the declarations from there instead; names and members are the same, so no
/// source file changes.

#include <cstddef>
#include <cstdint>

#if INTPTR_MAX == INT32_MAX
#define ZEL_ABI_32 1
#else
#define ZEL_ABI_32 0
#endif

#if defined(ZEL_USE_VENDOR_HEADERS)

#include "AE_Effect.h"
#include "AE_EffectCB.h"

#else

// --- scalars -----------------------------------------------------------------

using A_char = char;
using A_u_char = unsigned char;
using A_short = std::int16_t;
using A_u_short = std::uint16_t;
using A_long = std::int32_t;
using A_u_long = std::uint32_t;
using A_u_longlong = std::uint64_t;
using A_FpLong = double;
using A_FpShort = float;

using PF_FpLong = double;
using PF_FpShort = float;
using PF_Fixed = std::int32_t;  // 16.16
#if defined(_WIN32)
using PF_Boolean = char;
#else
using PF_Boolean = unsigned char;
#endif

using PF_Err = A_long;
using PF_Cmd = A_long;
using PF_ParamType = A_long;
using PF_ParamFlags = A_long;
using PF_ParamUIFlags = A_long;
using PF_ParamIndex = A_long;
using PF_ParamValue = A_long;
using PF_ChangeFlags = A_long;
using PF_OutFlags = A_long;
using PF_OutFlags2 = A_long;
using PF_InFlags = A_long;
using PF_WorldFlags = A_long;
using PF_NewWorldFlags = A_long;
using PF_Quality = A_long;
using PF_Field = A_long;
using PF_FSliderFlags = A_u_long;
using PF_ValueDisplayFlags = A_short;

using PF_Handle = void**;
using PF_ProgPtr = struct PF_ProgOpaque*;
using PF_PixelPtr = void*;

// Handle sizes travel as `long` in generation 12, which is 32 bits wide there.
#if ZEL_ABI_32
using PF_HandleSize = std::int32_t;
#else
using PF_HandleSize = std::uint64_t;
#endif

#if ZEL_ABI_32
#pragma pack(push, 2)
#else
#pragma pack(push, 8)
#endif

// --- small records -----------------------------------------------------------

struct PF_SpecVersion {
    A_short major, minor;
};

struct PF_RationalScale {
    A_long num;
    A_u_long den;
};

// Order and width of the coordinates changed between the generations.
#if ZEL_ABI_32
struct PF_Point {
    A_short v, h;
};
struct PF_Rect {
    A_short top, left, bottom, right;
};
#else
struct PF_Point {
    A_long h, v;
};
struct PF_Rect {
    A_long left, top, right, bottom;
};
#endif
using PF_UnionableRect = PF_Rect;

struct PF_Pixel {
    A_u_char alpha, red, green, blue;
};

struct PF_SoundFormatInfo {
    PF_FpLong rateF;
    A_short num_channels, format, sample_size;
};

struct PF_SoundWorld {
    PF_SoundFormatInfo fi;
    A_long num_samples;
    void* dataP;
};

// --- frames ------------------------------------------------------------------

/// A frame of pixels, also called an effect world.
struct PF_LayerDef {
#if ZEL_ABI_32
    A_long reserved0, reserved1;
#else
    void *reserved0, *reserved1;
#endif
    PF_WorldFlags world_flags;
    PF_PixelPtr data;      // row 0; null when the host has no pixels
    A_long rowbytes;       // bytes from row to row, negative when rows run upwards
    A_long width, height;  // pixels
    PF_UnionableRect extent_hint;
#if ZEL_ABI_32
    A_long platform_ref;
    A_long reserved[8];
#else
    void* platform_ref;
    A_long reserved_long1;
    void* reserved_long4;
    PF_RationalScale pix_aspect_ratio;
    void* reserved_long2;
    A_long origin_x, origin_y;
    A_long reserved_long3;
#endif
    A_long dephault;
};
using PF_EffectWorld = PF_LayerDef;

// --- parameters --------------------------------------------------------------

// Here only because its 92 bytes set the size of the union below on 32 bits.
struct PF_FixedSliderDef {
    PF_Fixed value;
    A_char value_str[32], value_desc[32];
    PF_Fixed valid_min, valid_max, slider_min, slider_max, dephault;
    A_short precision;
    PF_ValueDisplayFlags display_flags;
};

struct PF_CheckBoxDef {
    PF_ParamValue value;
    PF_Boolean dephault;
    A_char reserved;
    A_short reserved1;
    union {
        const A_char* nameptr;  // text beside the box; the host keeps the pointer
    } u;
};

struct PF_FloatSliderDef {
    PF_FpLong value;
    PF_FpLong phase;
    A_char value_desc[32];
    PF_FpShort valid_min, valid_max;    // what may be typed
    PF_FpShort slider_min, slider_max;  // what the slider reaches
    PF_FpShort dephault;
    A_short precision;  // decimal places shown
    PF_ValueDisplayFlags display_flags;
    PF_FSliderFlags fs_flags;
    PF_FpShort curve_tolerance;
#if !ZEL_ABI_32
    PF_Boolean useExponent;
    PF_FpShort exponent;
#endif
};

union PF_ParamDefUnion {
    PF_LayerDef ld;
    PF_FixedSliderDef fd;
    PF_CheckBoxDef bd;
    PF_FloatSliderDef fs_d;
};

struct PF_ParamDef {
    union {
        A_long id;
        PF_ChangeFlags change_flags;
    } uu;
    PF_ParamUIFlags ui_flags;
    A_short ui_width, ui_height;
    PF_ParamType param_type;
    A_char name[32];
    PF_ParamFlags flags;
    A_long unused;
    PF_ParamDefUnion u;
};

// --- callbacks ---------------------------------------------------------------

// A callback that nobody here calls: it only keeps its place in the record.
using PF_UnusedCallback = void (*)();

struct PF_InteractCallbacks {
    PF_Err (*checkout_param)(PF_ProgPtr, PF_ParamIndex, A_long time, A_long step, A_u_long scale,
                             PF_ParamDef*);
    PF_Err (*checkin_param)(PF_ProgPtr, PF_ParamDef*);
    PF_Err (*add_param)(PF_ProgPtr, PF_ParamIndex, PF_ParamDef*);  // copies the record
    PF_Err (*abort)(PF_ProgPtr);
    PF_Err (*progress)(PF_ProgPtr, A_long current, A_long total);
    PF_UnusedCallback register_ui, checkout_layer_audio, checkin_layer_audio, get_audio_data;
#if ZEL_ABI_32
    A_long reserved_str[3];
    A_long reserved[10];
#else
    void* reserved_str[3];
    void* reserved[10];
#endif
};

/// The host's maths and text functions: all plain C, all in double precision.
struct PF_ANSICallbacks {
    using Unary = A_FpLong (*)(A_FpLong);
    using Binary = A_FpLong (*)(A_FpLong, A_FpLong);
    Unary atan;
    Binary atan2;
    Unary ceil, cos, exp, fabs, floor;
    Binary fmod, hypot;
    Unary log, log10;
    Binary pow;
    Unary sin, sqrt, tan;
    int (*sprintf)(A_char*, const A_char*, ...);
    A_char* (*strcpy)(A_char*, const A_char*);
    Unary asin, acos;
    A_long ansi_procs[1];
};

struct PF_ColorCallbacks {
    PF_UnusedCallback RGBtoHLS, HLStoRGB, RGBtoYIQ, YIQtoRGB;
    PF_UnusedCallback Luminance, Hue, Lightness, Saturation;
};

struct PF_UtilCallbacks {
    PF_UnusedCallback begin_sampling, subpixel_sample, area_sample, get_batch_func, end_sampling;
    PF_UnusedCallback composite_rect, blend, convolve, copy, fill, gaussian_kernel, iterate;
    PF_UnusedCallback premultiply, premultiply_color, new_world;
#if ZEL_ABI_32
    PF_UnusedCallback get_platform_refs;
#endif
    PF_UnusedCallback dispose_world, iterate_origin, iterate_lut, transfer_rect, transform_world;
    PF_Handle (*host_new_handle)(PF_HandleSize);
    void* (*host_lock_handle)(PF_Handle);
    void (*host_unlock_handle)(PF_Handle);
    void (*host_dispose_handle)(PF_Handle);  // null in the oldest hosts
    PF_UnusedCallback get_callback_addr, app;
    PF_ANSICallbacks ansi;
    PF_ColorCallbacks colorCB;
    PF_UnusedCallback get_platform_data;
#if ZEL_ABI_32
    PF_UnusedCallback get_cgraf_data;
#endif
    PF_HandleSize (*host_get_handle_size)(PF_Handle);
    PF_UnusedCallback iterate_origin_non_clip_src, iterate_generic;
    PF_Err (*host_resize_handle)(PF_HandleSize, PF_Handle*);
    PF_UnusedCallback subpixel_sample16, area_sample16, fill16, premultiply_color16, iterate16;
    PF_UnusedCallback iterate_origin16, iterate_origin_non_clip_src16;
    PF_UnusedCallback get_pixel_data8, get_pixel_data16;
    A_long reserved[1];
};

// --- what travels with every command -----------------------------------------

struct SPBasicSuite;

/// From the host to the effect.
struct PF_InData {
    PF_InteractCallbacks inter;
    PF_UtilCallbacks* utils;
    PF_ProgPtr effect_ref;  // the host's name for this effect; handed back in callbacks
    PF_Quality quality;
    PF_SpecVersion version;
    A_long serial_num;
    A_long appl_id;
    A_long num_params;  // input layer included
    A_long reserved;
    A_long what_cpu, what_fpu;
#if ZEL_ABI_32
    void* qd_globals;
#endif
    A_long current_time, time_step, total_time, local_time_step;
    A_u_long time_scale;
    PF_Field field;
    PF_Fixed shutter_angle;
    A_long width, height;
    PF_UnionableRect extent_hint;
    A_long output_origin_x, output_origin_y;
    PF_RationalScale downsample_x, downsample_y, pixel_aspect_ratio;
    PF_InFlags in_flags;
    PF_Handle global_data, sequence_data, frame_data;
    A_long start_sampL, dur_sampL, total_sampL;
    PF_SoundWorld src_snd;
    SPBasicSuite* pica_basicP;  // the door to the host's suites
    A_long pre_effect_source_origin_x, pre_effect_source_origin_y;
    PF_Fixed shutter_phase;
};

/// From the effect to the host.
struct PF_OutData {
    A_u_long my_version;
    A_char name[32];
    PF_Handle global_data;
    A_long num_params;
    PF_Handle sequence_data;
    A_long flat_sdata_size;
    PF_Handle frame_data;
    A_long width, height;
    PF_Point origin;
    PF_OutFlags out_flags;
    A_char return_msg[256];
    A_long start_sampL, dur_sampL;
    PF_SoundWorld dest_snd;
    PF_OutFlags2 out_flags2;
};

#pragma pack(pop)

#endif  // ZEL_USE_VENDOR_HEADERS

namespace zel::abi {

/// The label of a parameter. The vendor's newest kit hides the member behind a
/// macro of its own, so it is reached here only.
inline char* ParamName(PF_ParamDef& def) {
#if defined(PF_DEF_NAME)
    return def.PF_DEF_NAME;
#else
    return def.name;
#endif
}

/// The exported entry point of an effect module.
using EntryPoint = PF_Err(PF_Cmd, PF_InData*, PF_OutData*, PF_ParamDef* params[],
                          PF_LayerDef* output, void* extra);

}  // namespace zel::abi
