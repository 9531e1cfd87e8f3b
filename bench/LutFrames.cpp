/// Look-ups over frames.

#include "bench/Frames.h"
#include "bench/LutTables.h"
#include "ip/detail/LutVariants.h"

namespace {

using namespace zel::bench;
using namespace zel::ip;

void Run(benchmark::State& state, const Row& row, const LutFamily& family,
         const LutVariant& variant) {
    const int width = row.size.width, height = row.size.height;
    const int rowBytes = width * family.pixelBytes;
    const std::size_t bytes = FrameBytes(rowBytes, row.size);
    LutTables tables = RandomTables();
    RunBesideCopy(state, row, bytes, bytes,
                  family.pixelBytes == 16 ? Samples::floats : Samples::integers,
                  [&](void* dst, void* src) {
                      LutFrame(family, variant, dst, rowBytes, src, rowBytes, width, height,
                               &tables[0], &tables[1], &tables[2], &tables[3]);
                  });
}

/// Two float frames of this size stay in most second-level caches: what is measured then
/// is the routine and not memory.
constexpr Size kSmall{240, 135};

[[maybe_unused]] const bool kRegistered = [] {
    for (const LutFamily* const family : LutFamilies()) {
        const auto add = [=](Size size, Caches caches) {
            for (const LutVariant& variant : family->variants)
                if (variant.needs <= SupportedCpu())
                    Register({family->name, variant.name, size, caches},
                             [=, &variant](auto& s, const Row& r) { Run(s, r, *family, variant); });
        };
        add(kSmall, Caches::hot);
        ForEverySize(add);
    }
    return true;
}();

}  // namespace
