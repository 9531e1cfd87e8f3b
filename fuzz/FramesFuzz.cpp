/// Fills, transforms, scales, test patterns and planes over any geometry and any
/// arguments: nothing beside the frame is touched, and every fill variant agrees.

#include "fuzz/Geometry.h"
#include "ip/Ip.h"
#include "ip/detail/Cpu.h"
#include "ip/detail/FillVariants.h"

namespace {

using namespace zel::fuzz;
using namespace zel::ip;
using zel::test::Bytes;
using zel::test::GuardedFrame;

// clang-format off
constexpr struct { IpScanFillFn* scan; FillUnit unit; } kFills[] = {
    {IpScan_Fill_RGBA8,       {1,  4}},
    {IpScan_Fill_BGRA8,       {1,  4}},
    {IpScan_Fill_ARGB8,       {1,  4}},
    {IpScan_Fill_RGBA16,      {1,  8}},
    {IpScan_Fill_BGRA16,      {1,  8}},
    {IpScan_Fill_ARGB16,      {1,  8}},
    {IpScan_Fill_BGRA32Float, {1, 16}},
    {IpScan_Fill_RGB10,       {1,  4}},
    {IpScan_Fill_DpxLe,       {1,  4}},
    {IpScan_Fill_DpxBe,       {1,  4}},
    {IpScan_Fill_YUYV8,       {2,  4}},
    {IpScan_Fill_UYVY8,       {2,  4}},
    {IpScan_Fill_v210,        {6, 16}},
};

constexpr struct { void (*frame)(IpTransformArg*); int pixels, bytes; } kTransforms[] = {
    {IpFrame_Transform_Char4,  1,  4},
    {IpFrame_Transform_Short4, 1,  8},
    {IpFrame_Transform_Float4, 1, 16},
    {IpFrame_Transform_YUYV8,  2,  4},
    {IpFrame_Transform_UYVY8,  2,  4},
    {IpFrame_Transform_v210,   6, 16},
};

constexpr decltype(&IpFrame_Scale_RGB10_To_BGRA8) kScales[] = {
    IpFrame_Scale_RGB10_To_BGRA8, IpFrame_Scale_DpxBE_To_BGRA8, IpFrame_Scale_DpxLE_To_BGRA8,
};

constexpr decltype(&IpFrame_Test_BGRA8) kPatterns[] = {
    IpFrame_Test_BGRA8, IpFrame_Test_RGB10, IpFrame_Test_DpxLe, IpFrame_Test_DpxBe,
    IpFrame_Test_YUYV8, IpFrame_Test_UYVY8,
};

constexpr decltype(&IpPlanar_Copy_420_To_CbYCrY8) kPlanes[] = {
    IpPlanar_Copy_420_To_CbYCrY8, IpPlanar_Copy_420_To_CbYCrY8_2, IpPlanar_Copy_420_To_YCbYCr8,
};
// clang-format on

template <class Table>
const auto& OneOf(Feed& feed, const Table& table) {
    return table[static_cast<std::size_t>(feed.Below(static_cast<int>(std::size(table))))];
}

void Fill(Feed& feed, int width, int height) {
    const auto& fill = OneOf(feed, kFills);
    const bool normalised = feed.Flag();
    float colour[4];
    for (float& c : colour) c = feed.Flag() ? feed.Any<float>() : feed.Setting();
    const std::size_t rowBytes = Size(width) / Size(fill.unit.pixels) * Size(fill.unit.bytes);
    Bytes expected;
    const Feed same = feed;
    for (const FillVariant& variant : FillVariants()) {
        if (variant.needs > SupportedCpu()) continue;
        Feed again = same;
        const GuardedFrame frame = AnyFrame(again, rowBytes, height);
        const Bytes before = frame.content();
        FillFrame(variant, fill.scan, fill.unit, frame.base(), frame.rowBytes(), width, height,
                  colour[0], colour[1], colour[2], colour[3], normalised);
        if (expected.empty()) expected = frame.content();
        CheckSame(frame, expected, std::string("fill ") + variant.name);
        CheckGuards(frame, before, height, std::string("fill ") + variant.name);
    }
}

void Transform(Feed& feed, int width, int height) {
    const auto& transform = OneOf(feed, kTransforms);
    const auto rowBytes = [&](int pixels) {
        return (Size(pixels) + Size(transform.pixels) - 1) / Size(transform.pixels) *
               Size(transform.bytes);
    };
    const int srcWidth = feed.Below(70) + 1, srcHeight = feed.Below(7) + 1;
    const GuardedFrame dst = AnyFrame(feed, rowBytes(width), height);
    // Rows may be read up to the next multiple of six pixels.
    const GuardedFrame src = AnyFrame(feed, rowBytes((srcWidth + 5) / 6 * 6), srcHeight);
    const Bytes before = dst.content(), srcBefore = src.content();
    IpTransformArg arg{};
    arg.dstBase = dst.base(), arg.srcBase = src.base();
    arg.dstRowBytes = dst.rowBytes(), arg.srcRowBytes = src.rowBytes();
    arg.dstWidth = width, arg.dstHeight = height;
    arg.srcWidth = srcWidth, arg.srcHeight = srcHeight;
    for (float* value :
         {&arg.offsetX, &arg.offsetY, &arg.cropLeft, &arg.cropTop, &arg.cropRight, &arg.cropBottom})
        *value = feed.Setting();
    arg.flipVertical = feed.Flag();
    arg.inPixels = feed.Flag();
    transform.frame(&arg);
    CheckGuards(dst, before, height, "transform");
    CheckSame(src, srcBefore, "transform, source");
}

void Scale(Feed& feed, int width, int height) {
    const int srcWidth = AnyExtent(feed, 70), srcHeight = AnyExtent(feed, 6);
    const GuardedFrame dst = AnyFrame(feed, Size(width) * 4, height);
    const GuardedFrame src = AnyFrame(feed, Size(srcWidth) * 4, srcHeight);
    const Bytes before = dst.content(), srcBefore = src.content();
    OneOf(feed, kScales)(dst.base(), dst.rowBytes(), width, height, src.base(), src.rowBytes(),
                         srcWidth, srcHeight);
    CheckGuards(dst, before, height, "scale");
    CheckSame(src, srcBefore, "scale, source");
}

void Pattern(Feed& feed, int width, int height) {
    const auto& pattern = OneOf(feed, kPatterns);
    // Row bytes are dropped to words: no padding that is no word.
    const GuardedFrame frame(
        {Size(width) * 4, height, feed.Flag(), static_cast<std::size_t>(4 * feed.Below(5)), 0},
        feed.Flag() ? zel::test::Place::atFront : zel::test::Place::atBack,
        feed.Any<std::uint32_t>());
    const Bytes before = frame.content();
    pattern(frame.base(), frame.rowBytes(), width, height, feed.Any<int>());
    CheckGuards(frame, before, height, "pattern");
}

void Planes(Feed& feed, int width, int height) {
    const std::size_t pairs = Size(width) / 2;
    const int chromaRows = height > 0 ? (height + 1) / 2 : 0;
    const GuardedFrame dst = AnyFrame(feed, pairs * 4, height);
    const GuardedFrame y = AnyFrame(feed, pairs * 2, height);
    const GuardedFrame cb = AnyFrame(feed, pairs, chromaRows);
    const GuardedFrame cr = AnyFrame(feed, pairs, chromaRows);
    const Bytes before = dst.content();
    OneOf(feed, kPlanes)(dst.base(), dst.rowBytes(), y.base(), y.rowBytes(), cb.base(),
                         cb.rowBytes(), cr.base(), cr.rowBytes(), width, height);
    CheckGuards(dst, before, height, "planes");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Feed feed(data, size);
    constexpr void (*kKinds[])(Feed&, int, int) = {Fill, Transform, Scale, Pattern, Planes};
    const auto kind = OneOf(feed, kKinds);
    const int width = AnyExtent(feed, 200), height = AnyExtent(feed, 6);
    kind(feed, width, height);
    return 0;
}
