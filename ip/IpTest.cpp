#include "ip/IpTest.h"

#include "ip/IpFill.h"
#include "ip/detail/Layouts.h"
#include "ip/detail/Units.h"

namespace {

using namespace zel::ip;

using PackPair = std::uint32_t(std::uint32_t y, std::uint32_t cb, std::uint32_t cr);

constexpr std::uint32_t PackYUYV(std::uint32_t y, std::uint32_t cb, std::uint32_t cr) {
    return PackBytes(y, cb, y, cr);
}

constexpr std::uint32_t PackUYVY(std::uint32_t y, std::uint32_t cb, std::uint32_t cr) {
    return PackBytes(cb, y, cr, y);
}

std::uint32_t GreyPair(PackPair* pack, float grey) {
    unsigned char y, cb, cr;
    IpRGBToYUV8(&y, &cb, &cr, grey, grey, grey, true);
    return pack(y, cb, cr);
}

void TestPairs(PackPair* pack, void* base, int rowBytes, int width, int height, int reserved) {
    IpFrame_Test_Long_Mono(base, rowBytes, width / 2, height, reserved, GreyPair(pack, 1),
                           GreyPair(pack, 0), false);
}

void TestWords(void* base, int rowBytes, int width, int height, int reserved) {
    IpFrame_Test_Long_Mono(base, rowBytes, width, height, reserved, 0xFFFFFFFF, 0, false);
}

}  // namespace

void IpFrame_Test_Long_Mono(void* base, int rowBytes, int width, int height, int,
                            unsigned int onValue, unsigned int offValue, bool fillOff) {
    const auto draw = [=](void* row, std::ptrdiff_t r) {
        // Deliberate: two rows of border, one column. docs/quirks.md, "pattern border".
        const bool border = r < 2 || r >= std::ptrdiff_t{height} - 2;
        if (border || r == height / 2) return FillUnits(row, 0, width, onValue);
        if (fillOff) FillUnits(row, 1, std::ptrdiff_t{width} - 2, offValue);
        if (width > 0) {
            StoreAt(row, 0, onValue);
            StoreAt(row, std::ptrdiff_t{width} - 1, onValue);
        }
    };
    ForEach(height, draw, Rows{base, rowBytes / 4 * 4}, Numbers{});
}

// clang-format off
void IpFrame_Test_BGRA8(void* base, int rowBytes, int width, int height, int reserved) { TestWords(base, rowBytes, width, height, reserved); }
void IpFrame_Test_RGB10(void* base, int rowBytes, int width, int height, int reserved) { TestWords(base, rowBytes, width, height, reserved); }
void IpFrame_Test_DpxLe(void* base, int rowBytes, int width, int height, int reserved) { TestWords(base, rowBytes, width, height, reserved); }
void IpFrame_Test_DpxBe(void* base, int rowBytes, int width, int height, int reserved) { TestWords(base, rowBytes, width, height, reserved); }

// Deliberate: each in the other's byte order. docs/quirks.md, "pattern pairs".
void IpFrame_Test_YUYV8(void* base, int rowBytes, int width, int height, int reserved) { TestPairs(PackUYVY, base, rowBytes, width, height, reserved); }
void IpFrame_Test_UYVY8(void* base, int rowBytes, int width, int height, int reserved) { TestPairs(PackYUYV, base, rowBytes, width, height, reserved); }

// Deliberate: empty. docs/quirks.md, "empty members".
void IpFrame_Test_v210(void*, int, int, int, int) {}
void IpFrame_Test_BGRA16(void*, int, int, int, int) {}
// clang-format on
