/// Transforms of whole frames: a tenth is cropped from the left, the rest moved.

#include "bench/Frames.h"
#include "ip/IpTransform.h"

namespace {

using namespace zel::bench;

struct Transform {
    const char* name;
    void (*frame)(IpTransformArg*);
    int pixels, bytes;
};

// clang-format off
const Transform kTransforms[] = {
    {"transform Char4",  IpFrame_Transform_Char4,  1,  4},
    {"transform Short4", IpFrame_Transform_Short4, 1,  8},
    {"transform Float4", IpFrame_Transform_Float4, 1, 16},
    {"transform YUYV8",  IpFrame_Transform_YUYV8,  2,  4},
    {"transform v210",   IpFrame_Transform_v210,   6, 16},
};
// clang-format on

void Run(benchmark::State& state, const Row& row, const Transform& transform) {
    const int rowBytes = RowBytes(row.size.width, transform.pixels, transform.bytes);
    const std::size_t bytes = FrameBytes(rowBytes, row.size);
    IpTransformArg arg{};
    arg.dstRowBytes = arg.srcRowBytes = rowBytes;
    arg.dstWidth = arg.srcWidth = row.size.width;
    arg.dstHeight = arg.srcHeight = row.size.height;
    arg.cropLeft = 10;
    arg.offsetX = 5;
    arg.offsetY = 5;
    RunBesideCopy(state, row, bytes, bytes + 5 * 16, Samples::integers, [&](void* dst, void* src) {
        arg.dstBase = dst;
        arg.srcBase = src;
        transform.frame(&arg);
    });
}

[[maybe_unused]] const bool kRegistered = [] {
    for (const Transform& transform : kTransforms)
        ForEverySize([&](Size size, Caches caches) {
            Register({transform.name, "scalar", size, caches},
                     [&](auto& state, const Row& row) { Run(state, row, transform); });
        });
    return true;
}();

}  // namespace
