#pragma once

/// Digests of the effects' curves: neutral, then twenty random settings. TableDigestsTest
/// says of what.

#include <array>
#include <cstddef>
#include <cstdint>

namespace zel::test {

inline constexpr std::size_t kDigestRuns = 21;
using EffectDigests = std::array<std::uint64_t, kDigestRuns>;

// clang-format off
inline constexpr EffectDigests kBalanceDigests = {
    0x464ed8bf88ff5f14, 0xe266f26ba12a7928, 0x3241d07c5c695e62,
    0x04ca01257d40ea68, 0x671038d5dd2f1e7b, 0xb0ba80b73e2aee7e,
    0x59d3136761f85863, 0xcdddcb068c726e1e, 0xab68b26b23e486f3,
    0x0e90e3b66f20a19d, 0x25a5ba89bd0ec8cb, 0x043b69aa7d58dcb8,
    0x1dfdb41eb065d8ab, 0xe037ccdd2e79851c, 0x3b9cb22c4a4a2c4f,
    0xa438a18372143754, 0x755f72e1dcb301e2, 0x03e687e94305fa28,
    0x52c0ba10a71a7d4a, 0x51126c471aa06306, 0x11751647734adefb,
};

inline constexpr EffectDigests kBrightnessDigests = {
    0x74dfd29f40b720f6, 0xd6cc4867e21916b3, 0xebe48f4b33427c96,
    0x4dfef326910ef4e1, 0xfd6dda6f4debff5d, 0x51c8c25d3e696a39,
    0x900a6f75250a9dcc, 0xa9502b27042faf06, 0xe4b6acc678c079cc,
    0x50cbdc165577459d, 0xf7558e29ea8da6c2, 0x766387474c38cb1f,
    0x2285f3f41a223270, 0x2d944f5c666b54a7, 0xed638120e645ead0,
    0xbdef56325325a87a, 0xc8af9b0223644ad9, 0x08c4865330157c99,
    0x30dac11b0af56363, 0x03aea501fb41b4a7, 0xb14b752db9f7247a,
};

inline constexpr EffectDigests kGammaDigests = {
    0x464ed8bf88ff5f14, 0x54ac01f39e0640cf, 0x10ccae1dce13c773,
    0xea5c3283ca82a6c1, 0x68004dff85ee62f7, 0x6304118c05f638bf,
    0xed7b4afbd972166c, 0xba7b974931eb7282, 0x4acc98ba4000ce2a,
    0xec863e0e486b8913, 0x1afc203502d825a5, 0xd5bbc672df962116,
    0x294a1f1b03aa1e27, 0x7631bb8aec036a12, 0xbdd5274c92a600c0,
    0x402bd29217bdd584, 0x779215a0b54e18bb, 0x37a1ae4ef6e25b67,
    0xf7cbb0eb75723366, 0x3cad5b4ff01099e6, 0x33a75d2839dc540f,
};

inline constexpr EffectDigests kLogDigests = {
    0x2f403d9b47ca25d4, 0xb5174c4b5bed4221, 0x9bc703b23f017cae,
    0xef11deb580d3dac1, 0xc4ff3093c8bbfb63, 0xc527bba07dfd18ba,
    0x5dc604d8c9a00c68, 0x93abd831ece99686, 0x1a0bd69e6ceca814,
    0xafed0302d61173be, 0x9d0c67489b019ad9, 0x6814810d6f0beee0,
    0x8c5e54d8f524c1ce, 0x3ba7e8371f46c853, 0x03fbf9fecb0c4ce5,
    0xa5f2bd63139a26f7, 0x10a1f7fa8a365ae4, 0x318998d3bfa0ca2c,
    0xc0c58e022e19ff48, 0x19f37c75d1a7c959, 0x7bb363ddddc2c576,
};

// clang-format on

}  // namespace zel::test
