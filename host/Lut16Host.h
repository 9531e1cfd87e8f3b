#pragma once

/// Table look-ups over 16-bit frames on the hosts' own scale, 0..32768.
///
/// A sample stands for the nearest of the 1024 codes, samples above white for white, and
/// a code found is stored as the nearest sample: the samples of all codes pass the
/// identity unchanged, white and black are exact, and so is alpha at both ends. Frames
/// and tables are those of IpFrame_Lut_BGRA16 and IpFrame_Lut_ARGB16.

namespace zel {

void LutBGRA16Host(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height,
                   void* tableR, void* tableG, void* tableB);
void LutARGB16Host(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height,
                   void* tableR, void* tableG, void* tableB);

}  // namespace zel
