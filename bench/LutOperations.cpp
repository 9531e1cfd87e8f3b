/// Tone operations on an identity curve, all three channels. Where an operation has a
/// plain form its row stands above the one in use.

#include "lut/CUtilLut.h"
#include "lut/reference/ToneOperations.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <string>

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

using Apply = void (CUtilLut::*)(float*);
using Plain = void (*)(float* table, float whiteLevel, const float* params);

struct Row {
    const char* name;
    const Params& params;
    Apply apply;
    Plain plain = nullptr;
};

constexpr Apply kGamma2 = &CUtilLut::ApplyGamma2;
constexpr Apply kLog = &CUtilLut::ApplyLog;
constexpr Apply kBalance2 = &CUtilLut::ApplyBalance2;
constexpr Apply kBrightness2 = &CUtilLut::ApplyBrightness2;

// clang-format off
const Row kRows[] = {
    {"Gamma2/neutral",              kGamma,         kGamma2, zel::lut::reference::ApplyGamma2},
    {"Gamma2/master sliders",       kGammaMaster,   kGamma2, zel::lut::reference::ApplyGamma2},
    {"Gamma2/one range",            kGammaRange,    kGamma2, zel::lut::reference::ApplyGamma2},
    {"Gamma2/one range, red alone", kGammaRangeRed, kGamma2, zel::lut::reference::ApplyGamma2},
    {"Gamma2/all different",        kGammaAll,      kGamma2, zel::lut::reference::ApplyGamma2},
    {"Log/to linear",               kToLinear,      kLog,    zel::lut::reference::ApplyLog},
    {"Log/to linear, different",    kToLinearAll,   kLog,    zel::lut::reference::ApplyLog},
    {"Log/to log",                  kToLog,         kLog,    zel::lut::reference::ApplyLog},
    {"Log/to log, different",       kToLogAll,      kLog,    zel::lut::reference::ApplyLog},
    {"Balance2/neutral",            kBalance,       kBalance2},
    {"Balance2/master slider",      kBalanceMaster, kBalance2},
    {"Balance2/one range",          kBalanceRange,  kBalance2},
    {"Balance2/all different",      kBalanceAll,    kBalance2},
    {"Brightness2/neutral",         kTone,          kBrightness2},
    {"Brightness2/master slider",   kToneMaster,    kBrightness2},
    {"Brightness2/one range",       kToneRange,     kBrightness2},
    {"Brightness2/all different",   kToneAll,       kBrightness2},
    {"Brightness",                  kSimpleTone,    &CUtilLut::ApplyBrightness},
    {"Gamma",                       kSimpleGamma,   &CUtilLut::ApplyGamma},
    {"Balance",                     kGains,         &CUtilLut::ApplyBalance},
    {"Arithmetic",                  kBlend,         &CUtilLut::ApplyArithmetic},
    {"Invert",                      kInvert,        &CUtilLut::ApplyInvert},
};
// clang-format on

/// Times `build` on an identity curve that is restored every time.
template <class Build>
void Run(benchmark::State& state, Build build) {
    CUtilLut identity, lut;
    identity.Open();
    identity.Reset();
    lut.Copy(&identity);
    for (auto _ : state) {
        std::memcpy(lut.m_pLut, identity.m_pLut, 3072 * sizeof(float));
        build(lut);
        benchmark::ClobberMemory();
    }
}

[[maybe_unused]] const bool kRegistered = [] {
    for (const Row& row : kRows) {
        const std::string name = row.name;
        if (row.plain)
            benchmark::RegisterBenchmark((name + "/plain").c_str(), [&row](benchmark::State& s) {
                Run(s, [&](CUtilLut& lut) { row.plain(lut.m_pLut, 1023.0f, row.params.data()); });
            });
        benchmark::RegisterBenchmark(name.c_str(), [&row](benchmark::State& s) {
            Params params = row.params;
            Run(s, [&](CUtilLut& lut) { (lut.*row.apply)(params.data()); });
        });
    }
    return true;
}();

}  // namespace
