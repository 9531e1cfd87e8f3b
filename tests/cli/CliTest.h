#pragma once

/// A fresh folder for every test, the program run in it, and picture files made and
/// read by other programs than ours.

#include "tests/cli/Curve.h"
#include "tests/cli/RunProgram.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

namespace zel::test {

namespace fs = std::filesystem;
using Bytes = std::vector<unsigned char>;

Bytes ReadFile(const fs::path& file);
void WriteFile(const fs::path& file, const void* data, std::size_t bytes);

template <class T>
void WriteFile(const fs::path& file, const std::vector<T>& values) {
    WriteFile(file, values.data(), values.size() * sizeof(T));
}

template <class T>
std::vector<T> ValuesOf(const Bytes& bytes) {
    std::vector<T> values(bytes.size() / sizeof(T));
    std::memcpy(values.data(), bytes.data(), values.size() * sizeof(T));
    return values;
}

class CliTest : public testing::Test {
protected:
    CliTest();
    ~CliTest() override;

    fs::path In(const std::string& name) const { return m_folder / name; }

    /// Runs zelfx in the folder.
    Outcome Zelfx(const Words& arguments, RunOptions options = {}) const;

    /// zelfx render IN OUT --effect color_balance and more; status 0 is expected.
    Outcome Render(const std::string& in, const std::string& out, const Words& more = {}) const;

    /// Runs zelfx and expects `status`, one line on standard error with every one of
    /// `texts`, nothing else printed and the folder as it was.
    void ExpectRefused(const Words& arguments, int status, const Words& texts,
                       const RunOptions& options = {}) const;

    /// Runs another program in the folder and throws unless its status is 0.
    Outcome Tool(const Words& command) const;

    /// A picture file from R, G, B(, A) samples, made by ImageMagick.
    template <class T>
    void MakeWithMagick(const std::string& file, int width, int height,
                        const std::vector<T>& samples, const Words& more = {}) const {
        WriteFile(In("made.raw"), samples);
        const bool alpha = samples.size() == std::size_t{4} * Pixels(width, height);
        Magick(file, width, height, static_cast<int>(8 * sizeof(T)), alpha, more);
    }

    /// The R, G, B(, A) samples of a picture file, read by ImageMagick.
    template <class T>
    std::vector<T> ReadWithMagick(const std::string& file, bool alpha = false) const {
        Tool({"convert", file, "-depth", std::to_string(8 * sizeof(T)), "-endian", "LSB",
              alpha ? "rgba:read.raw" : "rgb:read.raw"});
        return ValuesOf<T>(ReadFile(In("read.raw")));
    }

    /// Planes G, B, R(, A) of a picture file, read by ffmpeg; no plane of alpha unless
    /// the file has one.
    template <class T>
    std::vector<T> ReadWithFfmpeg(const std::string& file, const std::string& layout) const {
        Tool({"ffmpeg", "-v", "error", "-y", "-i", file, "-f", "rawvideo", "-pix_fmt", layout,
              "read.raw"});
        return ValuesOf<T>(ReadFile(In("read.raw")));
    }

    /// A float or half EXR file ("float", "half") from planes G, B, R(, A), by ffmpeg.
    void MakeExr(const std::string& file, int width, int height, const std::vector<float>& planes,
                 const std::string& depth) const;

    /// Names of everything in the folder, sorted.
    Words Listing() const;

    static std::size_t Pixels(int width, int height) {
        return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    }

private:
    void Magick(const std::string& file, int width, int height, int bits, bool alpha,
                const Words& more) const;

    fs::path m_folder;
};

/// A setting that moves every channel and range in its own way, and the options for it.
extern const Balance kVivid;
Words VividOptions();

/// The curves of red, green and blue.
std::array<Curve, 3> CurvesOf(const Balance& balance);

/// The channel (0 red) of a plane as ffmpeg has them: green, blue, red.
constexpr std::size_t ChannelOfPlane(std::size_t plane) { return (plane + 1) % 3; }

std::size_t LinesOf(const std::string& text);

}  // namespace zel::test
