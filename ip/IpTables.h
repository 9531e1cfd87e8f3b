#pragma once

/// Start-up, constant tables and the small queries of each layout.

#include <cstdint>

/// Fills every table below, before a thread uses the library. Further calls rebuild the
/// same values; they may come on any thread, also while others use the tables.
void IpInitialize();

/// Counterpart of IpInitialize(); there is nothing to release.
void IpFinalize();

// --- constant tables: zero until IpInitialize(), read-only afterwards ---------

extern std::uint8_t unityLut8[256];     // entry i is i
extern std::uint16_t unityLut10[1024];  // entry i is i

// Black as 4:2:2 pairs, in the byte order of the name.
extern std::uint32_t g_blackYUYV8;  // Y Cb Y Cr
extern std::uint32_t g_blackUYVY8;  // Cb Y Cr Y

// Black in 10-bit codes: 0, 511, 511. The chroma middle is 0.5 x 1023 truncated.
extern std::uint32_t g_blackY10, g_blackU10, g_blackV10;

// Black as the four words of a v210 group of six pixels.
extern std::uint32_t g_blackV210Even[2];  // words 0 and 1
extern std::uint32_t g_blackV210Odd[2];   // words 2 and 3

/// Pixels that each black line holds.
inline constexpr int kIpBlackScanPixels = 2048;

// Black lines. The v210 one holds whole groups only: 341 of them are written.
extern std::uint8_t g_blackScanChar4[kIpBlackScanPixels * 4];
extern std::uint8_t g_blackScanShort4[kIpBlackScanPixels * 8];
extern std::uint8_t g_blackScanFloat4[kIpBlackScanPixels * 16];
extern std::uint8_t g_blackScanYUYV8[kIpBlackScanPixels * 2];
extern std::uint8_t g_blackScanUYVY8[kIpBlackScanPixels * 2];
extern std::uint8_t g_blackScanV210[(kIpBlackScanPixels + 5) / 6 * 16];

/// Address of the black line of a storage class.
void* IpScan_Black_Char4();
void* IpScan_Black_Short4();
void* IpScan_Black_Float4();
void* IpScan_Black_YUYV8();
void* IpScan_Black_UYVY8();
void* IpScan_Black_v210();

// --- row lengths --------------------------------------------------------------

/// Length of a row of `width` pixels, in bytes.
int IpScan_Pitch_Char4(int width);   // width x 4
int IpScan_Pitch_Short4(int width);  // width x 8
int IpScan_Pitch_Float4(int width);  // width x 16
int IpScan_Pitch_YUYV8(int width);   // width x 2
int IpScan_Pitch_UYVY8(int width);   // width x 2

/// (width x 4) / 6: the length in 32-bit words of the whole groups and of the
/// begun one, truncated. No line alignment; docs/quirks.md, "v210 pitch".
int IpScan_Pitch_v210(int width);

// --- range blackers -----------------------------------------------------------

/// Form of the range blackers: `count` units from unit `start` of a row.
using IpScanBlackFn = void(void* scan, int start, int count);

/// From byte 4 x start: `count` zero words of 32 bits.
void IpScan_Black_RGBA8(void* scan, int start, int count);
void IpScan_Black_BGRA8(void* scan, int start, int count);
void IpScan_Black_ARGB8(void* scan, int start, int count);
void IpScan_Black_DpxLe(void* scan, int start, int count);
void IpScan_Black_DpxBe(void* scan, int start, int count);

/// From byte 4 x start, although a pixel has 8 bytes: 2 x count zero words.
void IpScan_Black_RGBA16(void* scan, int start, int count);
void IpScan_Black_BGRA16(void* scan, int start, int count);
void IpScan_Black_ARGB16(void* scan, int start, int count);

/// As the 16-bit ones, so it clears twice the pixels asked for;
/// docs/quirks.md, "RGB10 blacker".
void IpScan_Black_RGB10(void* scan, int start, int count);

/// From byte 4 x start: count / 2 black pairs.
void IpScan_Black_YUYV8(void* scan, int start, int count);
void IpScan_Black_UYVY8(void* scan, int start, int count);

/// From byte 16 x start: `count` pixels of four zero floats.
void IpScan_Black_BGRA32Float(void* scan, int start, int count);

/// From byte 16 x (start / 6): count / 6 black groups.
void IpScan_Black_v210(void* scan, int start, int count);

// --- others -------------------------------------------------------------------

/// Always false, whatever is asked.
bool IpScan_Capable(int, int);

/// Exchanges the first byteCount / 4 words of a and b, in ascending order.
void IpScan_Swap(int* a, int* b, int byteCount);
