/// Whole renders: from parameter values to pixels, through the loaded module, beside a copy
/// of the frame.

#include "bench/Beside.h"
#include "headless/EffectSession.h"

#include <cstring>
#include <initializer_list>

namespace {

using namespace zel;
using namespace zel::bench;

struct Setting {
    const char* name;
    const char* module;
    std::initializer_list<const char*> values;
};

const Setting kSettings[] = {
    {"Color Balance", "zel_color_balance", {"Highlights/Red=12.5", "Shadows/RGB=-5"}},
    {"Gamma master", "zel_gamma_gain_offset", {"Master/Gamma=1.2"}},
    {"Brightness", "zel_brightness_contrast_pivot", {}},
    {"Log/Linear", "zel_log_linear_conversion", {}},
};

constexpr Size kRenderSizes[] = {{1920, 1080}, {3840, 2160}};

void FillSamples(Frame& frame) {
    const auto samples =
        frame.Format().sample == SampleType::Float ? Samples::floats : Samples::integers;
    for (int y = 0; y < frame.Height(); ++y)
        FillSamples(frame.Row(y), static_cast<std::size_t>(frame.RowBytes()), samples);
}

void Run(benchmark::State& state, const Setting& setting, PrPixelFormat format, Size size) {
    const EffectSession session(std::string(ZEL_MODULE_DIR "/") + setting.module + Module::kSuffix,
                                Personality::Premiere);
    ParameterValues values(session.Params());
    for (const char* const value : setting.values) values.Set(value);

    const auto pixelBytes = static_cast<std::size_t>(FactsOf(format).BytesPerPixel());
    const std::size_t bytes =
        pixelBytes * static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
    struct Pair {
        Frame dst, src;
    };
    std::vector<Pair> pairs;
    for (std::size_t i = PairsFor(2 * bytes, Caches::cold); i > 0; --i) {
        pairs.push_back({{format, size.width, size.height}, {format, size.width, size.height}});
        FillSamples(pairs.back().src);
        FillSamples(pairs.back().dst);
    }
    std::size_t next = 0;
    const auto turn = [&]() -> Pair& { return pairs[next++ % pairs.size()]; };
    RunBeside(
        state, "x_memcpy",
        [&] {
            Pair& pair = turn();
            session.Render(pair.dst, pair.src, values);
        },
        [&] {
            Pair& pair = turn();
            std::memcpy(pair.dst.Row(0), pair.src.Row(0), bytes);
        });
}

[[maybe_unused]] const bool kRegistered = [] {
    constexpr PrPixelFormat kFormats[] = {PrPixelFormat_BGRA_4444_8u, PrPixelFormat_ARGB_4444_8u,
                                          PrPixelFormat_BGRA_4444_16u, PrPixelFormat_ARGB_4444_16u,
                                          PrPixelFormat_BGRA_4444_32f};
    for (const Setting& setting : kSettings)
        for (const PrPixelFormat format : kFormats)
            for (const Size size : kRenderSizes) {
                const std::string name =
                    std::string("render/") + setting.name + '/' + std::string(FactsOf(format).name);
                const auto run = [&setting, format, size](benchmark::State& s) {
                    Run(s, setting, format, size);
                };
                benchmark::RegisterBenchmark(RowName(name, size, Caches::cold).c_str(), run)
                    ->UseManualTime()
                    ->Unit(benchmark::kMicrosecond);
            }
    return true;
}();

}  // namespace
