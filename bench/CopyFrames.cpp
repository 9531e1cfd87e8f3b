/// Copies, conversions, fills and transforms of whole frames, as a caller gets them,
/// beside a plain copy of the source, or a plain clear of the destination.

#include "bench/Beside.h"
#include "ip/Ip.h"

#include <cstring>

namespace {

using namespace zel::bench;

using CopyFrameFn = void(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width,
                         int height);
using FillFrameFn = void(void* base, int rowBytes, int width, int height, float r, float g, float b,
                         float a, bool normalised);

struct Copy {
    const char* name;
    CopyFrameFn* frame;
    int pixels, srcBytes, dstBytes;  // that so many pixels take
};

// clang-format off
const Copy kCopies[] = {
    {"copy",            IpFrame_Copy,                 1,  4,  4},
    {"BGRA8>RGB8",      IpFrame_Copy_BGRA8_To_RGB8,   1,  4,  3},
    {"BGRA8>BGR8",      IpFrame_Copy_BGRA8_To_BGR8,   1,  4,  3},
    {"BGRA8>ARGB8",     IpFrame_Copy_BGRA8_To_ARGB8,  1,  4,  4},
    {"BGRA8>ABGR8",     IpFrame_Copy_BGRA8_To_ABGR8,  1,  4,  4},
    {"BGRA8>RGBA8",     IpFrame_Copy_BGRA8_To_RGBA8,  1,  4,  4},
    {"RGB8>BGRA8",      IpFrame_Copy_RGB8_To_BGRA8,   1,  3,  4},
    {"BGRA8>RGB16",     IpFrame_Copy_BGRA8_To_RGB16,  1,  4,  6},
    {"BGRA8>RGB10",     IpFrame_Copy_BGRA8_To_RGB10,  1,  4,  4},
    {"RGB8>RGB10",      IpFrame_Copy_RGB8_To_RGB10,   1,  3,  4},
    {"RGB16LE>RGB10",   IpFrame_Copy_RGB16LE_To_RGB10,1,  6,  4},
    {"RGB10>BGRA8",     IpFrame_Copy_RGB10_To_BGRA8,  1,  4,  4},
    {"BGRA8>DpxLE",     IpFrame_Copy_BGRA8_To_DpxLE,  1,  4,  4},
    {"BGRA8>DpxBE",     IpFrame_Copy_BGRA8_To_DpxBE,  1,  4,  4},
    {"DpxLE>BGRA8",     IpFrame_Copy_DpxLE_To_BGRA8,  1,  4,  4},
    {"DpxBE>BGRA8",     IpFrame_Copy_DpxBE_To_BGRA8,  1,  4,  4},
    {"Endian32",        IpFrame_Copy_Endian32,        1,  4,  4},
    {"RGB8>v210",       IpFrame_Copy_RGB8_To_v210,    6, 18, 16},
    {"RGBA8>v210",      IpFrame_Copy_RGBA8_To_v210,   6, 24, 16},
    {"BGRA8>v210",      IpFrame_Copy_BGRA8_To_v210,   6, 24, 16},
    {"v210>YCbYCr8",    IpFrame_Copy_v210_To_YCbYCr8, 6, 16, 12},
    {"VUYA8>VUY8",      IpFrame_Copy_VUYA8_To_VUY8,   1,  4,  4},
    {"VUYA8>YCbYCr8",   IpFrame_Copy_VUYA8_To_YCbYCr8,2,  8,  4},
};

struct Fill {
    const char* name;
    FillFrameFn* frame;
    int pixels, bytes;
};

const Fill kFills[] = {
    {"fill RGBA8",       IpFrame_Fill_RGBA8,       1,  4},
    {"fill RGBA16",      IpFrame_Fill_RGBA16,      1,  8},
    {"fill BGRA32Float", IpFrame_Fill_BGRA32Float, 1, 16},
    {"fill YUYV8",       IpFrame_Fill_YUYV8,       2,  4},
    {"fill v210",        IpFrame_Fill_v210,        6, 16},
};

struct Transform {
    const char* name;
    void (*frame)(IpTransformArg*);
    int pixels, bytes;
};

const Transform kTransforms[] = {
    {"transform Char4",  IpFrame_Transform_Char4,  1,  4},
    {"transform Float4", IpFrame_Transform_Float4, 1, 16},
    {"transform v210",   IpFrame_Transform_v210,   6, 16},
};
// clang-format on

int RowBytes(int width, int pixels, int bytes) { return (width + pixels - 1) / pixels * bytes; }

std::size_t FrameBytes(int rowBytes, Size size) {
    return static_cast<std::size_t>(rowBytes) * static_cast<std::size_t>(size.height);
}

void Run(benchmark::State& state, const Copy& copy, Size size, Caches caches) {
    const int dstRow = RowBytes(size.width, copy.pixels, copy.dstBytes);
    const int srcRow = RowBytes(size.width, copy.pixels, copy.srcBytes);
    // As many bytes as are read and written, half of them each.
    const std::size_t moved = (FrameBytes(dstRow, size) + FrameBytes(srcRow, size)) / 2;
    Ring ring(std::max(FrameBytes(dstRow, size), moved), std::max(FrameBytes(srcRow, size), moved),
              Samples::integers, caches);
    RunBeside(
        state, "x_memcpy",
        [&] {
            const auto [dst, src] = ring.Next();
            copy.frame(dst, dstRow, src, srcRow, size.width, size.height);
        },
        [&] {
            const auto [dst, src] = ring.Next();
            std::memcpy(dst, src, moved);
        });
}

void Run(benchmark::State& state, const Fill& fill, Size size, Caches caches) {
    const int rowBytes = RowBytes(size.width, fill.pixels, fill.bytes);
    Ring ring(FrameBytes(rowBytes, size), 0, Samples::integers, caches);
    RunBeside(
        state, "x_memset",
        [&] {
            fill.frame(ring.Next().dst, rowBytes, size.width, size.height, 1, 0.5f, 0, 1, true);
        },
        [&] { std::memset(ring.Next().dst, 1, FrameBytes(rowBytes, size)); });
}

/// A tenth is cropped from the left, the rest moved.
void Run(benchmark::State& state, const Transform& transform, Size size, Caches caches) {
    const int rowBytes = RowBytes(size.width, transform.pixels, transform.bytes);
    const std::size_t bytes = FrameBytes(rowBytes, size);
    Ring ring(bytes, bytes + 5 * 16, Samples::floats, caches);
    IpTransformArg arg{};
    arg.dstRowBytes = arg.srcRowBytes = rowBytes;
    arg.dstWidth = arg.srcWidth = size.width;
    arg.dstHeight = arg.srcHeight = size.height;
    arg.cropLeft = 10;
    arg.offsetX = 5;
    arg.offsetY = 5;
    RunBeside(
        state, "x_memcpy",
        [&] {
            const auto [dst, src] = ring.Next();
            arg.dstBase = dst;
            arg.srcBase = src;
            transform.frame(&arg);
        },
        [&] {
            const auto [dst, src] = ring.Next();
            std::memcpy(dst, src, bytes);
        });
}

template <class Row>
void Register(const Row& row, const std::string& name, Size size, Caches caches) {
    const auto run = [&row, size, caches](benchmark::State& s) { Run(s, row, size, caches); };
    benchmark::RegisterBenchmark(RowName(name, size, caches).c_str(), run)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond);
}

[[maybe_unused]] const bool kRegistered = [] {
    IpInitialize();
    ForEverySize([](Size size, Caches caches) {
        for (const Copy& copy : kCopies) Register(copy, copy.name, size, caches);
        for (const Fill& fill : kFills) Register(fill, fill.name, size, caches);
        for (const Transform& t : kTransforms) Register(t, t.name, size, caches);
    });
    return true;
}();

}  // namespace
