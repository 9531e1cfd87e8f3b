/// Tone operations on an identity curve, all three channels. Where an operation has a
/// plain form its row stands above the one in use.

#include "lut/CUtilLut.h"
#include "lut/reference/ToneOperations.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <vector>

namespace {

using Params = std::array<float, 128>;

struct Change {
    std::size_t entry;
    float value;
};

Params With(Params params, std::initializer_list<Change> changes) {
    for (const auto& [entry, value] : changes) params[entry] = value;
    return params;
}

/// Neutral controls of the four groups of brightness and gamma: three controls for all
/// channels and for each channel.
Params Groups(float first, float second, float third) {
    Params params{};
    for (std::size_t group = 0; group < 80; group += 20)
        for (const std::size_t controls : {1u, 5u, 10u, 15u})
            params = With(params, {{group + controls, first},
                                   {group + controls + 1, second},
                                   {group + controls + 2, third}});
    return params;
}

Params LogDefaults(float direction) {
    Params params{direction};
    for (const std::size_t controls : {1u, 6u, 12u, 18u})
        params = With(params, {{controls, 95.0f},
                               {controls + 1, 685.0f},
                               {controls + 2, 1.0f},
                               {controls + 3, 0.6f}});
    return params;
}

// --- settings -----------------------------------------------------------------

const Params kBalance{};
const Params kBalanceMaster = With(kBalance, {{1, 20.0f}});
const Params kBalanceRange = With(kBalance, {{7, 20.0f}});
const Params kBalanceAll =
    With(kBalance, {{2, 5.0f}, {3, -4.0f}, {8, 3.0f}, {15, 7.0f}, {22, 9.0f}});

const Params kTone = Groups(0.0f, 0.0f, 0.5f);
const Params kToneMaster = With(kTone, {{2, 20.0f}});
const Params kToneRange = With(kTone, {{22, 20.0f}});
const Params kToneAll =
    With(kTone, {{6, 5.0f}, {11, -4.0f}, {16, 9.0f}, {22, 3.0f}, {42, -7.0f}, {62, 8.0f}});

const Params kGamma = Groups(1.0f, 1.0f, 0.0f);
const Params kGammaMaster = With(kGamma, {{1, 1.2f}, {2, 1.1f}, {3, 2.0f}});
const Params kGammaRange = With(kGamma, {{21, 1.2f}, {22, 1.1f}, {23, 2.0f}});
const Params kGammaRangeRed = With(kGamma, {{25, 1.2f}, {26, 1.1f}, {27, 2.0f}});
const Params kGammaAll =
    With(kGamma, {{5, 1.1f}, {10, 1.2f}, {15, 1.3f}, {21, 1.4f}, {41, 1.5f}, {61, 1.6f}});

const Params kToLinear = LogDefaults(0.0f);
const Params kToLinearAll = With(kToLinear, {{6, 90.0f}, {12, 100.0f}, {20, 1.2f}});
const Params kToLog = LogDefaults(1.0f);
const Params kToLogAll = With(kToLog, {{6, 90.0f}, {12, 100.0f}, {20, 1.2f}});

const Params kSimpleTone{250.0f, 2000.0f};
const Params kSimpleGamma{12.0f};
const Params kGains{200.0f, 255.0f, 300.0f};
const Params kBlend{5.0f, 20.0f, 30.0f, 40.0f};
const Params kInvert{0.0f, 25.0f};

// --- rows ---------------------------------------------------------------------

class Identity {
public:
    Identity() {
        lut.Open();
        lut.Reset();
        entries.assign(lut.m_pLut, lut.m_pLut + 3072);
    }
    void Restore() { std::memcpy(lut.m_pLut, entries.data(), 3072 * sizeof(float)); }

    CUtilLut lut;

private:
    std::vector<float> entries;
};

void Operation(benchmark::State& state, void (CUtilLut::*apply)(float*), Params params) {
    Identity identity;
    for (auto _ : state) {
        identity.Restore();
        (identity.lut.*apply)(params.data());
        benchmark::ClobberMemory();
    }
}

using Reference = void(float* table, float whiteLevel, const float* params);

void Plain(benchmark::State& state, Reference* apply, const Params& params) {
    Identity identity;
    for (auto _ : state) {
        identity.Restore();
        apply(identity.lut.m_pLut, 1023.0f, params.data());
        benchmark::ClobberMemory();
    }
}

// clang-format off
#define ZEL_ROW(operation, setting, params) \
    BENCHMARK_CAPTURE(Operation, operation/setting, &CUtilLut::Apply##operation, params)
#define ZEL_ROWS(operation, setting, params)                                                       \
    BENCHMARK_CAPTURE(Plain, operation/setting, zel::lut::reference::Apply##operation, params);    \
    ZEL_ROW(operation, setting, params)

ZEL_ROWS(Gamma2,      neutral,             kGamma);
ZEL_ROWS(Gamma2,      master_sliders,      kGammaMaster);
ZEL_ROWS(Gamma2,      one_range,           kGammaRange);
ZEL_ROWS(Gamma2,      one_range_red_only,  kGammaRangeRed);
ZEL_ROWS(Gamma2,      all_different,       kGammaAll);

ZEL_ROWS(Log,         to_linear_equal,     kToLinear);
ZEL_ROWS(Log,         to_linear_different, kToLinearAll);
ZEL_ROWS(Log,         to_log_equal,        kToLog);
ZEL_ROWS(Log,         to_log_different,    kToLogAll);

ZEL_ROW (Balance2,    neutral,             kBalance);
ZEL_ROW (Balance2,    master_slider,       kBalanceMaster);
ZEL_ROW (Balance2,    one_range,           kBalanceRange);
ZEL_ROW (Balance2,    all_different,       kBalanceAll);

ZEL_ROW (Brightness2, neutral,             kTone);
ZEL_ROW (Brightness2, master_slider,       kToneMaster);
ZEL_ROW (Brightness2, one_range,           kToneRange);
ZEL_ROW (Brightness2, all_different,       kToneAll);

ZEL_ROW (Brightness,  brighter_steeper,    kSimpleTone);
ZEL_ROW (Gamma,       twelve_tenths,       kSimpleGamma);
ZEL_ROW (Balance,     gains,               kGains);
ZEL_ROW (Arithmetic,  blend,               kBlend);
ZEL_ROW (Invert,      quarter_kept,        kInvert);
// clang-format on

}  // namespace
