// Exported tables through OpenColorIO: its library, and its program ociochecklut.

#include "tests/looks/LooksTest.h"

#include <OpenColorIO/OpenColorIO.h>

#include <cmath>

namespace {

namespace OCIO = OCIO_NAMESPACE;
using namespace zel::test;

class Ocio : public LooksTest, public testing::WithParamInterface<const char*> {
protected:
    static void SetUpTestSuite() { OCIO::SetLoggingLevel(OCIO::LOGGING_LEVEL_NONE); }

    OCIO::ConstProcessorRcPtr Processor(const std::string& file) const {
        const OCIO::FileTransformRcPtr transform = OCIO::FileTransform::Create();
        transform->setSrc((folder / file).c_str());
        transform->setInterpolation(OCIO::INTERP_LINEAR);
        return OCIO::Config::CreateRaw()->getProcessor(transform);
    }

    /// The ramp of all codes as 10-bit samples, through a table.
    std::vector<std::uint16_t> ThroughCodes(const std::string& file) const {
        std::vector<std::uint16_t> in(3072), out(3072);
        for (std::size_t i = 0; i < in.size(); ++i) in[i] = static_cast<std::uint16_t>(i / 3);
        const auto cpu = Processor(file)->getOptimizedCPUProcessor(
            OCIO::BIT_DEPTH_UINT10, OCIO::BIT_DEPTH_UINT10, OCIO::OPTIMIZATION_DEFAULT);
        const OCIO::PackedImageDesc from(in.data(), 1024, 1, OCIO::CHANNEL_ORDERING_RGB,
                                         OCIO::BIT_DEPTH_UINT10, 2, 6, 6144);
        OCIO::PackedImageDesc to(out.data(), 1024, 1, OCIO::CHANNEL_ORDERING_RGB,
                                 OCIO::BIT_DEPTH_UINT10, 2, 6, 6144);
        cpu->apply(from, to);
        return out;
    }
};

const Words kTables[] = {
    {"adobe.cube", "--dialect", "adobe"},
    {"resolve.cube", "--dialect", "resolve"},
    {"look.spi1d"},
    {"look.csp"},
    {"look.clf"},
};

TEST_P(Ocio, GivesTheModulesPixels) {
    constexpr unsigned kSeed = 1024;
    SCOPED_TRACE(testing::Message() << "seed " << kSeed);
    RecordProperty("seed", static_cast<int>(kSeed));
    std::mt19937 random(kSeed);
    for (int round = 0; round < 20; ++round) {
        const Words setting = RandomSetting(GetParam(), random);
        std::string text;
        for (const std::string& word : setting) text += word + ' ';
        SCOPED_TRACE(testing::Message() << "setting " << round << ": " << text);
        const Codes codes = RenderedCodes(Words{"-e", GetParam()} + setting);
        const Words& table = kTables[static_cast<std::size_t>(round) % std::size(kTables)];
        // A name of its own: the library remembers files that it has read.
        const std::string file = std::to_string(round) + table[0];
        Succeeds(Words{"export", GetParam(), "--exact", "-o", file} +
                 Words(table.begin() + 1, table.end()) + setting);
        const auto out = ThroughCodes(file);
        for (std::size_t i = 0; i < out.size(); ++i)
            ASSERT_EQ(out[i], codes[i % 3][i / 3])
                << file << ": input code " << i / 3 << " of channel " << i % 3;
    }
}

TEST_P(Ocio, InterpolatesTheFloatCurve) {
    Succeeds({"curve", GetParam(), "-o", "look.csv"});
    std::vector<std::array<float, 3>> codes(1024);
    std::istringstream csv(ReadText("look.csv"));
    std::string line;
    std::getline(csv, line);
    for (auto& row : codes) {
        std::getline(csv, line);
        ASSERT_EQ(std::sscanf(line.c_str(), "%*d,%f,%f,%f", &row[0], &row[1], &row[2]), 3);
    }
    for (const Words& table : kTables) {
        SCOPED_TRACE(table[0]);
        Succeeds(Words{"export", GetParam(), "-o"} + table);
        const auto cpu = Processor(table[0])->getDefaultCPUProcessor();
        for (std::size_t i = 0; i + 1 < 1024; ++i) {
            float rgb[3];
            for (float& v : rgb) v = (static_cast<float>(i) + 0.5f) / 1023.0f;
            cpu->applyRGB(rgb);
            for (std::size_t c = 0; c < 3; ++c)
                ASSERT_NEAR(rgb[c] * 1023.0f, (codes[i][c] + codes[i + 1][c]) / 2, 2e-3)
                    << "between " << i << " and " << i + 1;
        }
    }
}

TEST_P(Ocio, CheckLutReadsEveryTable) {
    const Codes codes = RenderedCodes({"-e", GetParam()});
    for (const Words& table : kTables) {
        SCOPED_TRACE(table[0]);
        Succeeds(Words{"export", GetParam(), "--exact", "-o"} + table);
        for (const int code : {0, 95, 682}) {
            char value[32];
            std::snprintf(value, sizeof value, "%.9f", code / 1023.0);
            const std::string out = Tool({"ociochecklut", "-v", table[0], value, value, value}).out;
            const auto at = out.find("Output [R G B]: [");
            ASSERT_NE(at, std::string::npos) << out;
            double rgb[3];
            ASSERT_EQ(std::sscanf(out.c_str() + at, "Output [R G B]: [%lf %lf %lf", &rgb[0],
                                  &rgb[1], &rgb[2]),
                      3)
                << out;
            for (std::size_t c = 0; c < 3; ++c)
                EXPECT_NEAR(rgb[c], codes[c][static_cast<std::size_t>(code)] / 1023.0, 2e-6)
                    << "code " << code;
        }
        const std::string log = Tool({"ociochecklut", "-v", table[0]}).out;
        EXPECT_EQ(log.find("arning"), std::string::npos) << log;
    }
}

TEST_P(Ocio, ReadsCubesOfThreeDimensions) {
    for (const char* dialect : {"adobe", "resolve"}) {
        const std::string file = std::string(dialect) + ".cube";
        Succeeds(
            {"export", GetParam(), "--exact", "--size3d", "12", "--dialect", dialect, "-o", file});
        const Codes codes = RenderedCodes({"-e", GetParam()});
        const auto cpu = Processor(file)->getDefaultCPUProcessor();
        for (std::size_t i = 0; i < 12; ++i) {
            float rgb[3];
            for (float& v : rgb) v = static_cast<float>(i) / 11.0f;
            cpu->applyRGB(rgb);
            for (std::size_t c = 0; c < 3; ++c)
                EXPECT_NEAR(rgb[c], static_cast<float>(codes[c][93 * i]) / 1023.0f, 1e-5) << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Effects, Ocio, testing::ValuesIn(kEffects),
                         [](const auto& effect) { return std::string(effect.param); });

}  // namespace
