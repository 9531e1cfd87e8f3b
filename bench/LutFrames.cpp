/// Look-ups over frames: every variant beside a copy of the frame.

#include "bench/Beside.h"
#include "ip/IpTables.h"
#include "ip/detail/LutVariants.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <random>

namespace {

using namespace zel::bench;
using namespace zel::ip;

/// Tables for both sample types: 10-bit codes, of which the 8-bit family reads the first
/// 256 bytes.
std::array<std::array<std::uint16_t, 1024>, 4> Tables() {
    std::mt19937 random(1);
    std::array<std::array<std::uint16_t, 1024>, 4> tables;
    for (auto& table : tables)
        for (auto& code : table) code = static_cast<std::uint16_t>(random() % 1024);
    return tables;
}

void Run(benchmark::State& state, const LutFamily& family, const LutVariant& variant, Size size,
         Caches caches) {
    const int rowBytes = size.width * family.pixelBytes;
    const auto bytes = static_cast<std::size_t>(rowBytes) * static_cast<std::size_t>(size.height);
    auto tables = Tables();
    Ring ring(bytes, bytes, family.pixelBytes == 16 ? Samples::floats : Samples::integers, caches);
    RunBeside(
        state, "x_memcpy",
        [&] {
            const auto [dst, src] = ring.Next();
            LutFrame(family, variant, dst, rowBytes, src, rowBytes, size.width, size.height,
                     &tables[0], &tables[1], &tables[2], &tables[3]);
        },
        [&] {
            const auto [dst, src] = ring.Next();
            std::memcpy(dst, src, bytes);
        });
}

[[maybe_unused]] const bool kRegistered = [] {
    for (const LutFamily* const family : LutFamilies())
        ForEverySize([=](Size size, Caches caches) {
            for (const LutVariant& variant : family->variants) {
                if (variant.needs > SupportedCpu()) continue;
                const std::string name = std::string(family->name) + '/' + variant.name;
                benchmark::RegisterBenchmark(
                    RowName(name, size, caches).c_str(),
                    [=, &variant](benchmark::State& s) { Run(s, *family, variant, size, caches); })
                    ->UseManualTime()
                    ->Unit(benchmark::kMicrosecond);
            }
        });
    return true;
}();

}  // namespace
