#include "ip/IpTransform.h"

#include "ip/IpTables.h"
#include "tests/ip/SlowPixels.h"
#include "tests/support/Shapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <random>

namespace {

using namespace zel::test;

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

// --- restatement ----------------------------------------------------------------

/// A storage class: `units` units of unitBytes hold `pixels` pixels; positions in
/// pixels become positions in units, truncated.
struct Class {
    const char* name;
    void (*frame)(IpTransformArg*);
    IpScanTransformFn* scan;
    int units, pixels;
    std::size_t unitBytes;
    Bytes black;     // repeated along a row
    int blackGroup;  // pixels of an uncovered row become black in groups of so many

    int Unit(int x) const { return x * units / pixels; }
    std::size_t Byte(int x) const { return static_cast<std::size_t>(Unit(x)) * unitBytes; }
};

Bytes BlackGroup() {
    const Bytes half = BytesOf(0x1FF001FF, 4) + BytesOf(0x0007FC00, 4);
    return half + half;
}

// clang-format off
const Class kClasses[] = {
    {"Char4",  IpFrame_Transform_Char4,  IpScan_Transform_Char4,  1, 1,  4, Bytes(4, 0),                1},
    {"Short4", IpFrame_Transform_Short4, IpScan_Transform_Short4, 1, 1,  8, Bytes(8, 0),                1},
    {"Float4", IpFrame_Transform_Float4, IpScan_Transform_Float4, 1, 1, 16, Bytes(16, 0),               1},
    {"YUYV8",  IpFrame_Transform_YUYV8,  IpScan_Transform_YUYV8,  1, 2,  4, {0x00, 0x80, 0x00, 0x80},   2},
    {"UYVY8",  IpFrame_Transform_UYVY8,  IpScan_Transform_UYVY8,  1, 2,  4, {0x80, 0x00, 0x80, 0x00},   2},
    {"v210",   IpFrame_Transform_v210,   IpScan_Transform_v210,   4, 6,  4, BlackGroup(),               6},
};
// clang-format on

/// Byte by byte: what stands at byte i of a row after a scan transform.
void SlowScan(const Class& c, std::uint8_t* dst, const std::uint8_t* src, int width, int startX,
              int endX, int srcX) {
    for (std::size_t i = 0; i < c.Byte(width); ++i) {
        const bool covered = i >= c.Byte(startX) && i < c.Byte(endX);
        dst[i] = covered ? src[c.Byte(srcX) + i - c.Byte(startX)] : c.black[i % c.black.size()];
    }
}

// Sums of extents, crops and offsets need more than 32 bits; `long` has no more on Windows.
using Wide = std::int64_t;

/// A percentage or a pixel count, in pixels.
Wide Pixels(float value) {
    if (std::isnan(value)) return 0;
    return static_cast<Wide>(Clamped(std::trunc(double{value}), -2147483648.0, 2147483647.0));
}
Wide CropPixels(float value, int extent, bool inPixels) {
    if (inPixels) return Pixels(value);
    const auto product = static_cast<float>(double{static_cast<float>(extent)} * value);
    return Pixels(static_cast<float>(double{product} / 100));
}
Wide OffsetPixels(float value, int extent, bool inPixels) {
    if (inPixels) return Pixels(value);
    const auto part = static_cast<float>(double{value} / 100);
    return Pixels(static_cast<float>(double{part} * static_cast<float>(extent)));
}

Wide Between(Wide x, Wide lo, Wide hi) { return std::max(lo, std::min(x, hi)); }

struct Placement {
    Wide firstRow, lastRow, rowOffset;
    int startX, endX, srcX;
};

Placement SlowPlacement(const IpTransformArg& a) {
    Placement p;
    const bool px = a.inPixels;
    Wide top = CropPixels(a.cropTop, a.srcHeight, px);
    Wide bottom = CropPixels(a.cropBottom, a.srcHeight, px);
    if (!px) {
        top = Between(top, 0, a.srcHeight);
        bottom = Between(bottom, 0, a.srcHeight);
    }
    p.lastRow = Between(a.srcHeight - bottom, 0, a.srcHeight);
    p.firstRow = Between(std::min(top, a.srcHeight - bottom), 0, a.srcHeight);
    const Wide offsetY = OffsetPixels(a.offsetY, a.srcHeight, px);
    p.rowOffset = offsetY - offsetY % 2;

    Wide left = CropPixels(a.cropLeft, a.srcWidth, px);
    Wide right = CropPixels(a.cropRight, a.srcWidth, px);
    const Wide x = OffsetPixels(a.offsetX, a.srcWidth, px);
    if (left + right > a.srcWidth) {
        right = a.srcWidth;
        left = 0;
    }
    left = Between(left, 0, a.srcWidth);
    right = std::max(right, Wide{0});
    const Wide start = Between(x + left, 0, a.dstWidth);
    const Wide end = std::min<Wide>(
        a.dstWidth, std::max(x + a.srcWidth - std::min<Wide>(a.srcWidth, right), Wide{0}));
    const Wide src = left - std::min(x + left, Wide{0});
    p.startX = static_cast<int>(start - start % 6);
    p.endX = static_cast<int>(end - end % 6);
    p.srcX = static_cast<int>(src - src % 6);
    return p;
}

/// Runs a frame transform over guarded frames and compares with the restatement. The
/// source's rows have the slack that the header asks for, and no more.
void RunFrame(const Class& c, IpTransformArg arg, bool dstNegative, bool srcNegative, Place place,
              Layout layout) {
    const std::size_t dstRow = c.Byte(arg.dstWidth);
    const std::size_t srcRow = c.Byte((arg.srcWidth + 5) / 6 * 6);
    GuardedFrame dst({dstRow, arg.dstHeight, dstNegative, layout.padding, layout.misalignment},
                     place, 1);
    GuardedFrame src({srcRow, arg.srcHeight, srcNegative, layout.padding, layout.misalignment},
                     place, 2);
    arg.dstBase = dst.base(), arg.dstRowBytes = dst.rowBytes();
    arg.srcBase = src.base(), arg.srcRowBytes = src.rowBytes();
    const Bytes source = src.content();
    Bytes expected = dst.content();
    const Placement p = SlowPlacement(arg);
    for (int up = 0; up < arg.dstHeight; ++up) {  // rows upwards in memory
        const int r = dstNegative ? arg.dstHeight - 1 - up : up;
        std::uint8_t* const to = &expected[dst.Offset(r)];
        const Wide s = arg.flipVertical ? arg.srcHeight - up - p.rowOffset - 1 : up + p.rowOffset;
        if (s >= p.firstRow && s < p.lastRow) {
            const int from = static_cast<int>(srcNegative ? arg.srcHeight - 1 - s : s);
            SlowScan(c, to, &source[src.Offset(from)], arg.dstWidth, p.startX, p.endX, p.srcX);
        } else {
            const int whole = arg.dstWidth - arg.dstWidth % c.blackGroup;
            for (std::size_t i = 0; i < c.Byte(whole); ++i) to[i] = c.black[i % c.black.size()];
        }
    }
    const IpTransformArg before = arg;
    c.frame(&arg);
    ASSERT_EQ(dst.Difference(expected), "")
        << c.name << " dst " << arg.dstWidth << " x " << arg.dstHeight << " src " << arg.srcWidth
        << " x " << arg.srcHeight << " offset " << arg.offsetX << ',' << arg.offsetY << " crop "
        << arg.cropLeft << ',' << arg.cropTop << ',' << arg.cropRight << ',' << arg.cropBottom
        << (arg.flipVertical ? " flip" : "") << (arg.inPixels ? " px" : " %");
    ASSERT_EQ(src.Difference(source), "") << c.name << " wrote its source";
    ASSERT_EQ(arg.dstBase, before.dstBase);
    ASSERT_EQ(arg.srcBase, before.srcBase);
    ASSERT_EQ(arg.dstRowBytes, before.dstRowBytes);
    ASSERT_EQ(arg.srcRowBytes, before.srcRowBytes);
}

class Transform : public testing::Test {
protected:
    void SetUp() override { IpInitialize(); }

    static IpTransformArg Arg(int dstWidth, int dstHeight, int srcWidth, int srcHeight) {
        IpTransformArg arg{};
        arg.dstWidth = dstWidth, arg.dstHeight = dstHeight;
        arg.srcWidth = srcWidth, arg.srcHeight = srcHeight;
        arg.inPixels = true;
        return arg;
    }
};

// --- shapes ---------------------------------------------------------------------

TEST_F(Transform, EveryShapeWithoutOffsets) {
    for (const Class& c : kClasses)
        for (const int width : Widths())
            for (int height = 0; height <= kMaxHeight; ++height)
                for (const int signs : {0, 1, 2, 3}) {
                    const IpTransformArg arg = Arg(width, height, width, height);
                    for (const Layout layout : kLayouts)
                        RunFrame(c, arg, signs & 1, signs & 2, Place::guarded, layout);
                    RunFrame(c, arg, signs & 1, signs & 2, Place::atFront, kLayouts[0]);
                    RunFrame(c, arg, signs & 1, signs & 2, Place::atBack, kLayouts[0]);
                    if (HasFatalFailure()) return;
                }
}

// Every way in which a small source can lie over a small destination.
TEST_F(Transform, EveryOffsetAndCropOfSmallFrames) {
    const int step = FullRange() ? 1 : 5;
    for (const Class& c : kClasses)
        for (int x = -20; x <= 20; x += step)
            for (int left = -1; left <= 14; left += step)
                for (const int right : {-1, 0, 1, 5, 6, 7, 13, 20}) {
                    IpTransformArg arg = Arg(17, 1, 13, 1);
                    arg.offsetX = static_cast<float>(x);
                    arg.cropLeft = static_cast<float>(left);
                    arg.cropRight = static_cast<float>(right);
                    RunFrame(c, arg, false, false, Place::atBack, kLayouts[0]);
                    RunFrame(c, arg, false, false, Place::atFront, kLayouts[0]);
                    if (HasFatalFailure()) return;
                }
}

TEST_F(Transform, EveryVerticalOffsetAndCrop) {
    for (const Class& c : kClasses)
        for (int y = -9; y <= 9; ++y)
            for (int top = -1; top <= 6; ++top)
                for (int bottom = -1; bottom <= 6; ++bottom)
                    for (const bool flip : {false, true}) {
                        IpTransformArg arg = Arg(13, 4, 12, 5);
                        arg.offsetY = static_cast<float>(y);
                        arg.cropTop = static_cast<float>(top);
                        arg.cropBottom = static_cast<float>(bottom);
                        arg.flipVertical = flip;
                        RunFrame(c, arg, y % 2 != 0, top % 2 != 0, Place::atBack, kLayouts[0]);
                        if (HasFatalFailure()) return;
                    }
}

TEST_F(Transform, SeededArguments) {
    constexpr unsigned kSeed = 45;
    SCOPED_TRACE(testing::Message() << "seed " << kSeed);
    std::mt19937 random(kSeed);
    const auto whole = [&](int lo, int hi) {
        return std::uniform_int_distribution<int>(lo, hi)(random);
    };
    const auto value = [&] {
        static const float odd[] = {kInf, -kInf, kNaN, 3e9f, -3e9f, 1e38f, 2147483520.0f, -0.0f};
        if (whole(0, 19) == 0) return odd[whole(0, 7)];
        return std::uniform_real_distribution<float>(-130, 130)(random);
    };
    for (int i = 0; i < (FullRange() ? 30000 : 500); ++i) {
        IpTransformArg arg = Arg(whole(0, 70), whole(0, 5), whole(0, 70), whole(0, 5));
        arg.offsetX = value(), arg.offsetY = value();
        arg.cropLeft = whole(0, 1) ? value() : 0, arg.cropTop = whole(0, 1) ? value() : 0;
        arg.cropRight = whole(0, 1) ? value() : 0, arg.cropBottom = whole(0, 1) ? value() : 0;
        arg.flipVertical = whole(0, 1), arg.inPixels = whole(0, 1);
        const Place place = whole(0, 1) ? Place::atBack : Place::guarded;
        RunFrame(kClasses[whole(0, 5)], arg, whole(0, 1), whole(0, 1), place, kLayouts[0]);
        if (HasFatalFailure()) return;
    }
}

TEST_F(Transform, RowsWithAnyPositions) {
    for (const Class& c : kClasses)
        for (const int width : Widths())
            for (int startX = 0; startX <= width; startX += 1 + width / 9)
                for (int endX = startX; endX <= width; endX += 1 + width / 7)
                    for (const int srcX : {0, 1, 5, 6, 13})
                        for (const Place place : {Place::guarded, Place::atFront, Place::atBack}) {
                            const std::size_t read = c.Byte(srcX) + c.Byte(endX) - c.Byte(startX);
                            GuardedFrame dst({c.Byte(width), 1, false, 0, 1}, place, 3);
                            GuardedFrame src({read, 1, false, 0, 3}, place, 4);
                            Bytes expected = dst.content();
                            const Bytes source = src.content();
                            SlowScan(c, &expected[dst.Offset(0)], &source[src.Offset(0)], width,
                                     startX, endX, srcX);
                            c.scan(dst.base(), src.base(), width, startX, endX, srcX);
                            ASSERT_EQ(dst.Difference(expected), "")
                                << c.name << ' ' << width << ": " << startX << " to " << endX
                                << " from " << srcX;
                        }
}

TEST_F(Transform, NegativeExtentsWriteNothing) {
    for (const Class& c : kClasses)
        for (const auto& [width, height] : {std::pair{-12, 3}, {12, -3}, {-12, -3}, {12, 0}}) {
            GuardedFrame dst({16 * 12, 3}, Place::guarded, 5), src({16 * 12, 3}, Place::guarded, 6);
            const Bytes before = dst.content();
            IpTransformArg arg = Arg(width, height, 12, 3);
            arg.dstBase = dst.base(), arg.dstRowBytes = -dst.rowBytes();
            arg.srcBase = src.base(), arg.srcRowBytes = src.rowBytes();
            c.frame(&arg);
            EXPECT_EQ(dst.Difference(before), "") << c.name << ' ' << width << " x " << height;
        }
}

// --- stated values --------------------------------------------------------------

TEST_F(Transform, ColumnsBySix) {
    for (const int width : Widths()) {
        std::vector<std::uint32_t> src(static_cast<std::size_t>(width) + 6, 0xABCD1234), dst = src;
        std::ranges::fill(dst, 0xEEEEEEEE);
        IpTransformArg arg = Arg(width, 1, width, 1);
        arg.dstBase = dst.data(), arg.srcBase = src.data();
        IpFrame_Transform_Char4(&arg);
        for (int x = 0; x < width + 6; ++x)
            ASSERT_EQ(dst[static_cast<std::size_t>(x)], x < width - width % 6 ? 0xABCD1234
                                                        : x < width           ? 0
                                                                              : 0xEEEEEEEE)
                << "column " << x << " of " << width;
    }
}

// What the scan routine is called with; the row it reads tells the vertical offset.
struct Call {
    bool black;
    std::ptrdiff_t dstRow, srcRow;
    int width, startX, endX, srcX;

    friend bool operator==(const Call&, const Call&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Call& c) {
        return out << (c.black ? "black" : "copy") << " row " << c.dstRow << " from " << c.srcRow
                   << ": " << c.width << ", " << c.startX << " to " << c.endX << " from " << c.srcX;
    }
};

std::vector<Call> calls;
std::uint8_t dstMemory[1000], srcMemory[1000];

std::vector<Call> CallsOf(IpTransformArg arg) {
    calls.clear();
    arg.dstBase = dstMemory, arg.dstRowBytes = 10;
    arg.srcBase = srcMemory, arg.srcRowBytes = 20;
    IpFrame_Transform_Master(
        [](void* dst, void* src, int width, int startX, int endX, int srcX) {
            calls.push_back({false, (static_cast<std::uint8_t*>(dst) - dstMemory) / 10,
                             (static_cast<std::uint8_t*>(src) - srcMemory) / 20, width, startX,
                             endX, srcX});
        },
        [](void* scan, int start, int count) {
            calls.push_back({true, (static_cast<std::uint8_t*>(scan) - dstMemory) / 10, 0, count,
                             start, start, 0});
        },
        &arg);
    return calls;
}

TEST_F(Transform, EvenOffset) {
    const struct {
        float offsetY;
        std::ptrdiff_t srcRow;  // of destination row 4
    } cases[] = {{3, 6}, {-3, 2}, {2, 6}, {2.9f, 6}, {1, 4}, {-1, 4}, {-1.9f, 4}, {5.99f, 8}};
    for (const auto& c : cases) {
        IpTransformArg arg = Arg(12, 10, 12, 10);
        arg.offsetY = c.offsetY;
        EXPECT_EQ(CallsOf(arg)[4].srcRow, c.srcRow) << "offset " << c.offsetY;
    }
}

TEST_F(Transform, FlipReadsBottomUp) {
    IpTransformArg arg = Arg(12, 4, 12, 4);
    arg.flipVertical = true;
    arg.offsetY = 2;
    const std::vector<Call> expected{
        {false, 0, 1, 12, 0, 12, 0},
        {false, 1, 0, 12, 0, 12, 0},
        {true, 2, 0, 12, 0, 0, 0},
        {true, 3, 0, 12, 0, 0, 0},
    };
    EXPECT_EQ(CallsOf(arg), expected);
}

struct Columns {
    const char* name;
    int dstWidth, srcWidth;
    float x, left, right;
    bool inPixels;
    int startX, endX, srcX;
};

TEST_F(Transform, ColumnsOfTheMaster) {
    // clang-format off
    const Columns cases[] = {
        {"as it is",                     60, 60,   0,   0,  0, true,   0, 60,  0},
        {"moved right",                  60, 60,  12,   0,  0, true,  12, 60,  0},
        {"moved left",                   60, 60, -12,   0,  0, true,   0, 48, 12},
        {"each rounds down to six",      60, 60,   7,   8,  9, true,  12, 54,  6},
        {"left and right crop",          60, 60,   0,  18, 24, true,  18, 36, 18},
        {"crops meet",                   60, 60,   0,  30, 30, true,  30, 30, 30},
        {"crops cross: nothing left",    60, 60,   6,  30, 31, true,   6,  6,  0},
        {"negative left crop",           60, 60,   6, -12,  0, true,   6, 60,  0},
        {"negative right crop",          60, 60,   0,   0, -9, true,   0, 60,  0},
        {"wider source",                 30, 60,   0,   0,  0, true,   0, 30,  0},
        {"wider destination",            60, 30,  12,   0,  0, true,  12, 42,  0},
        {"out to the right",             60, 60,  90,   0,  0, true,  60, 60,  0},
        {"out to the left",              60, 60, -90,   0,  0, true,   0,  0, 90},
        {"percentages of the source",    60, 30,  40,  20, 40, false, 18, 30,  6},
        {"a third of 60 truncates",      60, 60,   0, 33.3333f, 0, false, 18, 60, 18},
    };
    // clang-format on
    for (const Columns& c : cases) {
        IpTransformArg arg = Arg(c.dstWidth, 1, c.srcWidth, 1);
        arg.offsetX = c.x, arg.cropLeft = c.left, arg.cropRight = c.right;
        arg.inPixels = c.inPixels;
        const std::vector<Call> expected{{false, 0, 0, c.dstWidth, c.startX, c.endX, c.srcX}};
        EXPECT_EQ(CallsOf(arg), expected) << c.name;
    }
}

// Crops multiply first, offsets divide first.
TEST_F(Transform, PercentagesRoundInTheirOwnOrder) {
    int differ = 0;
    for (int extent = 1; extent <= 2000; ++extent)
        for (int percent = 1; percent < 100; ++percent) {
            const auto p = static_cast<float>(percent);
            differ += CropPixels(p, extent, false) != OffsetPixels(p, extent, false);
        }
    ASSERT_GT(differ, 0) << "the two orders must differ somewhere for this test to tell";
    for (int extent = 6; extent <= 2000; extent += 6)
        for (int percent = 1; percent < 100; ++percent) {
            IpTransformArg arg = Arg(extent, 1, extent, 1);
            arg.inPixels = false;
            arg.cropLeft = static_cast<float>(percent);
            const Placement crop = SlowPlacement(arg);
            const std::vector<Call> cropped = CallsOf(arg);
            ASSERT_EQ(cropped[0].startX, crop.startX) << percent << " % of " << extent;
            arg.cropLeft = 0;
            arg.offsetX = static_cast<float>(percent);
            const Placement moved = SlowPlacement(arg);
            const std::vector<Call> offset = CallsOf(arg);
            ASSERT_EQ(offset[0].startX, moved.startX) << percent << " % of " << extent;
        }
}

// Rows are blackened in whole pairs and groups.
TEST_F(Transform, BlackOfUncoveredRows) {
    const struct {
        const Class& c;
        std::size_t bytes;  // of a 13-pixel row that are blackened
    } cases[] = {{kClasses[0], 52}, {kClasses[1], 104}, {kClasses[2], 208},
                 {kClasses[3], 24}, {kClasses[4], 24},  {kClasses[5], 32}};
    for (const auto& [c, bytes] : cases) {
        Bytes dst(13 * 16, 0xEE), src(18 * 16, 0x55);
        IpTransformArg arg = Arg(13, 1, 13, 1);
        arg.dstBase = dst.data(), arg.srcBase = src.data();
        arg.offsetY = 8;
        c.frame(&arg);
        for (std::size_t i = 0; i < dst.size(); ++i)
            ASSERT_EQ(dst[i], i < bytes ? c.black[i % c.black.size()] : 0xEE) << c.name << ' ' << i;
    }
}

TEST_F(Transform, PairsTakeAnyBlack) {
    std::uint32_t src[4] = {1, 2, 3, 4}, dst[5] = {9, 9, 9, 9, 9};
    IpScan_Transform_422_8(dst, src, 9, 3, 7, 2, 0xB1ACB1AC);
    const std::uint32_t expected[5] = {0xB1ACB1AC, 2, 3, 0xB1ACB1AC, 9};
    EXPECT_TRUE(std::ranges::equal(dst, expected));
}

// 2100 pixels reach past the 341 groups of the black line.
TEST_F(Transform, V210BlackGoesOnPastTheLine) {
    constexpr int kWidth = 2100;
    Bytes dst(kWidth / 6 * 16, 0xEE), src(16, 0);
    IpScan_Transform_v210(dst.data(), src.data(), kWidth, 0, 0, 0);
    const Bytes black = BlackGroup();
    for (std::size_t i = 0; i < dst.size(); ++i) ASSERT_EQ(dst[i], black[i % 16]) << i;
}

TEST_F(Transform, DummyIsEmpty) {
    IpTransformArg arg = Arg(12, 2, 12, 2);
    IpTransformArg before;
    std::memcpy(&before, &arg, sizeof arg);
    IpFrame_Transform_Dummy(&arg);
    EXPECT_EQ(std::memcmp(&before, &arg, sizeof arg), 0);
    IpFrame_Transform_Dummy(nullptr);
}

}  // namespace
