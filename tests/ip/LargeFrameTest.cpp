// Frames of more than 2 GiB: the offset of a row does not fit an int. Only the pages
// that are touched take memory.

#include "ip/Ip.h"
#include "tests/support/GuardedBuffer.h"

#include <gtest/gtest.h>

#include <functional>
#include <numeric>

namespace {

using namespace zel::test;

constexpr int kHeight = 3, kWidth = 12;
constexpr std::size_t kRowBytes = 192;      // of the widest layout
constexpr std::int64_t kStep = 0x50000000;  // between rows

using Run = std::function<void(void* dst, int dstRowBytes, void* src, int srcRowBytes)>;

std::uint8_t table[2048];

IpTransformArg TransformOf(void* dst, int dstRow, void* src, int srcRow) {
    IpTransformArg arg{};
    arg.dstBase = dst, arg.dstRowBytes = dstRow, arg.dstWidth = kWidth, arg.dstHeight = kHeight;
    arg.srcBase = src, arg.srcRowBytes = srcRow, arg.srcWidth = kWidth, arg.srcHeight = kHeight;
    return arg;
}

struct Case {
    const char* name;
    Run run;
};

// clang-format off
const Case kCases[] = {
    {"fill",      [](void* d, int dr, void*, int) { IpFrame_Fill_BGRA32Float(d, dr, kWidth, kHeight, 0.5f, 1, 0, 1, true); }},
    {"look-up",   [](void* d, int dr, void* s, int sr) { IpFrame_Lut_BGRA8(d, dr, s, sr, kWidth, kHeight, table, table, table); }},
    {"reorder",   [](void* d, int dr, void* s, int sr) { IpFrame_Copy_BGRA8_To_ARGB8(d, dr, s, sr, kWidth, kHeight); }},
    {"own rows",  [](void* d, int dr, void* s, int sr) { IpFrame_Copy_RGB8_To_RGBA8(d, dr, s, sr, kWidth, kHeight); }},
    {"unfinished",[](void* d, int dr, void* s, int sr) { IpFrame_Copy_YCbCr8_To_ARGB8(d, dr, s, sr, kWidth, kHeight); }},
    {"transform", [](void* d, int dr, void* s, int sr) { IpTransformArg arg = TransformOf(d, dr, s, sr); IpFrame_Transform_Float4(&arg); }},
    {"scale",     [](void* d, int dr, void* s, int sr) { IpFrame_Scale_RGB10_To_BGRA8(d, dr, kWidth, kHeight, s, sr, kWidth, kHeight); }},
    {"pattern",   [](void* d, int dr, void*, int) { IpFrame_Test_BGRA8(d, dr, kWidth, kHeight, 0); }},
    {"planes",    [](void* d, int dr, void* s, int sr) { IpPlanar_Copy_420_To_CbYCrY8(d, dr, s, sr, s, sr, s, sr, kWidth, kHeight); }},
};
// clang-format on

/// The frame's rows after a run, with rows `step` bytes apart.
Bytes RowsAfter(const Run& run, const FencedPages& dst, const FencedPages& src, std::int64_t step,
                bool dstNegative, bool srcNegative) {
    const auto base = [&](const FencedPages& pages, bool negative) {
        return pages.bytes().data() + (negative ? (kHeight - 1) * step : 0);
    };
    const auto row = [&](const FencedPages& pages, int r) {
        return pages.bytes().subspan(static_cast<std::size_t>(r * step), kRowBytes);
    };
    std::uint8_t next = 1;
    for (int r = 0; r < kHeight; ++r) {
        for (std::uint8_t& byte : row(src, r))
            byte = next = static_cast<std::uint8_t>(next * 5 + 3);
        std::ranges::fill(row(dst, r), std::uint8_t{0xEE});
    }
    const int rowBytes = static_cast<int>(step);
    run(base(dst, dstNegative), dstNegative ? -rowBytes : rowBytes, base(src, srcNegative),
        srcNegative ? -rowBytes : rowBytes);
    Bytes rows;
    for (int r = 0; r < kHeight; ++r)
        rows.insert(rows.end(), row(dst, r).begin(), row(dst, r).end());
    return rows;
}

TEST(LargeFrame, RowsBeyondTwoGiB) {
    if constexpr (sizeof(void*) < 8) GTEST_SKIP() << "no room for such frames";
    IpInitialize();
    std::iota(std::begin(table), std::end(table), std::uint8_t{1});
    constexpr auto kFrameBytes = static_cast<std::size_t>((kHeight - 1) * kStep + kRowBytes);
    const FencedPages dst(kFrameBytes), src(kFrameBytes);
    for (const Case& c : kCases)
        for (const int signs : {0, 1, 2, 3}) {
            const Bytes near = RowsAfter(c.run, dst, src, 256, signs & 1, signs & 2);
            const Bytes far = RowsAfter(c.run, dst, src, kStep, signs & 1, signs & 2);
            EXPECT_EQ(near, far) << c.name << " signs " << signs;
            for (std::size_t r = 0; r < kHeight; ++r)
                EXPECT_NE(near[r * kRowBytes], 0xEE) << c.name << ": row " << r << " is untouched";
        }
}

}  // namespace
