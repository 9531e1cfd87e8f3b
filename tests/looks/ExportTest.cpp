// Looks as tables: what is written, and what ffmpeg makes of it.

#include "tests/looks/LooksTest.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <sstream>

namespace {

using namespace zel::test;

class Export : public LooksTest {
protected:
    /// The numbers behind the head of a table file: lines of three.
    static std::vector<std::array<double, 3>> Rows(const std::string& text) {
        std::vector<std::array<double, 3>> rows;
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            std::array<double, 3> row;
            char rest;
            if (std::sscanf(line.c_str(), "%lf %lf %lf %c", &row[0], &row[1], &row[2], &rest) == 3)
                rows.push_back(row);
        }
        return rows;
    }

    static std::string Head(const std::string& text, int lines) {
        std::size_t end = 0;
        for (int i = 0; i < lines; ++i) end = text.find('\n', end) + 1;
        return text.substr(0, end);
    }

    /// What ffmpeg's filter makes of the ramp: samples on the full 16-bit scale.
    Samples ThroughFfmpeg(const std::string& filter) const {
        const Samples ramp = Ramp();
        std::vector<std::uint8_t> bytes(2 * ramp.size());
        std::memcpy(bytes.data(), ramp.data(), bytes.size());
        folder.Write("ramp.raw", bytes);
        Tool({"ffmpeg", "-v", "error", "-y", "-f", "rawvideo", "-pix_fmt", "rgb48le", "-s",
              "1024x1", "-i", "ramp.raw", "-vf", filter, "-f", "rawvideo", "-pix_fmt", "rgb48le",
              "graded.raw"});
        const auto graded = folder.Read("graded.raw");
        Samples samples(graded.size() / 2);
        std::memcpy(samples.data(), graded.data(), graded.size());
        return samples;
    }

    void ExpectCodes(const Samples& samples, const Codes& codes) const {
        ASSERT_EQ(samples.size(), 3072u);
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const int code = codes[i % 3][i / 3];
            ASSERT_NEAR(samples[i], code * 65535.0 / 1023.0, 1.0)
                << "input code " << i / 3 << " of channel " << i % 3;
            ASSERT_EQ(std::lround(samples[i] * 1023.0 / 65535.0), code);
        }
    }
};

const Words kLook{"color_balance", "-s", "highlights.red=12.5", "-s", "shadows.blue=-40"};

TEST_F(Export, CubeIsPlain) {
    Succeeds(Words{"export"} + kLook + Words{"-o", "look.cube"});
    const std::string text = ReadText("look.cube");
    EXPECT_EQ(Head(text, 4),
              "# ZEL Color Balance\n"
              "# Highlights/Red 12.5, Shadows/Blue -40\n"
              "LUT_1D_SIZE 1024\n"
              "0.0000000 0.0000000 0.0000000\n");
    EXPECT_EQ(text.find("DOMAIN"), std::string::npos);
    EXPECT_EQ(text.find("TITLE"), std::string::npos);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 3 + 1024);
    EXPECT_EQ(text.back(), '\n');
}

TEST_F(Export, EveryTypeHasItsHead) {
    const struct {
        Words options;
        const char* file;
        int lines;
        const char* head;
    } cases[] = {
        {{"--dialect", "resolve"},
         "r.cube",
         4,
         "# Log/Linear Conversion\n"
         "# every parameter at its default: log to linear (the check box is off)\n"
         "LUT_1D_SIZE 1024\nLUT_1D_INPUT_RANGE 0.0 1.0\n"},
        {{"--dialect", "resolve", "--size3d", "4"},
         "r3.cube",
         4,
         "# Log/Linear Conversion\n"
         "# every parameter at its default: log to linear (the check box is off)\n"
         "LUT_3D_SIZE 4\nLUT_3D_INPUT_RANGE 0.0 1.0\n"},
        {{"--dialect", "ADOBE", "--size3d", "4"},
         "a3.cube",
         3,
         "# Log/Linear Conversion\n"
         "# every parameter at its default: log to linear (the check box is off)\n"
         "LUT_3D_SIZE 4\n"},
        {{}, "x.spi1d", 5, "Version 1\nFrom 0.0 1.0\nLength 1024\nComponents 3\n{\n"},
        {{},
         "x.CSP",
         19,
         "CSPLUTV100\n1D\n\nBEGIN METADATA\nLog/Linear Conversion\n"
         "every parameter at its default: log to linear (the check box is off)\n"
         "END METADATA\n\n2\n0.0 1.0\n0.0 1.0\n2\n0.0 1.0\n0.0 1.0\n2\n0.0 1.0\n0.0 1.0\n\n1024\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        Succeeds(Words{"export", "log_linear_conversion", "-o", c.file} + c.options);
        const std::string text = ReadText(c.file);
        EXPECT_EQ(Head(text, c.lines), c.head);
        EXPECT_EQ(Rows(text).size(),
                  c.lines < 5 ? std::strcmp(c.file, "r.cube") ? 64u : 1024u : 1024u);
    }
}

TEST_F(Export, ClfIsXml) {
    Succeeds(Words{"export"} + kLook + Words{"-o", "look.clf"});
    const std::string text = ReadText("look.clf");
    EXPECT_TRUE(text.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ProcessList "));
    EXPECT_TRUE(text.ends_with("</LUT1D>\n</ProcessList>\n"));
    EXPECT_NE(text.find("<Array dim=\"1024 3\">"), std::string::npos);
    EXPECT_EQ(Rows(text).size(), 1024u);
}

TEST_F(Export, LongSettingsAreBrokenIntoLines) {
    constexpr unsigned kSeed = 3;
    std::mt19937 random(kSeed);
    Words look{"brightness_contrast_pivot"};
    for (int i = 0; i < 3; ++i) look = look + RandomSetting(look[0], random);
    Succeeds(Words{"export"} + look + Words{"-o", "long.cube"});
    std::istringstream lines(ReadText("long.cube"));
    int comments = 0;
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), 100u) << line;
        comments += line.starts_with("# ");
    }
    EXPECT_GT(comments, 4);
}

TEST_F(Export, FloatCurvesAreWrittenInSevenDecimals) {
    Succeeds(Words{"curve"} + kLook + Words{"-o", "look.csv"});
    std::istringstream csv(ReadText("look.csv"));
    std::string line;
    std::getline(csv, line);
    for (const char* file : {"x.cube", "x.spi1d", "x.csp", "x.clf"}) {
        SCOPED_TRACE(file);
        Succeeds(Words{"export"} + kLook + Words{"-o", file});
        const auto rows = Rows(ReadText(file));
        ASSERT_EQ(rows.size(), 1024u);
        csv.clear();
        csv.seekg(0);
        std::getline(csv, line);
        for (std::size_t i = 0; i < 1024; ++i) {
            std::getline(csv, line);
            std::array<double, 3> code;
            ASSERT_EQ(std::sscanf(line.c_str(), "%*d,%lf,%lf,%lf", &code[0], &code[1], &code[2]),
                      3);
            for (std::size_t c = 0; c < 3; ++c)
                ASSERT_NEAR(rows[i][c], code[c] / 1023.0, 1e-7) << "code " << i;
        }
    }
}

TEST_F(Export, PackedTableHoldsTwoCodesPerWord) {
    for (const char* effect : kEffects) {
        SCOPED_TRACE(effect);
        const Codes codes = RenderedCodes({"-e", effect});
        for (const Words& exact : {Words{}, Words{"--exact"}}) {
            Succeeds(Words{"export", effect, "-o", "look.zlut"} + exact);
            const auto bytes = folder.Read("look.zlut");
            ASSERT_EQ(bytes.size(), 6144u);
            for (std::size_t word = 0; word < 1536; ++word) {
                const auto& channel = codes[word / 512];
                const std::size_t i = word % 512 * 2;
                const auto wanted = static_cast<std::uint32_t>(channel[i + 1]) << 22 |
                                    static_cast<std::uint32_t>(channel[i]) << 6;
                const std::uint32_t got = bytes[4 * word] |
                                          static_cast<std::uint32_t>(bytes[4 * word + 1]) << 8 |
                                          static_cast<std::uint32_t>(bytes[4 * word + 2]) << 16 |
                                          static_cast<std::uint32_t>(bytes[4 * word + 3]) << 24;
                ASSERT_EQ(got, wanted) << "word " << word;
            }
        }
    }
}

TEST_F(Export, ChainsAreOneCurve) {
    const Words chain{
        "color_balance", "gamma_gain_offset", "-e", "color_balance", "-s", "midtones.red=60",
        "--exact"};
    WriteText("red.json", R"({"effect": "ZEL Color Balance", "version": 1,
                              "parameters": {"Midtones/Red": 60}})");
    WriteText("rest.json", R"({"effect": "Gamma/Gain/Offset", "version": 1})");
    Succeeds(Words{"export"} + chain + Words{"-o", "chain.cube"});
    Succeeds({"export", "red.json", "rest.json", "--exact", "-o", "presets.cube"});
    EXPECT_EQ(ReadText("presets.cube"), ReadText("chain.cube"));
    ExpectCodes(ThroughFfmpeg("lut1d=file=chain.cube:interp=nearest"),
                RenderedCodes({"-p", "red.json", "-p", "rest.json"}));
}

TEST_F(Export, EntriesWithoutANumberAreZeroAndSaySo) {
    const Words look{"-s", "master.gamma=1.2", "-s", "master.offset=-10"};
    const Outcome run = Zelfx(Words{"export", "gamma_gain_offset", "-o", "dark.cube"} + look);
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.err.find("no number at codes all 0-"), std::string::npos) << run.err;
    EXPECT_NE(run.err.find("written as 0"), std::string::npos) << run.err;
    const auto rows = Rows(ReadText("dark.cube"));
    ASSERT_EQ(rows.size(), 1024u);
    const Codes codes = RenderedCodes(Words{"-e", "gamma_gain_offset"} + look);
    int lost = 0;
    for (std::size_t i = 0; i < 1024; ++i)
        for (std::size_t c = 0; c < 3; ++c) {
            ASSERT_TRUE(rows[i][c] >= 0.0 && rows[i][c] <= 1.0) << i;
            lost += rows[i][c] == 0.0;
            if (rows[i][c] == 0.0) {
                EXPECT_EQ(codes[c][i], 0) << i;
            }
        }
    EXPECT_GT(lost, 100);
}

TEST_F(Export, SameBytesEveryTime) {
    for (const char* file : {"x.cube", "x.spi1d", "x.csp", "x.clf", "x.zlut"}) {
        Succeeds(Words{"export"} + kLook + Words{"-o", file});
        const auto first = folder.Read(file);
        Succeeds(Words{"export"} + kLook + Words{"-o", file});
        EXPECT_EQ(folder.Read(file), first) << file;
    }
}

// --- three dimensions -------------------------------------------------------------

TEST_F(Export, CubesAreAsFarOffAsIsPrinted) {
    const Words look{"gamma_gain_offset", "-s", "master.gamma=2", "-s",
                     "shadows.blue channel.gain=1.5"};
    Succeeds(Words{"export"} + look + Words{"-o", "curve.cube"});
    const auto curve = Rows(ReadText("curve.cube"));
    for (const int n : {2, 17, 34, 64}) {
        SCOPED_TRACE(n);
        const std::string out = Succeeds(Words{"export"} + look +
                                         Words{"-o", "look.cube", "--size3d", std::to_string(n)})
                                    .out;
        double printed = -1.0;
        const auto at = out.find("against the curve: ");
        ASSERT_NE(at, std::string::npos) << out;
        ASSERT_EQ(std::sscanf(out.c_str() + at, "against the curve: %lf", &printed), 1) << out;
        EXPECT_EQ(Rows(ReadText("look.cube")).size(), static_cast<std::size_t>(n * n * n));

        for (const char* interpolation : {"trilinear", "tetrahedral"}) {
            const Samples graded =
                ThroughFfmpeg(std::string("lut3d=file=look.cube:interp=") + interpolation);
            double largest = 0.0;
            for (std::size_t i = 0; i < graded.size(); ++i)
                largest = std::max(largest, std::abs(graded[i] / 65535.0 - curve[i / 3][i % 3]));
            EXPECT_NEAR(largest, printed, 0.0005) << interpolation;
        }
    }
}

TEST_F(Export, PointsOnCodesAreExact) {
    const Codes codes = RenderedCodes({"-e", "log_linear_conversion"});
    Succeeds({"export", "log_linear_conversion", "--exact", "--size3d", "34", "-o", "look.cube"});
    const auto rows = Rows(ReadText("look.cube"));
    ASSERT_EQ(rows.size(), 34u * 34u * 34u);
    for (std::size_t b = 0; b < 34; b += 3)
        for (std::size_t g = 0; g < 34; ++g)
            for (std::size_t r = 0; r < 34; ++r) {
                const auto& row = rows[r + 34 * (g + 34 * b)];  // red runs fastest
                const std::size_t point[] = {r, g, b};
                for (std::size_t c = 0; c < 3; ++c)
                    ASSERT_NEAR(row[c], codes[c][31 * point[c]] / 1023.0, 0.6e-7)
                        << r << ' ' << g << ' ' << b;
            }
}

// --- wrong usage ------------------------------------------------------------------

TEST_F(Export, WrongOptions) {
    const struct {
        Words options;
        int status;
        Words parts;
    } cases[] = {
        {{"-o", "x.lut"}, 2, {"'x.lut'", ".cube, .spi1d, .csp, .clf or .zlut"}},
        {{"-o", "x"}, 2, {"'x'", "suffix"}},
        {{}, 2, {"--output"}},
        {{"-o", "x.cube", "--size3d", "1"}, 2, {"--size3d", "'1'", "2 to 64"}},
        {{"-o", "x.cube", "--size3d", "65"}, 2, {"--size3d", "'65'", "2 to 64"}},
        {{"-o", "x.cube", "--size3d", "many"}, 2, {"--size3d", "'many'"}},
        {{"-o", "x.csp", "--size3d", "33"}, 2, {"'x.csp'", "3D", ".cube"}},
        {{"-o", "x.clf", "--dialect", "resolve"}, 2, {"'x.clf'", "dialects", ".cube"}},
        {{"-o", "x.cube", "--dialect", "iridas"}, 2, {"'iridas'", "adobe or resolve"}},
        {{"-o", "no/x.cube"}, 1, {"'no'"}},
        {{"-o", "x.cube", "-s", "highlights.red=101"}, 2, {"101", "-100 to 100"}},
        {{"-o", "x.cube", "--linear-to-log"}, 2, {"--linear-to-log"}},
    };
    for (const auto& c : cases)
        Fails(Words{"export", "color_balance"} + c.options, c.status, c.parts);
    for (const auto& entry : std::filesystem::directory_iterator(folder / ""))
        ADD_FAILURE() << "left behind: " << entry.path();
    Fails({"export", "no_such_effect", "-o", "x.cube"}, 4, {"no_such_effect"});
}

// --- the modules' pixels ----------------------------------------------------------

const Words kTables[] = {
    {"adobe.cube", "--dialect", "adobe"},
    {"resolve.cube", "--dialect", "resolve"},
    {"look.csp"},
};

class ExportedByEffect : public Export, public testing::WithParamInterface<const char*> {};

TEST_P(ExportedByEffect, GivesTheModulesPixelsInFfmpeg) {
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
        Succeeds(Words{"export", GetParam(), "--exact", "-o"} + table + setting);
        ExpectCodes(ThroughFfmpeg("lut1d=file=" + table[0] + ":interp=nearest"), codes);
        if (HasFatalFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(Effects, ExportedByEffect, testing::ValuesIn(kEffects),
                         [](const auto& effect) { return std::string(effect.param); });

}  // namespace
