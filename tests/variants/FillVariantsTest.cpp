#include "ip/detail/FillVariants.h"
#include "tests/support/GuardedBuffer.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace zel::ip;
using namespace zel::test;

struct Layout {
    const char* name;
    IpScanFillFn* scan;
    FillUnit unit;
};

// clang-format off
constexpr Layout kLayouts[] = {
    {"RGBA8",       IpScan_Fill_RGBA8,       {1,  4}},
    {"RGBA16",      IpScan_Fill_RGBA16,      {1,  8}},
    {"BGRA32Float", IpScan_Fill_BGRA32Float, {1, 16}},
    {"DpxBe",       IpScan_Fill_DpxBe,       {1,  4}},
    {"YUYV8",       IpScan_Fill_YUYV8,       {2,  4}},
    {"v210",        IpScan_Fill_v210,        {6, 16}},
};
// clang-format on

class FillVariantTest : public testing::TestWithParam<const FillVariant*> {
protected:
    void SetUp() override {
        if (variant.needs > SupportedCpu())
            GTEST_SKIP() << "this processor lacks " << NameOf(variant.needs);
    }

    void Compare(const Layout& layout, int width, int height, std::size_t padding,
                 std::size_t offset, bool negative, Place place) {
        const auto rowBytes =
            static_cast<std::size_t>(width / layout.unit.pixels * layout.unit.bytes);
        GuardedFrame dst({rowBytes, height, negative, padding, offset}, place, 5);
        Bytes expected = dst.content();
        const std::size_t row0 = dst.Offset(0);
        IpFrame_Fill_Master(layout.scan, expected.data() + row0, dst.rowBytes(), width, height,
                            0.3f, 0.9f, 0.1f, 0.7f, true);
        FillFrame(variant, layout.scan, layout.unit, dst.base(), dst.rowBytes(), width, height,
                  0.3f, 0.9f, 0.1f, 0.7f, true);
        ASSERT_EQ(dst.Difference(expected), "")
            << layout.name << ' ' << width << " x " << height << ", offset " << offset
            << (negative ? ", negative" : "");
    }

    const FillVariant& variant = *GetParam();
};

TEST_P(FillVariantTest, EveryWidthAndAlignment) {
    for (const Layout& layout : kLayouts)
        for (int width = 0; width <= 130; ++width)
            for (std::size_t offset = 0; offset < 64; offset += width % 8 == 0 ? 1 : 5)
                for (const bool negative : {false, true}) {
                    Compare(layout, width, 3, offset % 7, offset, negative, Place::guarded);
                    if (HasFatalFailure()) return;
                }
}

TEST_P(FillVariantTest, NothingIsTouchedBesideTheFrame) {
    for (const Layout& layout : kLayouts)
        for (int width = 0; width <= 130; ++width)
            for (const Place place : {Place::atFront, Place::atBack}) {
                Compare(layout, width, 2, 0, 0, false, place);
                if (HasFatalFailure()) return;
            }
}

// From the size on from which stores go past the caches.
TEST_P(FillVariantTest, LargeFrames) {
    for (const Layout& layout : kLayouts)
        for (const std::size_t offset : {0u, 4u, 13u})
            for (const bool negative : {false, true}) {
                Compare(layout, 1925, 1100, offset, offset, negative, Place::guarded);
                if (HasFatalFailure()) return;
            }
}

TEST_P(FillVariantTest, NegativeSizesDoNothing) {
    FillPattern memory{};
    FillFrame(variant, IpScan_Fill_RGBA8, {1, 4}, memory.data(), 16, -3, 1, 1, 1, 1, 1, true);
    FillFrame(variant, IpScan_Fill_RGBA8, {1, 4}, memory.data(), 16, 4, -1, 1, 1, 1, 1, true);
    EXPECT_EQ(memory, FillPattern{});
}

std::vector<const FillVariant*> AllVariants() {
    std::vector<const FillVariant*> variants;
    for (const FillVariant& variant : FillVariants())
        if (variant.row) variants.push_back(&variant);
    return variants;
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(FillVariantTest);
INSTANTIATE_TEST_SUITE_P(, FillVariantTest, testing::ValuesIn(AllVariants()),
                         [](const auto& tested) { return std::string(tested.param->name); });

}  // namespace
