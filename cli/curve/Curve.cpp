#include "cli/curve/Curve.h"

#include "abi/HostCodes.h"
#include "effects/CAEFxLutBalance.h"
#include "effects/CAEFxLutBrightness.h"
#include "effects/CAEFxLutGamma.h"
#include "effects/CAEFxLutLog.h"
#include "headless/Error.h"
#include "lut/CUtilLut.h"
#include "lut/LogControls.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>

namespace zel {

namespace {

using ValueArray = OperationParams;
static_assert(std::tuple_size_v<ValueArray> == kAEFxMaxValues);

/// The array that an effect's BuildLut() takes, as a render gathers it.
ValueArray GatherValues(const ParameterValues& values) {
    ValueArray gathered{};
    for (const Parameter& p : values.List().All())
        if (p.IsSettable() && p.index <= kAEFxMaxValues)
            gathered[static_cast<std::size_t>(p.index - 1)] = static_cast<float>(values.Get(p));
    return gathered;
}

std::unique_ptr<CAEFxLut> EffectNamed(const std::string& name) {
    std::unique_ptr<CAEFxLut> effects[] = {
        std::make_unique<CAEFxLutBalance>(),
        std::make_unique<CAEFxLutBrightness>(),
        std::make_unique<CAEFxLutGamma>(),
        std::make_unique<CAEFxLutLog>(),
    };
    for (auto& effect : effects)
        if (name == effect->m_szName) return std::move(effect);
    return nullptr;
}

struct Operation {
    std::string_view name;
    void (CUtilLut::*apply)(float*);
};

constexpr Operation kOperations[] = {
    {"ApplyArithmetic", &CUtilLut::ApplyArithmetic},
    {"ApplyBalance", &CUtilLut::ApplyBalance},
    {"ApplyBalance2", &CUtilLut::ApplyBalance2},
    {"ApplyBrightness", &CUtilLut::ApplyBrightness},
    {"ApplyBrightness2", &CUtilLut::ApplyBrightness2},
    {"ApplyGamma", &CUtilLut::ApplyGamma},
    {"ApplyGamma2", &CUtilLut::ApplyGamma2},
    {"ApplyInvert", &CUtilLut::ApplyInvert},
    {"ApplyLog", &CUtilLut::ApplyLog},
};

/// The identity, shaped by `shape`.
template <class Shape>
Curve Shaped(Shape shape) {
    CUtilLut lut;
    lut.Open();
    lut.Reset();
    shape(lut);
    Curve curve;
    for (std::size_t c = 0; c < 3; ++c)
        std::copy_n(lut.m_pLut + c * kCurveCodes, kCurveCodes, curve.channel[c].begin());
    return curve;
}

template <class Predicate>
std::vector<CodeRun> RunsWhere(Predicate holds) {
    std::vector<CodeRun> runs;
    for (int i = 0; i < kCurveCodes; ++i) {
        if (!holds(i)) continue;
        if (!runs.empty() && runs.back().last == i - 1)
            runs.back().last = i;
        else
            runs.push_back({i, i});
    }
    return runs;
}

float At(const Curve& curve, int channel, int code) {
    return curve.channel[static_cast<std::size_t>(channel)][static_cast<std::size_t>(code)];
}

}  // namespace

Curve FloatCurve(const EffectSession& session, const ParameterValues& values) {
    const auto effect = EffectNamed(session.Name());
    if (!effect)
        throw Error(ErrorKind::Module, "the float curve of '" + session.Name() +
                                           "' is not known here; --exact takes it from the module");
    ValueArray gathered = GatherValues(values);
    return Shaped([&](CUtilLut& lut) { effect->BuildLut(&lut, gathered.data()); });
}

bool IsOperation(const std::string& name) {
    return std::ranges::find(kOperations, name, &Operation::name) != std::end(kOperations);
}

Curve OperationCurve(const std::string& name, OperationParams params) {
    const auto* operation = std::ranges::find(kOperations, name, &Operation::name);
    if (operation == std::end(kOperations))
        throw Error(ErrorKind::Usage, "the engine has no operation '" + name + "'");
    return Shaped([&](CUtilLut& lut) { (lut.*operation->apply)(params.data()); });
}

Curve ExactCurve(const EffectSession& session, const ParameterValues& values) {
    const auto formats = session.Formats();
    const auto wide = std::ranges::find_if(formats, [](PrPixelFormat format) {
        return std::ranges::any_of(KnownFormats(), [=](const FormatFacts& f) {
            return f.code == format && f.sample == SampleType::U16;
        });
    });
    if (wide == formats.end())
        throw Error(ErrorKind::Module,
                    session.Name() + " takes no 16-bit frames to read its curve from");

    Frame ramp(*wide, kCurveCodes, 1), result(*wide, kCurveCodes, 1);
    const std::size_t pixel = 4 * sizeof(std::uint16_t);
    for (std::size_t i = 0; i < kCurveCodes; ++i) {
        const auto sample = static_cast<std::uint16_t>(i << 6);
        const std::uint16_t grey[4] = {sample, sample, sample, sample};
        std::memcpy(ramp.Row(0) + i * pixel, grey, pixel);
    }
    const RenderResult rendered = session.Render(result, ramp, values);
    if (rendered.code != PF_Err_NONE && rendered.code != PF_Err_BAD_CALLBACK_PARAM)
        throw Error(ErrorKind::Module,
                    session.Name() + " refused the ramp with " + std::to_string(rendered.code));

    Curve curve;
    curve.exact = true;
    for (std::size_t i = 0; i < kCurveCodes; ++i) {
        std::uint16_t sample[4];
        std::memcpy(sample, result.Row(0) + i * pixel, pixel);
        for (std::size_t c = 0; c < 3; ++c)
            curve.channel[c][i] = static_cast<float>(sample[result.Format().element[c]] >> 6);
    }
    return curve;
}

std::vector<CodeRun> ClippedRuns(const Curve& curve, int channel, float end) {
    auto runs = RunsWhere([&](int i) { return At(curve, channel, i) == end; });
    std::erase_if(runs, [](const CodeRun& run) { return run.first == run.last; });
    return runs;
}

std::vector<CodeRun> ClippedLow(const Curve& curve, int channel) {
    return ClippedRuns(curve, channel, 0.0f);
}

std::vector<CodeRun> ClippedHigh(const Curve& curve, int channel) {
    return ClippedRuns(curve, channel, 1023.0f);
}

std::vector<CodeRun> NaNRuns(const Curve& curve, int channel) {
    return RunsWhere([&](int i) { return std::isnan(At(curve, channel, i)); });
}

std::string Describe(const Curve& curve, std::vector<CodeRun> (*runs)(const Curve&, int)) {
    constexpr std::size_t kMostRuns = 3;  // of a channel; a curve that flickers has hundreds
    std::array<std::string, 3> texts;
    for (int c = 0; c < 3; ++c) {
        std::string& text = texts[static_cast<std::size_t>(c)];
        const auto found = runs(curve, c);
        for (std::size_t i = 0; i < std::min(found.size(), kMostRuns); ++i)
            text += (i ? ", " : " ") + std::to_string(found[i].first) + "-" +
                    std::to_string(found[i].last);
        if (found.size() > kMostRuns)
            text += " and " + std::to_string(found.size() - kMostRuns) + " more";
    }
    if (texts[0] == texts[1] && texts[0] == texts[2])
        return texts[0].empty() ? "" : "all" + texts[0];
    std::string all;
    for (std::size_t c = 0; c < 3; ++c)
        if (!texts[c].empty()) all += (all.empty() ? "" : "; ") + (kChannelNames[c] + texts[c]);
    return all;
}

std::optional<LogReferences> ReferencesOf(const EffectSession& session,
                                          const ParameterValues& values) {
    if (session.Name() != CAEFxLutLog().m_szName) return std::nullopt;
    const ValueArray gathered = GatherValues(values);
    LogReferences references{};
    references.onOutput = !lut::ConvertsToLinear(gathered.data());
    for (std::size_t c = 0; c < 3; ++c) {
        const auto controls = lut::ResolveLog(gathered.data(), static_cast<int>(c), 1023.0f);
        references.black[c] = controls.black;
        references.white[c] = controls.white;
    }
    return references;
}

}  // namespace zel
