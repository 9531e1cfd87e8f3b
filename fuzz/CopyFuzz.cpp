/// Conversions over frames of any geometry and any samples: every member against its
/// units restated, and every variant against the first of its list.

#include "fuzz/Geometry.h"
#include "ip/detail/CopyVariants.h"
#include "ip/detail/Cpu.h"
#include "tests/ip/CopyMembers.h"

#include <algorithm>

namespace {

using namespace zel::fuzz;
using namespace zel::ip;
using zel::test::Bytes;
using zel::test::CopyMember;
using zel::test::GuardedFrame;

/// The members without rows of their own walk both frames upwards in memory.
void Restate(const CopyMember& member, int width, int height, const GuardedFrame& src,
             const GuardedFrame& dst, Bytes& expected) {
    const bool turned = member.scan && (src.rowBytes() < 0) != (dst.rowBytes() < 0);
    for (int r = 0; r < height; ++r) {
        const auto from = src.row(turned ? height - 1 - r : r);
        for (int unit = 0; unit < width / member.pixels; ++unit) {
            const Bytes made = member.unit(from.data() + Size(unit) * member.srcUnit);
            std::ranges::copy(
                made, expected.begin() +
                          static_cast<std::ptrdiff_t>(dst.Offset(r) + Size(unit) * member.dstUnit));
        }
    }
}

void Members(Feed& feed, int width, int height) {
    static const std::vector<CopyMember> members = zel::test::CopyMembers();
    const CopyMember& member =
        members[static_cast<std::size_t>(feed.Below(static_cast<int>(members.size())))];
    const std::size_t units = Size(width) / Size(member.pixels);
    const GuardedFrame src = AnyFrame(feed, units * member.srcUnit, height);
    const GuardedFrame dst = AnyFrame(feed, units * member.dstUnit, height);
    const Bytes before = src.content();
    Bytes expected = dst.content();
    Restate(member, width, height, src, dst, expected);
    member.frame(dst.base(), dst.rowBytes(), src.base(), src.rowBytes(), width, height);
    CheckSame(dst, expected, member.name);
    CheckSame(src, before, std::string(member.name) + ", source");
}

void Variants(Feed& feed, int width, int height) {
    const auto families = CopyFamilies();
    const CopyFamily& family =
        *families[static_cast<std::size_t>(feed.Below(static_cast<int>(families.size())))];
    const std::size_t units = Size(width) / Size(family.pixels);
    // A plain copy goes by row bytes, padding included: none behind the last row.
    const bool padded = &family != &kPlainCopy;
    const GuardedFrame src = AnyFrame(feed, units * Size(family.srcBytes), height, padded);
    const Bytes before = src.content();
    Bytes expected;
    const Feed same = feed;
    for (const CopyVariant& variant : family.variants) {
        if (variant.needs > SupportedCpu()) continue;
        Feed again = same;
        const GuardedFrame dst = AnyFrame(again, units * Size(family.dstBytes), height, padded);
        const Bytes untouched = dst.content();
        CopyFrame(family, variant, dst.base(), dst.rowBytes(), src.base(), src.rowBytes(), width,
                  height);
        const std::string name = std::string(family.name) + ' ' + variant.name;
        if (expected.empty()) expected = dst.content();
        CheckSame(dst, expected, name);
        CheckSame(src, before, name + ", source");
        CheckGuards(dst, untouched, height, name);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Feed feed(data, size);
    const int width = AnyExtent(feed, 200), height = AnyExtent(feed, 5);
    if (feed.Flag())
        Members(feed, width, height);
    else
        Variants(feed, width, height);
    return 0;
}
