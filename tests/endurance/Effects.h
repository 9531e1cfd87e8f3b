#pragma once

/// What tests of modules under strain have in common.

#include "headless/EffectSession.h"

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

namespace zel::test {

/// Files of the four effects.
inline std::vector<std::filesystem::path> EffectFiles() {
    std::vector<std::filesystem::path> files;
    for (const char* name : {"zel_color_balance", "zel_brightness_contrast_pivot",
                             "zel_gamma_gain_offset", "zel_log_linear_conversion"})
        files.push_back(std::filesystem::path(ZEL_MODULES) / (std::string(name) + Module::kSuffix));
    return files;
}

/// Every slider at that part of its range, 0 to 1.
inline ParameterValues SlidersAt(const EffectSession& session, double part) {
    ParameterValues values(session.Params());
    for (const Parameter& p : session.Params().All())
        if (p.kind == Parameter::Kind::Slider)
            values.Set(p, p.Minimum() + (p.Maximum() - p.Minimum()) * part);
    return values;
}

/// Samples that differ from pixel to pixel; float ones reach beyond 0 to 1.
inline void Fill(Frame& frame, std::uint32_t seed) {
    const int bytes = BytesOf(frame.Format().sample);
    for (int y = 0; y < frame.Height(); ++y)
        for (int i = 0; i < 4 * frame.Width(); ++i) {
            seed = seed * 1664525u + 1013904223u;
            const float number = static_cast<float>(seed >> 8) * 0x1p-23f - 0.5f;
            const std::uint32_t whole = seed >> (32 - 8 * (bytes == 4 ? 1 : bytes));
            const bool isFloat = frame.Format().sample == SampleType::Float;
            std::memcpy(frame.Row(y) + std::ptrdiff_t{i} * bytes,
                        isFloat ? static_cast<const void*>(&number) : &whole,
                        static_cast<std::size_t>(bytes));
        }
}

/// Row and byte of the first pixel byte that differs; empty when there is none.
inline std::string Difference(const Frame& expected, const Frame& got) {
    const int bytes = expected.Width() * expected.Format().BytesPerPixel();
    for (int y = 0; y < expected.Height(); ++y)
        for (int i = 0; i < bytes; ++i)
            if (expected.Row(y)[i] != got.Row(y)[i])
                return "row " + std::to_string(y) + ", byte " + std::to_string(i);
    return {};
}

}  // namespace zel::test
