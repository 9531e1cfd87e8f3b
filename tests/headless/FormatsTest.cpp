#include "headless/Formats.h"

#include "tests/headless/Thrown.h"

#include <gtest/gtest.h>

namespace {

using namespace zel;
using namespace zel::test;

TEST(Formats, FactsFollowFromTheName) {
    ASSERT_EQ(KnownFormats().size(), 6u);
    for (const FormatFacts& f : KnownFormats()) {
        const std::string_view name = f.name, order = name.substr(0, 4), depth = name.substr(4);
        const std::string_view colours = "RGBA";
        for (std::size_t k = 0; k < 4; ++k)
            EXPECT_EQ(f.element[k], static_cast<int>(order.find(colours[k]))) << name;
        EXPECT_EQ(f.BytesPerPixel(), depth == "8" ? 4 : depth == "16" ? 8 : 16) << name;
        EXPECT_EQ(&FactsOf(f.code), &f) << name;
        EXPECT_EQ(FormatNamed(name), &f) << name;
    }
}

TEST(Formats, CodesAreTheHosts) {
    // Four characters, the first in the lowest byte.
    const std::pair<const char*, const char*> codes[] = {
        {"BGRA8", "bgra"},  {"ARGB8", "argb"},     {"BGRA16", "Bgra"},
        {"ARGB16", "Argb"}, {"BGRAFloat", "BGra"}, {"ARGBFloat", "ARgb"},
    };
    for (const auto& [name, text] : codes) {
        std::uint32_t code = 0;
        for (int i = 3; i >= 0; --i) code = code << 8 | static_cast<unsigned char>(text[i]);
        ASSERT_NE(FormatNamed(name), nullptr) << name;
        EXPECT_EQ(static_cast<std::uint32_t>(FormatNamed(name)->code), code) << name;
    }
}

TEST(Formats, NamesInAnyCaseAndNoOthers) {
    EXPECT_EQ(FormatNamed("bgrafloat"), FormatNamed("BGRAFloat"));
    for (const char* name : {"", "BGRA", "BGRA 8", "v210", "BGRA8 ", "8"})
        EXPECT_EQ(FormatNamed(name), nullptr) << name;
}

TEST(Formats, AnUnknownCodeIsRefused) {
    const Error e = Thrown([] { FactsOf(PrPixelFormat_V210_422_10u_601); });
    EXPECT_EQ(e.Kind(), ErrorKind::Other);
    EXPECT_TRUE(Says(e, std::to_string(0x30313276)));
}

}  // namespace
