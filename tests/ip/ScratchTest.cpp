// The members that go by a scratch frame. The program's array allocation is replaced,
// to see what they ask for and to refuse it. valgrind puts its own in their place unless
// told --soname-synonyms=somalloc=nouserintercepts.

#include "ip/IpCopy.h"

#include "tests/support/GuardedBuffer.h"
#include "tests/support/Shapes.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <new>

namespace {

struct Allocations {
    bool refuse;
    int asked, freed;
    std::size_t size;
    void* block;
} allocations;

}  // namespace

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    ++allocations.asked;
    allocations.size = size;
    allocations.block = allocations.refuse ? nullptr : std::malloc(size ? size : 1);
    // Whatever is not cleared shows.
    if (allocations.block) std::memset(allocations.block, 0xCD, size);
    return allocations.block;
}
void* operator new[](std::size_t size) {
    if (void* const block = std::malloc(size ? size : 1)) return block;
    throw std::bad_alloc();
}
void operator delete[](void* block) noexcept {
    if (block && block == allocations.block) ++allocations.freed;
    std::free(block);
}
void operator delete[](void* block, std::size_t) noexcept { operator delete[](block); }

namespace {

using namespace zel::test;

struct Member {
    const char* name;
    decltype(&IpFrame_Copy) frame;
    std::size_t scratchBytes;  // of a pixel
    Bytes pixel;               // written; empty: none is
};

const Member kMembers[] = {
    {"v210_To_BGRA8", IpFrame_Copy_v210_To_BGRA8, 2, {}},
    {"YCbYCr8_To_RGBA8", IpFrame_Copy_YCbYCr8_To_RGBA8, 3, {0, 0, 0, 255}},
    {"CbYCrY8_To_RGBA8", IpFrame_Copy_CbYCrY8_To_RGBA8, 3, {0, 0, 0, 255}},
    {"YCbCr8_To_ARGB8", IpFrame_Copy_YCbCr8_To_ARGB8, 3, {255, 0, 0, 0}},
};

void RunMember(const Member& m, int width, int height, bool dstNegative, bool srcNegative,
               Place place, bool refuse) {
    const auto w = static_cast<std::size_t>(width), h = static_cast<std::size_t>(height);
    GuardedFrame dst({w * 4, height, dstNegative, place == Place::guarded ? 5u : 0u, 1}, place, 1);
    GuardedFrame src({w / 6 * 16, height, srcNegative}, place, 2);
    Bytes expected = dst.content();
    const Bytes source = src.content();
    if (!refuse && !m.pixel.empty())
        for (int r = 0; r < height; ++r)
            for (std::size_t i = 0; i < w * 4; ++i) expected[dst.Offset(r) + i] = m.pixel[i % 4];
    allocations = {refuse, 0, 0, 0, nullptr};
    m.frame(dst.base(), dst.rowBytes(), src.base(), src.rowBytes(), width, height);
    const Allocations after = allocations;
    allocations = {};
    ASSERT_EQ(dst.Difference(expected), "") << m.name << ' ' << width << " x " << height;
    ASSERT_EQ(src.Difference(source), "") << m.name;
    ASSERT_EQ(after.asked, 1) << m.name;
    ASSERT_EQ(after.size, w * m.scratchBytes * h) << m.name;
    ASSERT_EQ(after.freed, refuse ? 0 : 1) << m.name;
}

TEST(Scratch, UnfinishedMembers) {
    for (const Member& m : kMembers)
        for (const int width : Widths())
            for (int height = 0; height <= kMaxHeight; ++height)
                for (const int signs : {0, 1, 2, 3})
                    for (const Place place : {Place::guarded, Place::atFront, Place::atBack})
                        RunMember(m, width, height, signs & 1, signs & 2, place, false);
}

TEST(Scratch, WithoutMemoryNothingIsWritten) {
    for (const Member& m : kMembers)
        for (const int width : {0, 1, 6, 70})
            for (const int signs : {0, 1, 2, 3})
                RunMember(m, width, 4, signs & 1, signs & 2, Place::guarded, true);
}

// Beyond 2^32 bytes, so a size held in an int would wrap to something small.
TEST(Scratch, SizesAreNotCutTo32Bits) {
    if constexpr (sizeof(std::size_t) > 4) {
        for (const Member& m : kMembers) {
            std::uint8_t untouched[4] = {1, 2, 3, 4};
            allocations = {true, 0, 0, 0, nullptr};
            m.frame(untouched, 4, untouched, 4, 50000, 50000);
            const Allocations after = allocations;
            allocations = {};
            EXPECT_EQ(after.asked, 1) << m.name;
            EXPECT_EQ(after.size, m.scratchBytes * 50000 * 50000) << m.name;
            EXPECT_EQ(Bytes(untouched, untouched + 4), (Bytes{1, 2, 3, 4}));
        }
    }
}

TEST(Scratch, NegativeExtentsWriteNothing) {
    for (const Member& m : kMembers)
        for (const auto& [width, height] : {std::pair{-6, 3}, {6, -3}, {-6, -3}}) {
            GuardedFrame dst({48, 3}, Place::guarded, 3), src({32, 3}, Place::guarded, 4);
            const Bytes before = dst.content();
            m.frame(dst.base(), 48, src.base(), 32, width, height);
            EXPECT_EQ(dst.Difference(before), "") << m.name;
        }
}

}  // namespace
