#include "headless/EffectSession.h"

#include "abi/HostCodes.h"
#include "tests/headless/Thrown.h"
#include "tests/support/Environment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

namespace {

using namespace zel;
using namespace zel::test;
namespace fs = std::filesystem;

constexpr Personality kHosts[] = {Personality::Premiere, Personality::AfterEffects};

std::string FileName(const char* module) { return std::string(module) + Module::kSuffix; }

fs::path TestModule(const char* name) { return fs::path(ZEL_TEST_MODULES) / FileName(name); }

// --- the real module ------------------------------------------------------------

TEST(EffectSession, ParametersAsRegisteredUnderBothHosts) {
    for (const Personality host : kHosts) {
        const EffectSession session(ZEL_MODULE, host);
        EXPECT_EQ(session.Host(), host);
        EXPECT_EQ(session.Name(), "ZEL Color Balance");
        EXPECT_EQ(session.File(), ZEL_MODULE);
        const auto all = session.Params().All();
        ASSERT_EQ(all.size(), 25u);
        for (std::size_t i = 0; i < 24; ++i) {
            const bool group = i % 6 == 0 || i % 6 == 5;
            EXPECT_EQ(all[i].id, group ? 1000 : static_cast<int>(i)) << i;
            EXPECT_EQ(all[i].IsSettable(), !group) << i;
            EXPECT_EQ(all[i].Range() == "-100 to 100", !group) << i;
        }
        EXPECT_EQ(all[24].kind, Parameter::Kind::CheckBox);
        EXPECT_EQ(session.Params().Find("midtones.green").id, 15);
        EXPECT_EQ(session.Params().Find("shadows.rgb").id, 19);
    }
}

TEST(EffectSession, FormatsUnderBothHosts) {
    const EffectSession premiere(ZEL_MODULE, Personality::Premiere);
    const PrPixelFormat declared[] = {PrPixelFormat_BGRA_4444_8u, PrPixelFormat_ARGB_4444_8u,
                                      PrPixelFormat_BGRA_4444_16u, PrPixelFormat_BGRA_4444_32f,
                                      PrPixelFormat_ARGB_4444_16u};
    EXPECT_TRUE(std::ranges::equal(premiere.Formats(), declared));
    const EffectSession effects(ZEL_MODULE, Personality::AfterEffects);
    const PrPixelFormat implied[] = {PrPixelFormat_ARGB_4444_8u, PrPixelFormat_ARGB_4444_16u};
    EXPECT_TRUE(std::ranges::equal(effects.Formats(), implied));

    EXPECT_NO_THROW(premiere.RequireFormat(*FormatNamed("BGRAFloat")));
    const Error e = Thrown([&] { effects.RequireFormat(*FormatNamed("BGRAFloat")); });
    EXPECT_EQ(e.Kind(), ErrorKind::Module);
    EXPECT_TRUE(Says(e,
                     "ZEL Color Balance takes no BGRAFloat frames from After Effects; it takes "
                     "ARGB8 or ARGB16"));
}

/// A frame of 8-bit pixels whose bytes count up, over `height` rows.
Frame CountingFrame(PrPixelFormat format, int width, int height) {
    Frame frame(format, width, height);
    for (int y = 0; y < height; ++y)
        for (int i = 0; i < 4 * width; ++i)
            frame.Row(y)[i] = static_cast<std::byte>((i * 7 + y * 31) & 0xFF);
    return frame;
}

/// With highlights alone at -100 a code t becomes t (1 - (t / 1023)^2), truncated.
std::byte Darkened(std::byte in) {
    const double t = 4.0 * std::to_integer<int>(in);
    return static_cast<std::byte>(t * (1.0 - t / 1023.0 * (t / 1023.0)) / 4.0);
}

void ExpectDarkened(const Frame& out, const Frame& in, int alpha) {
    for (int y = 0; y < in.Height(); ++y)
        for (int i = 0; i < 4 * in.Width(); ++i)
            // A code at the edge of truncation may come out one lower in single precision.
            ASSERT_NEAR(
                std::to_integer<int>(out.Row(y)[i]),
                std::to_integer<int>(i % 4 == alpha ? in.Row(y)[i] : Darkened(in.Row(y)[i])),
                i % 4 == alpha ? 0 : 1)
                << "row " << y << " byte " << i << " in " << std::to_integer<int>(in.Row(y)[i]);
}

TEST(EffectSession, RenderAnswers0UnderPremiereAnd516UnderAfterEffects) {
    const struct {
        Personality host;
        PrPixelFormat format;
        int alpha;
        PF_Err code;
        const char* message;
    } cases[] = {
        {Personality::Premiere, PrPixelFormat_BGRA_4444_8u, 3, 0, ""},
        {Personality::Premiere, PrPixelFormat_ARGB_4444_8u, 0, 0, ""},
        {Personality::AfterEffects, PrPixelFormat_ARGB_4444_8u, 0, 516,
         "Not able to acquire AEFX Suite."},
    };
    for (const auto& c : cases) {
        const EffectSession session(ZEL_MODULE, c.host);
        ParameterValues values(session.Params());
        values.Set("Highlights/RGB=-100");
        Frame in = CountingFrame(c.format, 37, 5), out(c.format, 37, 5);
        const RenderResult result = session.Render(out, in, values);
        EXPECT_EQ(result.code, c.code);
        EXPECT_EQ(result.message, c.message);
        ExpectDarkened(out, in, c.alpha);
    }
}

TEST(EffectSession, AFormatOutsideTheListIsAnsweredWith514AndLeftAlone) {
    const EffectSession session(ZEL_MODULE, Personality::Premiere);
    Frame in(PrPixelFormat_ARGB_4444_32f, 4, 4), out(PrPixelFormat_ARGB_4444_32f, 4, 4);
    std::memset(in.Row(0), 0x11, 4 * static_cast<std::size_t>(in.RowBytes()));
    std::memset(out.Row(0), 0x5A, 4 * static_cast<std::size_t>(out.RowBytes()));
    EXPECT_EQ(session.Render(out, in, ParameterValues(session.Params())).code, 514);
    for (int i = 0; i < 4 * out.RowBytes(); ++i)
        ASSERT_EQ(std::to_integer<int>(out.Row(0)[i]), 0x5A) << i;
}

// --- threads --------------------------------------------------------------------

TEST(EffectSession, OneSessionOnSeveralThreads) {
    const EffectSession session(ZEL_MODULE, Personality::Premiere);
    std::vector<std::jthread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&session, t] {
            ParameterValues values(session.Params());
            if (t % 2) values.Set("Highlights/RGB=-100");
            for (int i = 0; i < 20; ++i) {
                Frame in = CountingFrame(PrPixelFormat_BGRA_4444_8u, 64 + t, 9);
                Frame out(PrPixelFormat_BGRA_4444_8u, 64 + t, 9);
                ASSERT_EQ(session.Render(out, in, values).code, 0);
                if (t % 2) ExpectDarkened(out, in, 3);
            }
        });
}

TEST(EffectSession, SessionsOnSeveralThreads) {
    // Stays loaded, as in an editor: unloaded and loaded again it would be new memory at an
    // old address, which the thread sanitizer takes for a race.
    const Module kept(ZEL_MODULE);
    std::vector<std::jthread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([t] {
            for (int i = 0; i < 10; ++i) {
                const EffectSession session(ZEL_MODULE, kHosts[t % 2]);
                ParameterValues values(session.Params());
                values.Set("Highlights/RGB=-100");
                Frame in = CountingFrame(PrPixelFormat_ARGB_4444_8u, 64, 9 + t);
                Frame out(PrPixelFormat_ARGB_4444_8u, 64, 9 + t);
                ASSERT_EQ(session.Render(out, in, values).code, t % 2 ? 516 : 0);
                ExpectDarkened(out, in, 0);
            }
        });
}

// --- modules that misbehave -----------------------------------------------------

TEST(EffectSession, AnIntThrownOutOfRender) {
    for (const Personality host : kHosts) {
        const EffectSession session(TestModule("ThrowsInt"), host);
        Frame in(PrPixelFormat_ARGB_4444_8u, 2, 2), out(PrPixelFormat_ARGB_4444_8u, 2, 2);
        const ParameterValues values(session.Params());
        for (int i = 0; i < 2; ++i) {  // and the session stays usable
            const Error e = Thrown([&] { session.Render(out, in, values); });
            EXPECT_EQ(e.Kind(), ErrorKind::Module);
            EXPECT_TRUE(Says(e, FileName("ThrowsInt") + "' threw out of RENDER: the number 42"));
        }
    }
}

TEST(EffectSession, AnExceptionThrownOutOfSetUp) {
    for (const Personality host : kHosts) {
        const Error e =
            Thrown([&] { const EffectSession session(TestModule("ThrowsInSetup"), host); });
        EXPECT_EQ(e.Kind(), ErrorKind::Module);
        EXPECT_TRUE(
            Says(e, FileName("ThrowsInSetup") + "' threw out of GLOBAL_SETUP: no room for tables"));
    }
}

TEST(EffectSession, AnErrorFromParamsSetup) {
    const auto open = [](Personality host) {
        return Thrown([&] { const EffectSession session(TestModule("FailsParamsSetup"), host); });
    };
    const std::string text =
        FileName("FailsParamsSetup") + "' answered PARAMS_SETUP with error 513";
    EXPECT_TRUE(Says(open(Personality::Premiere), text + ": no sliders"));
    const Error silent = open(Personality::AfterEffects);
    EXPECT_EQ(silent.Kind(), ErrorKind::Module);
    EXPECT_TRUE(std::string(silent.what()).ends_with(text)) << silent.what();
}

TEST(EffectSession, AParameterOfAnUnknownType) {
    const EffectSession session(TestModule("OddParameters"), Personality::Premiere);
    EXPECT_EQ(session.Name(), "Odd, very");
    const auto all = session.Params().All();
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[1].kind, Parameter::Kind::Other);
    EXPECT_TRUE(Says(Thrown([&] { session.Params().Find("Tint"); }), "no parameter 'Tint'"));

    ParameterValues values(session.Params());
    values.Set("first=2.5");
    values.Set("last=on");
    Frame in(PrPixelFormat_BGRA_4444_32f, 8, 3), out(PrPixelFormat_BGRA_4444_32f, 8, 3);
    EXPECT_EQ(session.Render(out, in, values).message, "seen");
    std::array<float, 7> seen;
    std::memcpy(seen.data(), out.Row(0), sizeof seen);
    // Parameters with the layer, slider, unknown type, check box, end of list, size.
    EXPECT_EQ(seen, (std::array<float, 7>{4, 2.5f, 5, 1, 0, 8, 3}));
}

TEST(EffectSession, FormatsThatNobodyHereTakes) {
    const EffectSession session(TestModule("OtherFormats"), Personality::Premiere);
    const Error e = Thrown([&] { session.RequireFormat(*FormatNamed("BGRA8")); });
    EXPECT_EQ(e.Kind(), ErrorKind::Module);
    EXPECT_TRUE(Says(e, "Other Formats takes no BGRA8 frames from Premiere; it takes ARGBFloat"));
    EXPECT_NO_THROW(session.RequireFormat(*FormatNamed("ARGBFloat")));
}

// --- the order of commands ------------------------------------------------------

class Commands : public testing::Test {
protected:
    Commands() { SetEnvironment("ZEL_TEST_DIARY", diary.string().c_str()); }
    ~Commands() override {
        SetEnvironment("ZEL_TEST_DIARY", nullptr);
        SetEnvironment("ZEL_TEST_FAIL", nullptr);
    }
    std::string Written() const {
        std::ifstream in(diary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    const TemporaryFolder folder;
    const fs::path diary = folder.Path() / "diary";
};

TEST_F(Commands, AsAnEditorSendsThemWithTheEffectsDataHandedBack) {
    {
        const EffectSession session(TestModule("Diary"), Personality::Premiere);
        Frame in(PrPixelFormat_BGRA_4444_8u, 2, 2), out(PrPixelFormat_BGRA_4444_8u, 2, 2);
        std::memset(in.Row(0), 0, 2 * static_cast<std::size_t>(in.RowBytes()));
        session.Render(out, in, ParameterValues(session.Params()));
    }
    // Global set-up, parameters, about, sequence set-up, render, both set-downs.
    EXPECT_EQ(Written(), "1 --\n4 g-\n0 g-\n5 g-\n11 gs\n8 gs\n3 g-\n");
}

TEST_F(Commands, OnlyWhatWasSetUpIsSetDown) {
    const std::pair<const char*, const char*> cases[] = {
        {"1", "1 --\n"},
        {"4", "1 --\n4 g-\n3 g-\n"},
        {"0", "1 --\n4 g-\n0 g-\n3 g-\n"},
        {"5", "1 --\n4 g-\n0 g-\n5 g-\n3 g-\n"},
    };
    for (const auto& [failing, written] : cases) {
        fs::remove(diary);
        SetEnvironment("ZEL_TEST_FAIL", failing);
        const Error e =
            Thrown([] { const EffectSession session(TestModule("Diary"), Personality::Premiere); });
        EXPECT_TRUE(Says(e, "with error 7"));
        EXPECT_EQ(Written(), written) << "failing " << failing;
    }
}

}  // namespace
