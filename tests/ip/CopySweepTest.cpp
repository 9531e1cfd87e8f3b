#include "tests/ip/CopyMembers.h"
#include "tests/ip/Sweep.h"

#include <gtest/gtest.h>

namespace {

using namespace zel::test;

std::string NameOf(const testing::TestParamInfo<CopyMember>& info) { return info.param.name; }

class CopySweep : public testing::TestWithParam<CopyMember> {};

TEST_P(CopySweep, EveryShape) {
    const CopyMember& m = GetParam();
    RowRoutine routine = ByUnits(m.name, m.pixels, m.srcUnit, m.dstUnit, m.unit);
    routine.frame = m.frame;
    if (m.scan)
        routine.scan = m.scan;
    else
        routine.walk = RowWalk::asGiven;
    Sweep(routine);
}

/// Each byte of the unit takes all its values, the others standing at some.
TEST_P(CopySweep, EveryByteValue) {
    const CopyMember& m = GetParam();
    for (std::size_t at = 0; at < m.srcUnit; ++at)
        for (const unsigned others : {0u, 0x5Au, 0xFFu})
            for (unsigned value = 0; value < 256; ++value) {
                Bytes in(m.srcUnit, static_cast<std::uint8_t>(others)), out(m.dstUnit);
                in[at] = static_cast<std::uint8_t>(value);
                m.frame(out.data(), 0, in.data(), 0, m.pixels, 1);
                ASSERT_EQ(out, m.unit(in.data())) << "byte " << at << " = " << value;
            }
}

/// Each half of every word takes all its 65536 values.
TEST_P(CopySweep, EveryHalfWord) {
    const CopyMember& m = GetParam();
    for (std::size_t at = 0; at + 1 < m.srcUnit; at += 2)
        for (unsigned value = 0; value < 65536; value += FullRange() ? 1u : 251u) {
            Bytes in(m.srcUnit, 0x5A), out(m.dstUnit);
            in[at] = static_cast<std::uint8_t>(value % 256);
            in[at + 1] = static_cast<std::uint8_t>(value / 256);
            m.frame(out.data(), 0, in.data(), 0, m.pixels, 1);
            ASSERT_EQ(out, m.unit(in.data())) << "bytes from " << at << " = " << value;
        }
}

TEST_P(CopySweep, NegativeExtentsWriteNothing) {
    const CopyMember& m = GetParam();
    for (const auto& [width, height] : {std::pair{-12, 3}, {12, -3}, {-12, -3}, {12, 0}, {-1, 1}}) {
        GuardedFrame dst({12 * m.dstUnit, 3}, Place::guarded, 1);
        GuardedFrame src({12 * m.srcUnit, 3}, Place::guarded, 2);
        const Bytes before = dst.content();
        m.frame(dst.base(), -dst.rowBytes(), src.base(), src.rowBytes(), width, height);
        EXPECT_EQ(dst.Difference(before), "") << width << " x " << height;
    }
}

INSTANTIATE_TEST_SUITE_P(Members, CopySweep, testing::ValuesIn(CopyMembers()), NameOf);

// --- the plain copies -----------------------------------------------------------

struct PlainCopy {
    const char* name;
    FrameCopyFn frame;
    IpScanCopyFn* scan;
};

TEST(PlainCopySweep, EveryShape) {
    for (const PlainCopy& m : {PlainCopy{"IpFrame_Copy", IpFrame_Copy, IpScan_Copy},
                               PlainCopy{"IpFrame_Dummy", IpFrame_Dummy, IpScan_Dummy}}) {
        RowRoutine routine;
        routine.name = m.name;
        routine.dstBytes =
            routine.srcBytes = [](int width) { return static_cast<std::size_t>(width); };
        // Rows here are as long as the row bytes say, padding included, so the
        // frames have none; the width handed in means nothing.
        routine.slowRow = [](const Bytes& src, int) { return src; };
        routine.walk = RowWalk::upwards;
        routine.scan = m.scan;
        for (const int width : Widths())
            for (const Place place : {Place::guarded, Place::atFront, Place::atBack})
                SweepScan(routine, width, place, kLayouts[1]);
        for (const int width : Widths())
            for (int height = 0; height <= kMaxHeight; ++height)
                for (const int signs : {0, 1, 2, 3})
                    for (const Place place : {Place::guarded, Place::atFront, Place::atBack})
                        for (const int claimed : {width, 0, -5, 100000}) {
                            routine.frame = [&](void* dst, int dstRow, void* src, int srcRow, int,
                                                int h) {
                                m.frame(dst, dstRow, src, srcRow, claimed, h);
                            };
                            SweepFrame(routine, width, height, signs & 1, signs & 2, place, {0, 1});
                        }
    }
}

}  // namespace
