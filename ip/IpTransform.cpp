#include "ip/IpTransform.h"

#include "ip/detail/Layouts.h"
#include "ip/detail/Numeric.h"
#include "ip/detail/Units.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

using namespace zel::ip;

// --- rows ---------------------------------------------------------------------

/// A scan transform's positions, counted in storage units.
struct Columns {
    std::ptrdiff_t width, start, end, src;

    Columns(int width_, int startX, int endX, int srcX, int units, int pixels)
        : width(Unit(width_, units, pixels)),
          start(Unit(startX, units, pixels)),
          end(Unit(endX, units, pixels)),
          src(Unit(srcX, units, pixels)) {}

private:
    /// `units` units hold `pixels` pixels; truncates.
    static std::ptrdiff_t Unit(int x, int units, int pixels) {
        return static_cast<std::ptrdiff_t>(std::int64_t{x} * units / pixels);
    }
};

/// `blackAt` gives the black of the unit with this number in the row.
template <class Unit, class BlackAt>
void PlaceUnits(void* dst, void* src, const Columns& at, BlackAt blackAt) {
    const auto blacken = [=](std::ptrdiff_t from, std::ptrdiff_t to) {
        ForEach(
            to - from, [=](void* unit, std::ptrdiff_t i) { Store<Unit>(unit, blackAt(from + i)); },
            UnitsOf<Unit>(dst, from), Numbers{});
    };
    blacken(0, at.start);
    if (at.end > at.start)
        std::memcpy(At<Unit>(dst, at.start), At<Unit>(src, at.src),
                    static_cast<std::size_t>(at.end - at.start) * sizeof(Unit));
    blacken(at.end, at.width);
}

template <class Pixel>
void PlacePixels(void* dst, void* src, int width, int startX, int endX, int srcX) {
    PlaceUnits<Pixel>(dst, src, {width, startX, endX, srcX, 1, 1},
                      [](std::ptrdiff_t) { return Pixel{}; });
}

}  // namespace

void IpScan_Transform_Char4(void* dstRow, void* srcRow, int width, int startX, int endX, int srcX) {
    PlacePixels<std::array<std::uint8_t, 4>>(dstRow, srcRow, width, startX, endX, srcX);
}

void IpScan_Transform_Short4(void* dstRow, void* srcRow, int width, int startX, int endX,
                             int srcX) {
    PlacePixels<std::array<std::uint16_t, 4>>(dstRow, srcRow, width, startX, endX, srcX);
}

void IpScan_Transform_Float4(void* dstRow, void* srcRow, int width, int startX, int endX,
                             int srcX) {
    PlacePixels<std::array<float, 4>>(dstRow, srcRow, width, startX, endX, srcX);
}

void IpScan_Transform_422_8(void* dst, void* src, int width, int startX, int endX, int srcX,
                            unsigned blackPair) {
    PlaceUnits<std::uint32_t>(dst, src, {width, startX, endX, srcX, 1, 2},
                              [=](std::ptrdiff_t) { return blackPair; });
}

void IpScan_Transform_YUYV8(void* dstRow, void* srcRow, int width, int startX, int endX, int srcX) {
    IpScan_Transform_422_8(dstRow, srcRow, width, startX, endX, srcX, g_blackYUYV8);
}

void IpScan_Transform_UYVY8(void* dstRow, void* srcRow, int width, int startX, int endX, int srcX) {
    IpScan_Transform_422_8(dstRow, srcRow, width, startX, endX, srcX, g_blackUYVY8);
}

void IpScan_Transform_v210(void* dstRow, void* srcRow, int width, int startX, int endX, int srcX) {
    // The black line repeats its first group, so word i of it is word i % 4.
    PlaceUnits<std::uint32_t>(
        dstRow, srcRow, {width, startX, endX, srcX, 4, 6},
        [](std::ptrdiff_t i) { return LoadAt<std::uint32_t>(g_blackScanV210, i % 4); });
}

// --- frames -------------------------------------------------------------------

namespace {

// Sums of extents, crops and offsets stay far inside 64 bits.
using Extent = std::int64_t;

constexpr Extent Clamp(Extent x, Extent lo, Extent hi) { return x < lo ? lo : x > hi ? hi : x; }

/// A crop and an offset in pixels. They scale percentages in a different order, each
/// rounding to single precision as it goes.
Extent Crop(float value, Extent extent, bool inPixels) {
    return TruncatedToInt(inPixels ? value : static_cast<float>(extent) * value / 100.0f);
}

Extent Offset(float value, Extent extent, bool inPixels) {
    return TruncatedToInt(inPixels ? value : value / 100.0f * static_cast<float>(extent));
}

/// Source rows [first, last) are shown, `offset` below the destination's.
struct RowRange {
    Extent first, last, offset;
};

RowRange FindRows(const IpTransformArg& arg) {
    const Extent height = arg.srcHeight;
    Extent top = Crop(arg.cropTop, height, arg.inPixels);
    Extent bottom = Crop(arg.cropBottom, height, arg.inPixels);
    if (!arg.inPixels) {
        top = Clamp(top, 0, height);
        bottom = Clamp(bottom, 0, height);
    }
    // Deliberate: even rows only. docs/quirks.md, "even offset".
    const Extent offset = Offset(arg.offsetY, height, arg.inPixels) / 2 * 2;
    return {Clamp(std::min(top, height - bottom), 0, height), Clamp(height - bottom, 0, height),
            offset};
}

struct ColumnRange {
    int startX, endX, srcX;
};

ColumnRange FindColumns(const IpTransformArg& arg) {
    const Extent dstWidth = arg.dstWidth, srcWidth = arg.srcWidth;
    Extent left = Crop(arg.cropLeft, srcWidth, arg.inPixels);
    Extent right = Crop(arg.cropRight, srcWidth, arg.inPixels);
    const Extent x = Offset(arg.offsetX, srcWidth, arg.inPixels);
    if (left + right > srcWidth) {
        right = srcWidth;
        left = 0;
    }
    left = Clamp(left, 0, srcWidth);
    right = std::max<Extent>(right, 0);
    const Extent start = Clamp(x + left, 0, dstWidth);
    const Extent end =
        std::min(dstWidth, std::max<Extent>(x + srcWidth - std::min(srcWidth, right), 0));
    const Extent src = left - std::min<Extent>(x + left, 0);
    // Deliberate: whole v210 groups in every layout. docs/quirks.md, "columns by six".
    const auto wholeGroups = [](Extent column) { return static_cast<int>(column / 6 * 6); };
    return {wholeGroups(start), wholeGroups(end), wholeGroups(src)};
}

}  // namespace

void IpFrame_Transform_Master(IpScanTransformFn* scanFn, IpScanBlackFn* blackFn,
                              IpTransformArg* arg) {
    const Rows dst = Upwards({arg->dstBase, arg->dstRowBytes}, arg->dstHeight);
    const Rows src = Upwards({arg->srcBase, arg->srcRowBytes}, arg->srcHeight);
    const RowRange rows = FindRows(*arg);
    const ColumnRange columns = FindColumns(*arg);
    const auto place = [=](void* to, Extent r) {
        const Extent fromTop = r + rows.offset;
        const Extent s = arg->flipVertical ? arg->srcHeight - fromTop - 1 : fromTop;
        if (s >= rows.first && s < rows.last)
            scanFn(to, src[static_cast<std::ptrdiff_t>(s)], arg->dstWidth, columns.startX,
                   columns.endX, columns.srcX);
        else
            blackFn(to, 0, arg->dstWidth);
    };
    ForEach(arg->dstHeight, place, dst, Numbers{});
}

// clang-format off
void IpFrame_Transform_Char4(IpTransformArg* arg)  { IpFrame_Transform_Master(IpScan_Transform_Char4,  IpScan_Black_BGRA8,       arg); }
void IpFrame_Transform_Short4(IpTransformArg* arg) { IpFrame_Transform_Master(IpScan_Transform_Short4, IpScan_Black_BGRA16,      arg); }
void IpFrame_Transform_Float4(IpTransformArg* arg) { IpFrame_Transform_Master(IpScan_Transform_Float4, IpScan_Black_BGRA32Float, arg); }
void IpFrame_Transform_YUYV8(IpTransformArg* arg)  { IpFrame_Transform_Master(IpScan_Transform_YUYV8,  IpScan_Black_YUYV8,       arg); }
void IpFrame_Transform_UYVY8(IpTransformArg* arg)  { IpFrame_Transform_Master(IpScan_Transform_UYVY8,  IpScan_Black_UYVY8,       arg); }
void IpFrame_Transform_v210(IpTransformArg* arg)   { IpFrame_Transform_Master(IpScan_Transform_v210,   IpScan_Black_v210,        arg); }
void IpFrame_Transform_Dummy(IpTransformArg*) {}
// clang-format on
