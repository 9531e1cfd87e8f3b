/// Fills of whole frames, beside a plain clear.

#include "bench/Frames.h"
#include "ip/detail/FillVariants.h"

namespace {

using namespace zel::bench;
using namespace zel::ip;

struct Fill {
    const char* name;
    IpScanFillFn* scan;
    FillUnit unit;
};

// clang-format off
const Fill kFills[] = {
    {"fill RGBA8",       IpScan_Fill_RGBA8,       {1,  4}},
    {"fill RGBA16",      IpScan_Fill_RGBA16,      {1,  8}},
    {"fill BGRA32Float", IpScan_Fill_BGRA32Float, {1, 16}},
    {"fill YUYV8",       IpScan_Fill_YUYV8,       {2,  4}},
    {"fill v210",        IpScan_Fill_v210,        {6, 16}},
};
// clang-format on

void Run(benchmark::State& state, const Row& row, const Fill& fill, const FillVariant& variant) {
    const int width = row.size.width, height = row.size.height;
    const int rowBytes = RowBytes(width, fill.unit.pixels, fill.unit.bytes);
    const std::size_t bytes = FrameBytes(rowBytes, row.size);
    Ring ring(bytes, 0, Samples::integers, row.caches);
    const auto run = [&] {
        FillFrame(variant, fill.scan, fill.unit, ring.Next().dst, rowBytes, width, height, 1, 0.5f,
                  0, 1, true);
    };
    const auto clear = [&] { std::memset(ring.Next().dst, 1, bytes); };
    RunBeside(state, row, run, Plain::memset, clear);
}

[[maybe_unused]] const bool kRegistered = [] {
    for (const Fill& fill : kFills)
        ForEverySize([&](Size size, Caches caches) {
            for (const FillVariant& variant : FillVariants())
                if (variant.needs <= SupportedCpu())
                    Register({fill.name, variant.name, size, caches},
                             [&](auto& s, const Row& row) { Run(s, row, fill, variant); });
        });
    return true;
}();

}  // namespace
