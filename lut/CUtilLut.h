#pragma once

/// The colour transfer curve that an effect builds and a render applies.
///
/// Three channel tables (0 red, 1 green, 2 blue) of 1024 single-precision entries.
/// Entry i is the output for input code i, on the same 0..1023 scale, not
/// necessarily whole. Operations rewrite the tables in place; the exports turn
/// them into integers by truncation.
///
/// A new object is closed. Open() or Copy() opens it; every operation and export
/// needs an open object and checks nothing. Operations read fixed entries of the
/// effect's parameter array and never write it. One object is used by one thread
/// at a time; different objects are independent.
class CUtilLut {
public:
    static constexpr int kEntries = 1024;  // of one channel
    static constexpr int kChannels = 3;

    /// Closed, white level 1023. Fills the tonal weights on first use.
    CUtilLut();
    CUtilLut(const CUtilLut&) = delete;
    CUtilLut& operator=(const CUtilLut&) = delete;

    // The order of the virtual functions is part of the class's interface.

    /// Releases the tables.
    virtual ~CUtilLut();

    /// Takes over the white level and a copy of the tables of `source`, which must
    /// be open; null does nothing. Throws std::bad_alloc and is closed then.
    virtual void Copy(CUtilLut* source);

    /// Allocates the tables, uninitialised, and returns 0. Throws std::bad_alloc and
    /// stays closed when there is no memory. Opening an open object loses its tables.
    virtual int Open();

    /// Releases the tables if there are any; returns 0.
    virtual int Close();

    /// Identity: entry i of every channel becomes i.
    virtual void Reset();

    /// The largest output code value; any float, unchecked.
    virtual void SetWhiteLevel(float level);
    virtual float QueryWhiteLevel();

    // The tone operations. Unless said otherwise a result is clamped to 0..white level
    // and NaN is stored as it comes; out-of-range parameters are clamped; a weight is
    // looked up at the entry's own value, truncated and limited to 0..1023, NaN at 0.

    /// Brightness (params[0], 25000 adds the white level) and contrast (params[1],
    /// +-10000 is the full range, about 511.5 or a lower white level), alike for all
    /// channels and not limited. Brightness acts first when contrast is above 0, last
    /// otherwise. Results are clamped to 0..1023, whatever the white level.
    virtual void ApplyBrightness(float* params);

    /// Film log codes to linear light where params[0] is below 1, else (NaN included)
    /// back. Black and white reference (codes), display and film gamma: for all channels
    /// params 1-4, for red 6-9, green 12-15, blue 18-21, whose departures from 95, 685,
    /// 1 and 0.6 are added. References are clamped to 0..white, gammas to 0..5. The
    /// white level counts as 0..1023. A gamma of 0 is not guarded: infinities and NaN.
    virtual void ApplyLog(float* params);

    /// Power of params[0] / 10 on a scale of 1024, alike for all channels. The white
    /// level counts as 0..1023.
    virtual void ApplyGamma(float* params);

    /// Gamma and gain (1 is neutral, resolved to 0..10) and offset (percent of white,
    /// +-100) by tonal range: groups from params 0 master, 20 highlights, 40 midtones and
    /// 60 shadows, in each 1-3 for all channels, 5-7 red, 10-12 green, 15-17 blue. Each
    /// range raises gain x entry + offset to 1 / gamma on a scale of 1024, weighted. A
    /// negative base can give NaN. The white level counts as 0..1023.
    virtual void ApplyGamma2(float* params);

    /// Brightness and contrast (percent, resolved to +-100) and pivot (resolved to 0..1)
    /// by tonal range, in the same entries as gamma, gain and offset above. Adds the
    /// weighted brightness, truncates to whole codes (NaN becomes 0), then applies the
    /// weighted contrast curves. Results are clamped to 0..white level, which counts as
    /// 0..1023 there but as it is in the arithmetic. Flattening about 0 gives NaN.
    virtual void ApplyBrightness2(float* params);

    /// Gain per channel: params[0..2] on a 0..255 scale (255 is unity). Results are
    /// clamped to 0..1023, whatever the white level.
    virtual void ApplyBalance(float* params);

    /// Colour balance by tonal range: per channel percentages for master (params 1,
    /// 2-4), highlights (7, 8-10), midtones (13, 14-16) and shadows (19, 20-22), all
    /// channels first, then red, green, blue. Each range scales the entries by its
    /// percentage, weighted by the range's tonal weight. Results are clamped to
    /// 0..white level. Entries must lie in 0..1023 to begin with.
    virtual void ApplyBalance2(float* params);

    /// Combines every entry t with an operand: params[1..3] per channel, on a 0..255
    /// scale, made a code o in 0..1023 (n: its whole part). params[0], truncated, picks
    ///   0 t and n    3 t + n                       6 the smaller    9 0 where t > o
    ///   1 t or n     4 t - n                       7 the larger    11 t x o / 1023
    ///   2 t xor n    5 blend with 1023 - t by o    8 0 where t < o  else t
    /// Codes 0 to 4 work on the whole part of t, NaN as 0.
    virtual void ApplyArithmetic(float* params);

    /// Blends channels with their inverse 1023 - t; params[1] is the percentage of t
    /// that stays, 0..100. params[0], truncated: 0 all channels, 1 or 2 that channel
    /// alone, anything else none.
    virtual void ApplyInvert(float* params);

    /// 256 bytes per channel: byte j is entry 4j x 0.25, truncated, low 8 bits. NaN
    /// and values outside the int32 range give 0 here and in the 16-bit export.
    virtual void Build8Bit(unsigned char* c0, unsigned char* c1, unsigned char* c2);

    /// 1024 cells per channel: entry i truncated, low 16 bits.
    virtual void Build10Bit(unsigned short* c0, unsigned short* c1, unsigned short* c2);

    /// 1024 cells per channel: entry i raised to 0, truncated; 2^32 and above give
    /// all bits set, NaN gives 0.
    virtual void Build10Bit(unsigned int* c0, unsigned int* c1, unsigned int* c2);

    /// Packed device table, 6144 bytes: 512 words of 32 bits per channel in host byte
    /// order, entry 2k in bits 6..15 and entry 2k + 1 in bits 22..31. The count is
    /// ignored.
    virtual void BuildZelLut(void* destination, int count);

    /// The start of each channel's 1024 entries.
    void QueryBasePointers(float** channel0, float** channel1, float** channel2);

    /// Contrast curve about a pivot: value and pivot on the code scale, contrast in
    /// percent. Above 0 the curve steepens and ends at 0 and the white level, 100 is a
    /// threshold at the pivot; below 0 it flattens, -100 is the pivot everywhere; beyond
    /// +-100 (and for NaN) the result is 0. Pivot 0: a threshold just above the white
    /// level when steepening, NaN when flattening.
    float ContrastFunction(float value, float contrast, float pivot);

    // The two fields of the object, alone behind the virtual-table pointer.
    float* m_pLut;        // kChannels x kEntries floats, owned; null when closed
    float m_fWhiteLevel;  // largest output code

    // Tonal weights of each input code, x = code / 1023: (1 - x)^2, 2x(1 - x) and
    // x^2, which sum to 1. Filled once by the first object; read-only afterwards.
    static bool m_bInitialized;
    static float m_shadows[kEntries];
    static float m_midtones[kEntries];
    static float m_highlights[kEntries];

private:
    static void FillWeights(float whiteLevel);
};
