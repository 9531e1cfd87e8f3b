#include "tests/host/Pixels.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

namespace zel::test {

namespace {

template <class T>
T Load(const std::uint8_t* from) {
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

template <class T>
void Store(std::uint8_t* to, T value) {
    std::memcpy(to, &value, sizeof value);
}

std::uint32_t Code(float entry) {
    const bool inInt32 = entry >= -2147483648.0f && entry < 2147483648.0f;
    return static_cast<std::uint32_t>(inInt32 ? static_cast<std::int32_t>(entry) : 0);
}

int FloatIndex(float sample) {
    if (std::isnan(sample)) return 0;
    const double scaled = static_cast<float>(static_cast<double>(sample) * 1023.0);
    return scaled <= 0 ? 0 : scaled >= 1023 ? 1023 : static_cast<int>(scaled);
}

float Unit(std::uint32_t code) {
    const float k = std::bit_cast<float>(0x3A802008u);  // 1/1023
    return static_cast<float>(static_cast<double>(code) * k);
}

/// One pixel; `at[c]` is where colour c of it lies, `at[3]` alpha.
void MapPixel(int channelBytes, const Curve& curve, const std::uint8_t* const from[4],
              std::uint8_t* const to[4]) {
    for (std::size_t c = 0; c < 3; ++c) {
        const auto& table = curve[c];
        if (channelBytes == 1) {
            to[c][0] = static_cast<std::uint8_t>(Code(table[std::size_t{4} * from[c][0]] * 0.25f));
        } else if (channelBytes == 2) {
            const std::uint32_t code = Code(table[Load<std::uint16_t>(from[c]) / 64u]);
            Store(to[c], static_cast<std::uint16_t>(code * 64));
        } else {
            const auto index = static_cast<std::size_t>(FloatIndex(Load<float>(from[c])));
            Store(to[c], Unit(Code(table[index]) & 0xFFFF));
        }
    }
    if (channelBytes == 1)
        to[3][0] = from[3][0];
    else if (channelBytes == 2)
        Store(to[3], static_cast<std::uint16_t>(Load<std::uint16_t>(from[3]) & 0xFFC0));
    else  // the red code: what red would be under an identity curve
        Store(to[3], Unit(static_cast<std::uint32_t>(FloatIndex(Load<float>(from[0])))));
}

float FloatSample(int i, int channel) {
    constexpr float kInf = std::numeric_limits<float>::infinity();
    constexpr float kHostile[] = {std::numeric_limits<float>::quiet_NaN(),
                                  kInf,
                                  -kInf,
                                  -0.0f,
                                  1e30f,
                                  -1e30f,
                                  std::numeric_limits<float>::denorm_min(),
                                  std::bit_cast<float>(0x3F7FFFFFu)};
    if (i < 16) return kHostile[(i + channel) % 8];
    return static_cast<float>((i * 7 + channel * 4099) % 65536 - 4096) / 57344.0f;
}

}  // namespace

Curve IdentityCurve() {
    Curve curve;
    for (auto& channel : curve)
        for (std::size_t i = 0; i < channel.size(); ++i) channel[i] = static_cast<float>(i);
    return curve;
}

void FillWithSamples(const FrameFormat& format, HostFrame& frame) {
    for (int y = 0; y < frame.Height(); ++y)
        for (int x = 0; x < frame.Width(); ++x)
            for (int c = 0; c < 4; ++c) {
                std::uint8_t* const at =
                    frame.Row(y) + (std::ptrdiff_t{4} * x + c) * format.channelBytes;
                const int i = y * frame.Width() + x;
                // Odd factors and offsets permute the residues of 2^8 and 2^16.
                const int sample = i * (2 * c + 1) + 4099 * c;
                if (format.channelBytes == 1)
                    *at = static_cast<std::uint8_t>(sample);
                else if (format.channelBytes == 2)
                    Store(at, static_cast<std::uint16_t>(sample));
                else
                    Store(at, FloatSample(i, c));
            }
}

void Map(const FrameFormat& format, const Curve& curve, HostFrame& source, HostFrame& frame) {
    const int order[4] = {format.red, format.green, format.blue, format.alpha};
    for (int y = 0; y < frame.Height(); ++y)
        for (int x = 0; x < frame.Width(); ++x) {
            const std::uint8_t* from[4];
            std::uint8_t* to[4];
            for (int c = 0; c < 4; ++c) {
                const std::ptrdiff_t at = (std::ptrdiff_t{4} * x + order[c]) * format.channelBytes;
                from[c] = source.Row(y) + at;
                to[c] = frame.Row(y) + at;
            }
            MapPixel(format.channelBytes, curve, from, to);
        }
}

testing::AssertionResult Same(const FrameFormat& format, HostFrame& expected, HostFrame& got) {
    if (expected.memory == got.memory) return testing::AssertionSuccess();
    const auto hex = [&](const std::uint8_t* at) {
        std::string text = "0x";
        for (int i = format.channelBytes; i-- > 0;)
            for (const int digit : {at[i] >> 4, at[i] & 15}) text += "0123456789ABCDEF"[digit];
        return text;
    };
    for (int y = 0; y < got.Height(); ++y)
        for (int e = 0; e < 4 * got.Width(); ++e) {
            const std::uint8_t* const wanted = expected.Row(y) + e * format.channelBytes;
            const std::uint8_t* const found = got.Row(y) + e * format.channelBytes;
            if (std::memcmp(wanted, found, static_cast<std::size_t>(format.channelBytes)) != 0)
                return testing::AssertionFailure()
                       << format.name << " row " << y << " pixel " << e / 4 << " channel " << e % 4
                       << ": expected " << hex(wanted) << ", got " << hex(found);
        }
    return testing::AssertionFailure() << format.name << ": a guard byte outside the pixels";
}

}  // namespace zel::test
