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

    virtual void ApplyBrightness(float* params);
    virtual void ApplyLog(float* params);
    virtual void ApplyGamma(float* params);
    virtual void ApplyGamma2(float* params);
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

    virtual void ApplyArithmetic(float* params);
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

    /// Contrast curve about a pivot: x on the code scale, contrast in percent.
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
