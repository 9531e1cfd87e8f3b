#pragma once

/// The host's binary interface: sizes and offsets of both layouts, asserted.
/// First figure: 32-bit, packed to 2 bytes. Second figure: 64-bit.
/// Including this header anywhere is the test; it defines nothing.

#include "abi/HostCodes.h"
#include "abi/HostTypes.h"
#include "abi/PixelFormats.h"
#include "abi/Suites.h"

#include <cstddef>

#define ZEL_SIZE(type, size32, size64) \
    static_assert(sizeof(type) == (ZEL_ABI_32 ? (size32) : (size64)), #type)
#define ZEL_AT(type, member, offset32, offset64)                                    \
    static_assert(offsetof(type, member) == (ZEL_ABI_32 ? (offset32) : (offset64)), \
                  #type "." #member)

// clang-format off
static_assert(sizeof(A_long) == 4 && sizeof(A_short) == 2 && sizeof(PF_Boolean) == 1);
static_assert(sizeof(PF_Cmd) == 4 && sizeof(PF_Err) == 4 && sizeof(PrPixelFormat) == 4);
static_assert(sizeof(SPErr) == 4 && sizeof(PF_FpLong) == 8 && sizeof(PF_FpShort) == 4);

ZEL_SIZE(PF_SpecVersion,                                              4,   4);
ZEL_AT  (PF_SpecVersion, major,                                       0,   0);
ZEL_AT  (PF_SpecVersion, minor,                                       2,   2);
ZEL_SIZE(PF_RationalScale,                                            8,   8);
ZEL_AT  (PF_RationalScale, num,                                       0,   0);
ZEL_AT  (PF_RationalScale, den,                                       4,   4);
ZEL_SIZE(PF_Point,                                                    4,   8);
ZEL_AT  (PF_Point, h,                                                 2,   0);
ZEL_AT  (PF_Point, v,                                                 0,   4);
ZEL_SIZE(PF_Rect,                                                     8,  16);
ZEL_AT  (PF_Rect, left,                                               2,   0);
ZEL_AT  (PF_Rect, top,                                                0,   4);
ZEL_AT  (PF_Rect, right,                                              6,   8);
ZEL_AT  (PF_Rect, bottom,                                             4,  12);
ZEL_SIZE(PF_Pixel,                                                    4,   4);
ZEL_AT  (PF_Pixel, alpha,                                             0,   0);
ZEL_AT  (PF_Pixel, red,                                               1,   1);
ZEL_AT  (PF_Pixel, green,                                             2,   2);
ZEL_AT  (PF_Pixel, blue,                                              3,   3);
ZEL_SIZE(PF_SoundFormatInfo,                                         14,  16);
ZEL_AT  (PF_SoundFormatInfo, rateF,                                   0,   0);
ZEL_AT  (PF_SoundFormatInfo, num_channels,                            8,   8);
ZEL_AT  (PF_SoundFormatInfo, format,                                 10,  10);
ZEL_AT  (PF_SoundFormatInfo, sample_size,                            12,  12);
ZEL_SIZE(PF_SoundWorld,                                              22,  32);
ZEL_AT  (PF_SoundWorld, fi,                                           0,   0);
ZEL_AT  (PF_SoundWorld, num_samples,                                 14,  16);
ZEL_AT  (PF_SoundWorld, dataP,                                       18,  24);

ZEL_SIZE(PF_LayerDef,                                                76, 120);
ZEL_AT  (PF_LayerDef, reserved0,                                      0,   0);
ZEL_AT  (PF_LayerDef, reserved1,                                      4,   8);
ZEL_AT  (PF_LayerDef, world_flags,                                    8,  16);
ZEL_AT  (PF_LayerDef, data,                                          12,  24);
ZEL_AT  (PF_LayerDef, rowbytes,                                      16,  32);
ZEL_AT  (PF_LayerDef, width,                                         20,  36);
ZEL_AT  (PF_LayerDef, height,                                        24,  40);
ZEL_AT  (PF_LayerDef, extent_hint,                                   28,  44);
ZEL_AT  (PF_LayerDef, platform_ref,                                  36,  64);
#if ZEL_ABI_32
static_assert(offsetof(PF_LayerDef, reserved) == 40);
#else
static_assert(offsetof(PF_LayerDef, reserved_long1) == 72);
static_assert(offsetof(PF_LayerDef, reserved_long4) == 80);
static_assert(offsetof(PF_LayerDef, pix_aspect_ratio) == 88);
static_assert(offsetof(PF_LayerDef, reserved_long2) == 96);
static_assert(offsetof(PF_LayerDef, origin_x) == 104);
static_assert(offsetof(PF_LayerDef, origin_y) == 108);
static_assert(offsetof(PF_LayerDef, reserved_long3) == 112);
#endif
ZEL_AT  (PF_LayerDef, dephault,                                      72, 116);

ZEL_SIZE(PF_FixedSliderDef,                                          92,  92);
ZEL_AT  (PF_FixedSliderDef, value,                                    0,   0);
ZEL_AT  (PF_FixedSliderDef, value_str,                                4,   4);
ZEL_AT  (PF_FixedSliderDef, value_desc,                              36,  36);
ZEL_AT  (PF_FixedSliderDef, valid_min,                               68,  68);
ZEL_AT  (PF_FixedSliderDef, valid_max,                               72,  72);
ZEL_AT  (PF_FixedSliderDef, slider_min,                              76,  76);
ZEL_AT  (PF_FixedSliderDef, slider_max,                              80,  80);
ZEL_AT  (PF_FixedSliderDef, dephault,                                84,  84);
ZEL_AT  (PF_FixedSliderDef, precision,                               88,  88);
ZEL_AT  (PF_FixedSliderDef, display_flags,                           90,  90);

ZEL_SIZE(PF_CheckBoxDef,                                             12,  16);
ZEL_AT  (PF_CheckBoxDef, value,                                       0,   0);
ZEL_AT  (PF_CheckBoxDef, dephault,                                    4,   4);
ZEL_AT  (PF_CheckBoxDef, reserved,                                    5,   5);
ZEL_AT  (PF_CheckBoxDef, reserved1,                                   6,   6);
ZEL_AT  (PF_CheckBoxDef, u,                                           8,   8);
ZEL_AT  (PF_CheckBoxDef, u.nameptr,                                   8,   8);

ZEL_SIZE(PF_FloatSliderDef,                                          80,  88);
ZEL_AT  (PF_FloatSliderDef, value,                                    0,   0);
ZEL_AT  (PF_FloatSliderDef, phase,                                    8,   8);
ZEL_AT  (PF_FloatSliderDef, value_desc,                              16,  16);
ZEL_AT  (PF_FloatSliderDef, valid_min,                               48,  48);
ZEL_AT  (PF_FloatSliderDef, valid_max,                               52,  52);
ZEL_AT  (PF_FloatSliderDef, slider_min,                              56,  56);
ZEL_AT  (PF_FloatSliderDef, slider_max,                              60,  60);
ZEL_AT  (PF_FloatSliderDef, dephault,                                64,  64);
ZEL_AT  (PF_FloatSliderDef, precision,                               68,  68);
ZEL_AT  (PF_FloatSliderDef, display_flags,                           70,  70);
ZEL_AT  (PF_FloatSliderDef, fs_flags,                                72,  72);
ZEL_AT  (PF_FloatSliderDef, curve_tolerance,                         76,  76);
#if !ZEL_ABI_32
static_assert(offsetof(PF_FloatSliderDef, useExponent) == 80);
static_assert(offsetof(PF_FloatSliderDef, exponent) == 84);
#endif

ZEL_SIZE(PF_ParamDefUnion,                                           92, 120);
ZEL_AT  (PF_ParamDefUnion, ld,                                        0,   0);
ZEL_AT  (PF_ParamDefUnion, fd,                                        0,   0);
ZEL_AT  (PF_ParamDefUnion, bd,                                        0,   0);
ZEL_AT  (PF_ParamDefUnion, fs_d,                                      0,   0);
ZEL_SIZE(PF_ParamDef,                                               148, 176);
ZEL_AT  (PF_ParamDef, uu,                                             0,   0);
ZEL_AT  (PF_ParamDef, uu.id,                                          0,   0);
ZEL_AT  (PF_ParamDef, uu.change_flags,                                0,   0);
ZEL_AT  (PF_ParamDef, ui_flags,                                       4,   4);
ZEL_AT  (PF_ParamDef, ui_width,                                       8,   8);
ZEL_AT  (PF_ParamDef, ui_height,                                     10,  10);
ZEL_AT  (PF_ParamDef, param_type,                                    12,  12);
#if !defined(PF_DEF_NAME)
ZEL_AT  (PF_ParamDef, name,                                          16,  16);
#endif
ZEL_AT  (PF_ParamDef, flags,                                         48,  48);
ZEL_AT  (PF_ParamDef, unused,                                        52,  52);
ZEL_AT  (PF_ParamDef, u,                                             56,  56);

ZEL_SIZE(PF_InteractCallbacks,                                       88, 176);
ZEL_AT  (PF_InteractCallbacks, checkout_param,                        0,   0);
ZEL_AT  (PF_InteractCallbacks, checkin_param,                         4,   8);
ZEL_AT  (PF_InteractCallbacks, add_param,                             8,  16);
ZEL_AT  (PF_InteractCallbacks, abort,                                12,  24);
ZEL_AT  (PF_InteractCallbacks, progress,                             16,  32);
ZEL_AT  (PF_InteractCallbacks, register_ui,                          20,  40);
ZEL_AT  (PF_InteractCallbacks, checkout_layer_audio,                 24,  48);
ZEL_AT  (PF_InteractCallbacks, checkin_layer_audio,                  28,  56);
ZEL_AT  (PF_InteractCallbacks, get_audio_data,                       32,  64);
ZEL_AT  (PF_InteractCallbacks, reserved_str,                         36,  72);
ZEL_AT  (PF_InteractCallbacks, reserved,                             48,  96);

ZEL_SIZE(PF_ANSICallbacks,                                           80, 160);
ZEL_AT  (PF_ANSICallbacks, atan,                                      0,   0);
ZEL_AT  (PF_ANSICallbacks, atan2,                                     4,   8);
ZEL_AT  (PF_ANSICallbacks, ceil,                                      8,  16);
ZEL_AT  (PF_ANSICallbacks, cos,                                      12,  24);
ZEL_AT  (PF_ANSICallbacks, exp,                                      16,  32);
ZEL_AT  (PF_ANSICallbacks, fabs,                                     20,  40);
ZEL_AT  (PF_ANSICallbacks, floor,                                    24,  48);
ZEL_AT  (PF_ANSICallbacks, fmod,                                     28,  56);
ZEL_AT  (PF_ANSICallbacks, hypot,                                    32,  64);
ZEL_AT  (PF_ANSICallbacks, log,                                      36,  72);
ZEL_AT  (PF_ANSICallbacks, log10,                                    40,  80);
ZEL_AT  (PF_ANSICallbacks, pow,                                      44,  88);
ZEL_AT  (PF_ANSICallbacks, sin,                                      48,  96);
ZEL_AT  (PF_ANSICallbacks, sqrt,                                     52, 104);
ZEL_AT  (PF_ANSICallbacks, tan,                                      56, 112);
ZEL_AT  (PF_ANSICallbacks, sprintf,                                  60, 120);
ZEL_AT  (PF_ANSICallbacks, strcpy,                                   64, 128);
ZEL_AT  (PF_ANSICallbacks, asin,                                     68, 136);
ZEL_AT  (PF_ANSICallbacks, acos,                                     72, 144);
ZEL_AT  (PF_ANSICallbacks, ansi_procs,                               76, 152);

ZEL_SIZE(PF_ColorCallbacks,                                          32,  64);
ZEL_AT  (PF_ColorCallbacks, RGBtoHLS,                                 0,   0);
ZEL_AT  (PF_ColorCallbacks, HLStoRGB,                                 4,   8);
ZEL_AT  (PF_ColorCallbacks, RGBtoYIQ,                                 8,  16);
ZEL_AT  (PF_ColorCallbacks, YIQtoRGB,                                12,  24);
ZEL_AT  (PF_ColorCallbacks, Luminance,                               16,  32);
ZEL_AT  (PF_ColorCallbacks, Hue,                                     20,  40);
ZEL_AT  (PF_ColorCallbacks, Lightness,                               24,  48);
ZEL_AT  (PF_ColorCallbacks, Saturation,                              28,  56);
ZEL_SIZE(PF_UtilCallbacks,                                          284, 552);
ZEL_AT  (PF_UtilCallbacks, begin_sampling,                            0,   0);
ZEL_AT  (PF_UtilCallbacks, subpixel_sample,                           4,   8);
ZEL_AT  (PF_UtilCallbacks, area_sample,                               8,  16);
#if ZEL_ABI_32 || !defined(ZEL_USE_VENDOR_HEADERS)  // renamed in the 64-bit kits
ZEL_AT  (PF_UtilCallbacks, get_batch_func,                           12,  24);
#endif
ZEL_AT  (PF_UtilCallbacks, end_sampling,                             16,  32);
ZEL_AT  (PF_UtilCallbacks, composite_rect,                           20,  40);
ZEL_AT  (PF_UtilCallbacks, blend,                                    24,  48);
ZEL_AT  (PF_UtilCallbacks, convolve,                                 28,  56);
ZEL_AT  (PF_UtilCallbacks, copy,                                     32,  64);
ZEL_AT  (PF_UtilCallbacks, fill,                                     36,  72);
ZEL_AT  (PF_UtilCallbacks, gaussian_kernel,                          40,  80);
ZEL_AT  (PF_UtilCallbacks, iterate,                                  44,  88);
ZEL_AT  (PF_UtilCallbacks, premultiply,                              48,  96);
ZEL_AT  (PF_UtilCallbacks, premultiply_color,                        52, 104);
ZEL_AT  (PF_UtilCallbacks, new_world,                                56, 112);
#if ZEL_ABI_32
static_assert(offsetof(PF_UtilCallbacks, get_platform_refs) == 60);
#endif
ZEL_AT  (PF_UtilCallbacks, dispose_world,                            64, 120);
ZEL_AT  (PF_UtilCallbacks, iterate_origin,                           68, 128);
ZEL_AT  (PF_UtilCallbacks, iterate_lut,                              72, 136);
ZEL_AT  (PF_UtilCallbacks, transfer_rect,                            76, 144);
ZEL_AT  (PF_UtilCallbacks, transform_world,                          80, 152);
ZEL_AT  (PF_UtilCallbacks, host_new_handle,                          84, 160);
ZEL_AT  (PF_UtilCallbacks, host_lock_handle,                         88, 168);
ZEL_AT  (PF_UtilCallbacks, host_unlock_handle,                       92, 176);
ZEL_AT  (PF_UtilCallbacks, host_dispose_handle,                      96, 184);
ZEL_AT  (PF_UtilCallbacks, get_callback_addr,                       100, 192);
ZEL_AT  (PF_UtilCallbacks, app,                                     104, 200);
ZEL_AT  (PF_UtilCallbacks, ansi,                                    108, 208);
ZEL_AT  (PF_UtilCallbacks, colorCB,                                 188, 368);
ZEL_AT  (PF_UtilCallbacks, get_platform_data,                       220, 432);
#if ZEL_ABI_32
static_assert(offsetof(PF_UtilCallbacks, get_cgraf_data) == 224);
#endif
ZEL_AT  (PF_UtilCallbacks, host_get_handle_size,                    228, 440);
ZEL_AT  (PF_UtilCallbacks, iterate_origin_non_clip_src,             232, 448);
ZEL_AT  (PF_UtilCallbacks, iterate_generic,                         236, 456);
ZEL_AT  (PF_UtilCallbacks, host_resize_handle,                      240, 464);
ZEL_AT  (PF_UtilCallbacks, subpixel_sample16,                       244, 472);
ZEL_AT  (PF_UtilCallbacks, area_sample16,                           248, 480);
ZEL_AT  (PF_UtilCallbacks, fill16,                                  252, 488);
ZEL_AT  (PF_UtilCallbacks, premultiply_color16,                     256, 496);
ZEL_AT  (PF_UtilCallbacks, iterate16,                               260, 504);
ZEL_AT  (PF_UtilCallbacks, iterate_origin16,                        264, 512);
ZEL_AT  (PF_UtilCallbacks, iterate_origin_non_clip_src16,           268, 520);
ZEL_AT  (PF_UtilCallbacks, get_pixel_data8,                         272, 528);
ZEL_AT  (PF_UtilCallbacks, get_pixel_data16,                        276, 536);
ZEL_AT  (PF_UtilCallbacks, reserved,                                280, 544);

ZEL_SIZE(PF_InData,                                                 274, 408);
ZEL_AT  (PF_InData, inter,                                            0,   0);
ZEL_AT  (PF_InData, utils,                                           88, 176);
ZEL_AT  (PF_InData, effect_ref,                                      92, 184);
ZEL_AT  (PF_InData, quality,                                         96, 192);
ZEL_AT  (PF_InData, version,                                        100, 196);
ZEL_AT  (PF_InData, serial_num,                                     104, 200);
ZEL_AT  (PF_InData, appl_id,                                        108, 204);
ZEL_AT  (PF_InData, num_params,                                     112, 208);
ZEL_AT  (PF_InData, reserved,                                       116, 212);
ZEL_AT  (PF_InData, what_cpu,                                       120, 216);
ZEL_AT  (PF_InData, what_fpu,                                       124, 220);
#if ZEL_ABI_32
static_assert(offsetof(PF_InData, qd_globals) == 128);
#endif
ZEL_AT  (PF_InData, current_time,                                   132, 224);
ZEL_AT  (PF_InData, time_step,                                      136, 228);
ZEL_AT  (PF_InData, total_time,                                     140, 232);
ZEL_AT  (PF_InData, local_time_step,                                144, 236);
ZEL_AT  (PF_InData, time_scale,                                     148, 240);
ZEL_AT  (PF_InData, field,                                          152, 244);
ZEL_AT  (PF_InData, shutter_angle,                                  156, 248);
ZEL_AT  (PF_InData, width,                                          160, 252);
ZEL_AT  (PF_InData, height,                                         164, 256);
ZEL_AT  (PF_InData, extent_hint,                                    168, 260);
ZEL_AT  (PF_InData, output_origin_x,                                176, 276);
ZEL_AT  (PF_InData, output_origin_y,                                180, 280);
ZEL_AT  (PF_InData, downsample_x,                                   184, 284);
ZEL_AT  (PF_InData, downsample_y,                                   192, 292);
ZEL_AT  (PF_InData, pixel_aspect_ratio,                             200, 300);
ZEL_AT  (PF_InData, in_flags,                                       208, 308);
ZEL_AT  (PF_InData, global_data,                                    212, 312);
ZEL_AT  (PF_InData, sequence_data,                                  216, 320);
ZEL_AT  (PF_InData, frame_data,                                     220, 328);
ZEL_AT  (PF_InData, start_sampL,                                    224, 336);
ZEL_AT  (PF_InData, dur_sampL,                                      228, 340);
ZEL_AT  (PF_InData, total_sampL,                                    232, 344);
ZEL_AT  (PF_InData, src_snd,                                        236, 352);
ZEL_AT  (PF_InData, pica_basicP,                                    258, 384);
ZEL_AT  (PF_InData, pre_effect_source_origin_x,                     262, 392);
ZEL_AT  (PF_InData, pre_effect_source_origin_y,                     266, 396);
ZEL_AT  (PF_InData, shutter_phase,                                  270, 400);

ZEL_SIZE(PF_OutData,                                                362, 408);
ZEL_AT  (PF_OutData, my_version,                                      0,   0);
ZEL_AT  (PF_OutData, name,                                            4,   4);
ZEL_AT  (PF_OutData, global_data,                                    36,  40);
ZEL_AT  (PF_OutData, num_params,                                     40,  48);
ZEL_AT  (PF_OutData, sequence_data,                                  44,  56);
ZEL_AT  (PF_OutData, flat_sdata_size,                                48,  64);
ZEL_AT  (PF_OutData, frame_data,                                     52,  72);
ZEL_AT  (PF_OutData, width,                                          56,  80);
ZEL_AT  (PF_OutData, height,                                         60,  84);
ZEL_AT  (PF_OutData, origin,                                         64,  88);
ZEL_AT  (PF_OutData, out_flags,                                      68,  96);
ZEL_AT  (PF_OutData, return_msg,                                     72, 100);
ZEL_AT  (PF_OutData, start_sampL,                                   328, 356);
ZEL_AT  (PF_OutData, dur_sampL,                                     332, 360);
ZEL_AT  (PF_OutData, dest_snd,                                      336, 368);
ZEL_AT  (PF_OutData, out_flags2,                                    358, 400);

ZEL_SIZE(SPBasicSuite,                                               28,  56);
ZEL_AT  (SPBasicSuite, AcquireSuite,                                  0,   0);
ZEL_AT  (SPBasicSuite, ReleaseSuite,                                  4,   8);
ZEL_AT  (SPBasicSuite, IsEqual,                                       8,  16);
ZEL_AT  (SPBasicSuite, AllocateBlock,                                12,  24);
ZEL_AT  (SPBasicSuite, FreeBlock,                                    16,  32);
ZEL_AT  (SPBasicSuite, ReallocateBlock,                              20,  40);
ZEL_AT  (SPBasicSuite, Undefined,                                    24,  48);

ZEL_SIZE(PF_PixelFormatSuite1,                                       32,  64);
ZEL_AT  (PF_PixelFormatSuite1, AddSupportedPixelFormat,               0,   0);
ZEL_AT  (PF_PixelFormatSuite1, ClearSupportedPixelFormats,            4,   8);
ZEL_AT  (PF_PixelFormatSuite1, NewWorldOfPixelFormat,                 8,  16);
ZEL_AT  (PF_PixelFormatSuite1, DisposeWorld,                         12,  24);
ZEL_AT  (PF_PixelFormatSuite1, GetPixelFormat,                       16,  32);
ZEL_AT  (PF_PixelFormatSuite1, GetBlackForPixelFormat,               20,  40);
ZEL_AT  (PF_PixelFormatSuite1, GetWhiteForPixelFormat,               24,  48);
ZEL_AT  (PF_PixelFormatSuite1, ConvertColorToPixelFormattedData,     28,  56);
// clang-format on

#undef ZEL_AT
#undef ZEL_SIZE
