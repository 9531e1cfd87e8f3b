#pragma once

/// Color Balance, stated once more and plainly: what the program's pictures are held to.

#include <array>
#include <cstddef>
#include <cstdint>

namespace zel::test {

/// Percentages in the order all channels, red, green, blue.
struct Balance {
    std::array<float, 4> master{}, highlights{}, midtones{}, shadows{};
};

inline float Limit(float x, float lo, float hi) { return x < lo ? lo : x > hi ? hi : x; }

/// The curve of one channel (0 red, 1 green, 2 blue) over the codes 0..1023.
class Curve {
public:
    Curve(const Balance& b, int channel) {
        const auto c = static_cast<std::size_t>(channel) + 1;
        const float master = Limit(b.master[0] + b.master[c], -100.0f, 100.0f);
        const float m = Limit((b.midtones[0] + b.midtones[c]) + master, -100.0f, 100.0f) * 0.01f;
        const float s = Limit((b.shadows[0] + b.shadows[c]) + master, -100.0f, 100.0f) * 0.01f;
        const float h = (master + (b.highlights[0] + b.highlights[c])) * 0.01f;
        for (std::size_t i = 0; i < 1024; ++i) {
            const float t = static_cast<float>(i);
            const float x = t / 1023.0f, rest = 1.0f - x;
            const float wHighlights = static_cast<float>(double{x} * double{x});
            const float wMidtones = (rest + rest) * t / 1023.0f;
            const float wShadows = static_cast<float>(double{rest} * double{rest});
            const float r =
                ((t * h + t) * wHighlights + (t * m + t) * wMidtones) + (t + t * s) * wShadows;
            m_code[i] = Limit(r, 0.0f, 1023.0f);
        }
    }

    unsigned Code(std::size_t code) const { return static_cast<unsigned>(m_code[code]); }

    std::uint8_t Of8(std::uint8_t v) const {
        return static_cast<std::uint8_t>(m_code[std::size_t{4} * v] * 0.25f);
    }
    std::uint16_t Of16(std::uint16_t v) const {
        return static_cast<std::uint16_t>(Code(v / 64u) * 64u);
    }
    float OfFloat(float v) const {
        const float code = Limit(v * 1023.0f, 0.0f, 1023.0f);
        return static_cast<float>(Code(static_cast<std::size_t>(code))) * (1.0f / 1023.0f);
    }

private:
    std::array<float, 1024> m_code;
};

}  // namespace zel::test
