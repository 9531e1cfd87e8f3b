#pragma once

/// A fresh folder for every test, the program run in it, and pictures made and read by
/// other programs than ours.

#include "tests/cli/RunProgram.h"
#include "tests/support/Programs.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace zel::test {

using Samples = std::vector<std::uint16_t>;

inline const std::string kPhotograph = ZEL_SOURCE_ROOT "/samples/coffee.png";

constexpr const char* kEffects[] = {"color_balance", "brightness_contrast_pivot",
                                    "gamma_gain_offset", "log_linear_conversion"};

/// Codes of a ramp of all codes behind a look: [channel][input code].
using Codes = std::array<std::array<int, 1024>, 3>;

class LooksTest : public testing::Test {
protected:
    /// Runs zelfx in the folder.
    Outcome Zelfx(const Words& arguments, RunOptions options = {}) const;

    /// The same, and status 0 with nothing on standard error is expected.
    Outcome Succeeds(const Words& arguments) const;

    /// The same, and `status` with one line on standard error that holds all of `parts`.
    void Fails(const Words& arguments, int status, const Words& parts) const;

    /// Runs another program in the folder and throws unless its status is 0.
    Outcome Tool(const Words& command) const;

    void WriteText(const std::string& name, const std::string& text) const;
    std::string ReadText(const std::string& name) const;
    bool Exists(const std::string& name) const;

    /// A 16-bit RGB picture from R, G, B samples, and its samples, by ImageMagick.
    void MakePicture(const std::string& file, int width, const Samples& samples) const;
    Samples ReadPicture(const std::string& file) const;

    /// A grey ramp of all codes in 16 bits, on the full scale of other programs: code c is
    /// c x 65535 / 1023, rounded, which the modules take as c too.
    Samples Ramp() const;

    /// What the modules make of the ramp.
    Codes RenderedCodes(const Words& look) const;

    /// Options that set about a third of an effect's parameters, anywhere in their range.
    Words RandomSetting(const std::string& effect, std::mt19937& random) const;

    WorkFolder folder;
};

}  // namespace zel::test
