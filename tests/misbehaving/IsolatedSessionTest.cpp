/// Effects in processes of their own, seen from the host: the same results as in the
/// host's own, from several threads at once, and life after a crash.

#include "headless/EffectSession.h"
#include "tests/headless/Thrown.h"

#include <atomic>
#include <cstring>
#include <thread>

namespace zel::test {

namespace {

using namespace std::chrono_literals;

std::filesystem::path Misbehaving(const char* module) {
    return std::filesystem::path(ZEL_MISBEHAVING) / (std::string(module) + Module::kSuffix);
}

/// Samples that differ from pixel to pixel; float ones reach beyond 0 to 1.
void Fill(Frame& frame, std::uint32_t seed) {
    const int samples = 4 * frame.Width();
    for (int y = 0; y < frame.Height(); ++y)
        for (int i = 0; i < samples; ++i) {
            seed = seed * 1664525u + 1013904223u;
            const float number = static_cast<float>(seed >> 8) * 0x1p-23f - 0.5f;
            const bool wide = frame.Format().sample == SampleType::Float;
            const int bytes = BytesOf(frame.Format().sample);
            std::memcpy(frame.Row(y) + std::ptrdiff_t{i} * bytes,
                        wide ? static_cast<const void*>(&number) : &seed,
                        static_cast<std::size_t>(bytes));
        }
}

/// Row and byte of the first difference; empty when there is none.
std::string Difference(const Frame& expected, const Frame& got) {
    const int bytes = expected.Width() * expected.Format().BytesPerPixel();
    for (int y = 0; y < expected.Height(); ++y)
        for (int i = 0; i < bytes; ++i)
            if (expected.Row(y)[i] != got.Row(y)[i])
                return "row " + std::to_string(y) + ", byte " + std::to_string(i);
    return {};
}

TEST(IsolatedSession, IsTheSameAsOneInThisProcess) {
    for (const char* name : {"zel_color_balance", "zel_brightness_contrast_pivot",
                             "zel_gamma_gain_offset", "zel_log_linear_conversion"})
        for (const Personality host : {Personality::Premiere, Personality::AfterEffects}) {
            SCOPED_TRACE(name);
            const std::filesystem::path file =
                std::filesystem::path(ZEL_MODULES) / (std::string(name) + Module::kSuffix);
            const EffectSession here(file, host), there(file, host, Isolation{});
            EXPECT_EQ(there.Name(), here.Name());
            ASSERT_TRUE(std::ranges::equal(there.Formats(), here.Formats()));
            ASSERT_EQ(there.Params().All().size(), here.Params().All().size());
            ParameterValues values(here.Params()), sent(there.Params());
            for (std::size_t i = 0; i < here.Params().All().size(); ++i) {
                const Parameter &a = here.Params().All()[i], &b = there.Params().All()[i];
                EXPECT_EQ(b.path, a.path);
                EXPECT_EQ(std::memcmp(&a.def, &b.def, sizeof a.def), 0) << a.path;
                if (a.kind != Parameter::Kind::Slider) continue;
                const double value = a.Minimum() + (a.Maximum() - a.Minimum()) * 0.625;
                values.Set(a, value);
                sent.Set(b, value);
            }
            for (const PrPixelFormat format : here.Formats())
                for (const int width : {1, 17, 640}) {
                    Frame source(format, width, 3), a(format, width, 3), b(format, width, 3);
                    Fill(source, static_cast<std::uint32_t>(width));
                    const RenderResult expected = here.Render(a, source, values);
                    const RenderResult got = there.Render(b, source, sent);
                    EXPECT_EQ(got.code, expected.code);
                    EXPECT_EQ(got.message, expected.message);
                    EXPECT_EQ(Difference(a, b), "") << a.Format().name << ", width " << width;
                }
        }
}

TEST(IsolatedSession, RendersAgainAfterACrash) {
    const EffectSession session(Misbehaving("CrashesAtWhite"), Personality::Premiere, Isolation{});
    const ParameterValues values(session.Params());
    Frame source(PrPixelFormat_BGRA_4444_8u, 2, 2), result(PrPixelFormat_BGRA_4444_8u, 2, 2);
    Fill(source, 1);
    for (const int first : {1, 0xFF, 7, 0xFF, 0xFF, 254}) {
        source.Row(0)[0] = std::byte(first);
        result.Row(0)[0] = std::byte{0x55};
        if (first == 0xFF) {
            const Error e = Thrown([&] { session.Render(result, source, values); });
            EXPECT_EQ(e.Kind(), ErrorKind::Module);
            EXPECT_TRUE(Says(e, "crashed in RENDER (SIGSEGV)"));
            EXPECT_EQ(result.Row(0)[0], std::byte{0x55}) << "the frame is as it was";
        } else {
            EXPECT_EQ(session.Render(result, source, values).code, 0);
            EXPECT_EQ(result.Row(0)[0], std::byte(first + 1));
        }
    }
}

TEST(IsolatedSession, RendersFromManyThreads) {
    const EffectSession session(Misbehaving("CrashesAtWhite"), Personality::Premiere, Isolation{});
    const ParameterValues values(session.Params());
    constexpr int kThreads = 8, kRenders = 20;
    std::atomic<int> right = 0;
    {
        std::vector<std::jthread> threads;
        for (int t = 0; t < kThreads; ++t)
            threads.emplace_back([&, t] {
                Frame source(PrPixelFormat_BGRA_4444_8u, 64, 16);
                Frame result(PrPixelFormat_BGRA_4444_8u, 64, 16);
                Fill(source, 3);
                for (int i = 0; i < kRenders; ++i) {
                    const bool crash = (t + i) % 5 == 0;
                    source.Row(0)[0] = std::byte(crash ? 0xFF : t * kRenders + i);
                    try {
                        session.Render(result, source, values);
                        right += !crash && result.Row(0)[0] == std::byte(t * kRenders + i + 1);
                    } catch (const Error&) {
                        right += crash;
                    }
                }
            });
    }
    EXPECT_EQ(right, kThreads * kRenders);
}

TEST(IsolatedSession, SetDownsThatFailAreTold) {
    std::vector<std::string> told;
    const Isolation isolation{.limit = 1s,
                              .note = [&](const std::string& text) { told.push_back(text); }};
    for (const char* module : {"AddsNone", "CrashesInSetdown", "NeverSetsDown"})
        const EffectSession session(Misbehaving(module), Personality::Premiere, isolation);
    ASSERT_EQ(told.size(), 2u);
    EXPECT_NE(told[0].find("CrashesInSetdown.so' crashed in GLOBAL_SETDOWN (SIGSEGV)"),
              std::string::npos)
        << told[0];
    EXPECT_NE(told[1].find("did not return from GLOBAL_SETDOWN within 1 second"), std::string::npos)
        << told[1];
}

TEST(IsolatedSession, SeveralEndInAnyOrder) {
    const auto open = [] {
        return std::make_unique<EffectSession>(
            Misbehaving("AddsNone"), Personality::Premiere,
            Isolation{.limit = 20s, .note = [](auto& text) { ADD_FAILURE() << text; }});
    };
    for (const bool firstFirst : {true, false}) {
        auto first = open(), second = open(), third = open();
        (firstFirst ? first : third).reset();
        second.reset();
    }
}

}  // namespace

}  // namespace zel::test
