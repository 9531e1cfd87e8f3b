/// Look-ups over frames of any geometry and any samples: every variant that this
/// processor runs against the first of its list.

#include "fuzz/Geometry.h"
#include "ip/detail/Cpu.h"
#include "ip/detail/LutVariants.h"

#include <array>
#include <optional>

namespace {

using namespace zel::fuzz;
using namespace zel::ip;
using zel::test::Bytes;
using zel::test::GuardedFrame;

using Tables = std::array<std::array<std::uint16_t, 1024>, 4>;

/// Any codes for 16-bit and float look-ups, which hold ten bits; any bytes for 8-bit ones.
Tables AnyTables(Feed& feed, bool bytes) {
    Tables tables;
    std::uint32_t seed = feed.Any<std::uint32_t>();
    for (auto& table : tables)
        for (std::uint16_t& cell : table) {
            seed = seed * 1664525u + 1013904223u;
            cell = static_cast<std::uint16_t>(bytes ? seed >> 16 : seed >> 22);
        }
    return tables;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Feed feed(data, size);
    const auto families = LutFamilies();
    const LutFamily& family =
        *families[static_cast<std::size_t>(feed.Below(static_cast<int>(families.size())))];
    const int width = AnyExtent(feed, 300), height = AnyExtent(feed, 5);
    const bool inPlace = feed.Flag();
    const std::size_t rowBytes = Size(width) * Size(family.pixelBytes);
    Tables tables = AnyTables(feed, family.pixelBytes == 4);

    GuardedFrame src = AnyFrame(feed, rowBytes, height);
    GuardedFrame dst = AnyFrame(feed, rowBytes, height);
    // Samples of the fuzzer's own, on top of the seeded ones.
    for (int r = 0; r < height && !feed.Ended(); ++r)
        for (std::size_t i = 0; i + 4 <= rowBytes && !feed.Ended(); i += 4) {
            const auto sample = feed.Any<std::uint32_t>();
            std::memcpy(src.row(r).data() + i, &sample, 4);
        }
    const Bytes srcBefore = src.content(), dstBefore = dst.content();
    const auto put = [](GuardedFrame& frame, const Bytes& content) {
        std::memcpy(frame.row(0).data() - frame.Offset(0), content.data(), content.size());
    };
    GuardedFrame& target = inPlace ? src : dst;

    Bytes expected;
    for (const LutVariant& variant : family.variants) {
        if (variant.needs > SupportedCpu()) continue;
        if (height > 0) {
            put(src, srcBefore);
            put(dst, dstBefore);
        }
        LutFrame(family, variant, target.base(), target.rowBytes(), src.base(), src.rowBytes(),
                 width, height, tables[0].data(), tables[1].data(), tables[2].data(),
                 tables[3].data());
        const std::string name = std::string(family.name) + ' ' + variant.name;
        if (&variant == &family.variants.front()) {
            expected = target.content();
            CheckGuards(target, inPlace ? srcBefore : dstBefore, height, name);
        }
        CheckSame(target, expected, name);
        if (!inPlace) CheckSame(src, srcBefore, name + ", source");
    }
    return 0;
}
