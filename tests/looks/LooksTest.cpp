#include "tests/looks/LooksTest.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <map>

namespace zel::test {

Outcome LooksTest::Zelfx(const Words& arguments, RunOptions options) const {
    if (options.folder.empty()) options.folder = folder / "";
    return RunProgram(Words{ZELFX_PROGRAM} + arguments, options);
}

namespace {

std::string Line(const Words& words) {
    std::string line;
    for (const std::string& word : words) line += word + ' ';
    return line;
}

}  // namespace

Outcome LooksTest::Succeeds(const Words& arguments) const {
    Outcome outcome = Zelfx(arguments);
    EXPECT_EQ(outcome.status, 0) << Line(arguments) << ": " << outcome.err;
    EXPECT_EQ(outcome.err, "") << Line(arguments);
    return outcome;
}

void LooksTest::Fails(const Words& arguments, int status, const Words& parts) const {
    const Outcome outcome = Zelfx(arguments);
    EXPECT_EQ(outcome.status, status) << Line(arguments) << ": " << outcome.err;
    EXPECT_EQ(outcome.out, "") << Line(arguments);
    EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1) << outcome.err;
    EXPECT_TRUE(outcome.err.starts_with("zelfx: ")) << outcome.err;
    for (const std::string& part : parts)
        EXPECT_NE(outcome.err.find(part), std::string::npos)
            << Line(arguments) << ": no '" << part << "' in: " << outcome.err;
}

Outcome LooksTest::Tool(const Words& command) const {
    Outcome outcome = RunProgram(command, {.folder = folder / ""});
    if (outcome.status == 0) return outcome;
    throw std::runtime_error("status " + std::to_string(outcome.status) + " of: " + Line(command) +
                             "\n" + outcome.err + outcome.out);
}

void LooksTest::WriteText(const std::string& name, const std::string& text) const {
    folder.Write(name, {text.begin(), text.end()});
}

std::string LooksTest::ReadText(const std::string& name) const {
    const auto bytes = folder.Read(name);
    return {bytes.begin(), bytes.end()};
}

bool LooksTest::Exists(const std::string& name) const {
    return std::filesystem::exists(folder / name);
}

void LooksTest::MakePicture(const std::string& file, int width, const Samples& samples) const {
    std::vector<std::uint8_t> bytes(2 * samples.size());
    std::memcpy(bytes.data(), samples.data(), bytes.size());
    folder.Write("made.raw", bytes);
    const auto height = samples.size() / 3 / static_cast<std::size_t>(width);
    Tool({"convert", "-size", std::to_string(width) + "x" + std::to_string(height), "-depth", "16",
          "-endian", "LSB", "rgb:made.raw", "-strip", "-define", "png:color-type=2", "-define",
          "png:bit-depth=16", file});
}

Samples LooksTest::ReadPicture(const std::string& file) const {
    Tool({"convert", file, "-depth", "16", "-endian", "LSB", "rgb:read.raw"});
    const auto bytes = folder.Read("read.raw");
    Samples samples(bytes.size() / 2);
    std::memcpy(samples.data(), bytes.data(), bytes.size());
    return samples;
}

Samples LooksTest::Ramp() const {
    Samples ramp;
    for (int code = 0; code < 1024; ++code)
        ramp.insert(ramp.end(), 3, static_cast<std::uint16_t>((code * 65535 + 511) / 1023));
    return ramp;
}

Codes LooksTest::RenderedCodes(const Words& look) const {
    if (!Exists("ramp.png")) MakePicture("ramp.png", 1024, Ramp());
    Succeeds(Words{"render", "ramp.png", "rendered.png"} + look);
    const Samples samples = ReadPicture("rendered.png");
    if (samples.size() != 3072) throw std::runtime_error("the rendered ramp has other pixels");
    Codes codes;
    for (std::size_t i = 0; i < samples.size(); ++i) codes[i % 3][i / 3] = samples[i] >> 6;
    return codes;
}

Words LooksTest::RandomSetting(const std::string& effect, std::mt19937& random) const {
    static std::map<std::string, nlohmann::json> descriptions;
    nlohmann::json& described = descriptions[effect];
    if (described.is_null())
        described = nlohmann::json::parse(Succeeds({"describe", effect, "--json"}).out);
    Words options;
    for (const auto& p : described.at("parameters")) {
        const bool slider = p.at("kind") == "slider";
        if ((!slider && p.at("kind") != "check box") || random() % 3 != 0) continue;
        const double part = static_cast<double>(random() % 1001) / 1000.0;
        const double low = slider ? p.at("minimum").get<double>() : 0.0;
        const double high = slider ? p.at("maximum").get<double>() : 1.0;
        char value[32];
        std::snprintf(value, sizeof value, slider ? "%.2f" : "%.0f", low + part * (high - low));
        options = options + Words{"-s", p.at("path").get<std::string>() + "=" + value};
    }
    return options;
}

}  // namespace zel::test
