/// Whole renders: from parameter values to pixels, through the loaded module, beside a copy
/// of the frame.

#include "bench/Beside.h"
#include "headless/EffectSession.h"

#include <cstdlib>
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

constexpr PrPixelFormat kFormats[] = {PrPixelFormat_BGRA_4444_8u, PrPixelFormat_ARGB_4444_8u,
                                      PrPixelFormat_BGRA_4444_16u, PrPixelFormat_ARGB_4444_16u,
                                      PrPixelFormat_BGRA_4444_32f};

constexpr Size kRenderSizes[] = {{1920, 1080}, {3840, 2160}};

struct Pair {
    Frame dst, src;
};

std::size_t PixelBytes(PrPixelFormat format) {
    return static_cast<std::size_t>(FactsOf(format).BytesPerPixel());
}

void FillFrame(Frame& frame) {
    const auto samples =
        frame.Format().sample == SampleType::Float ? Samples::floats : Samples::integers;
    for (int y = 0; y < frame.Height(); ++y)
        FillSamples(frame.Row(y), static_cast<std::size_t>(frame.RowBytes()), samples);
}

/// Frames to render in turn. One set stays for the rows that follow each other.
std::vector<Pair>& Pairs(PrPixelFormat format, Size size, Caches caches) {
    static std::vector<Pair> pairs;
    const std::size_t bytes =
        PixelBytes(format) * static_cast<std::size_t>(size.width * size.height);
    const std::size_t count = PairsFor(2 * bytes, caches);
    const bool fit = pairs.size() == count && pairs[0].src.Format().code == format &&
                     pairs[0].src.Width() == size.width;
    if (!fit) {
        pairs.clear();
        for (std::size_t i = 0; i < count; ++i) {
            pairs.push_back({{format, size.width, size.height}, {format, size.width, size.height}});
            FillFrame(pairs.back().src);
            FillFrame(pairs.back().dst);
        }
    }
    return pairs;
}

/// Modules read the environment when they are set up.
struct Forced {
    explicit Forced(bool scalar) {
        if (scalar)
            setenv("ZELFX_CPU", "scalar", 1);
        else
            unsetenv("ZELFX_CPU");
    }
    ~Forced() { unsetenv("ZELFX_CPU"); }
};

void Run(benchmark::State& state, const Row& row, const Setting& setting, PrPixelFormat format) {
    const Forced forced(row.variant == "scalar");
    const EffectSession session(std::string(ZEL_MODULE_DIR "/") + setting.module + Module::kSuffix,
                                Personality::Premiere);
    ParameterValues values(session.Params());
    for (const char* const value : setting.values) values.Set(value);

    std::vector<Pair>& pairs = Pairs(format, row.size, row.caches);
    std::size_t next = 0;
    const auto turn = [&]() -> Pair& { return pairs[next++ % pairs.size()]; };
    const std::size_t bytes =
        PixelBytes(format) * static_cast<std::size_t>(row.size.width * row.size.height);
    const auto render = [&] {
        Pair& pair = turn();
        session.Render(pair.dst, pair.src, values);
    };
    const auto copy = [&] {
        Pair& pair = turn();
        std::memcpy(pair.dst.Row(0), pair.src.Row(0), bytes);
    };
    RunBeside(state, row, render, Plain::memcpy, copy);
}

[[maybe_unused]] const bool kRegistered = [] {
    for (const PrPixelFormat format : kFormats)
        for (const Size size : kRenderSizes)
            for (const Caches caches : {Caches::cold, Caches::hot})
                for (const Setting& setting : kSettings)
                    for (const char* const variant : {"scalar", "module"}) {
                        const std::string name = std::string("render/") + setting.name + '/' +
                                                 std::string(FactsOf(format).name);
                        Register({name, variant, size, caches},
                                 [&setting, format](auto& state, const Row& row) {
                                     Run(state, row, setting, format);
                                 });
                    }
    return true;
}();

}  // namespace
