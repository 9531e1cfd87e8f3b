/// Acquiring and releasing suites, and the cache of the suites that are known.

#include "host/Suites.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/Thrown.h"

#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <string>
#include <vector>

namespace zel::test {
namespace {

constexpr const char* kName = "PF Pixel Format Suite";

PF_OutData WithMessage(const char* text) {
    PF_OutData out = RecordingHost::UntouchedOut();
    out.out_flags |= 0x100;
    std::strcpy(out.return_msg, text);
    return out;
}

TEST(AcquireSuite, GivesTheSuite) {
    RecordingHost host(Personality::Premiere);
    void* suite = nullptr;
    EXPECT_EQ(AEFX_AcquireSuite(host.In(), host.Out(), kName, 1, nullptr, &suite), 0);
    EXPECT_NE(suite, nullptr);
    EXPECT_EQ(Difference(RecordingHost::UntouchedOut(), *host.Out()), "");
}

TEST(AcquireSuite, PointerCountsAndTheHostsResultDoesNot) {
    RecordingHost host(Personality::Premiere);
    host.wrong.acquireResult = abi::kSuiteNotFound;
    void* suite = nullptr;
    EXPECT_EQ(AEFX_AcquireSuite(host.In(), host.Out(), kName, 1, nullptr, &suite), 0);
    EXPECT_NE(suite, nullptr);

    host.wrong = {.suiteStaysNull = true};
    suite = nullptr;
    EXPECT_EQ(AEFX_AcquireSuite(host.In(), host.Out(), kName, 1, nullptr, &suite), 516);
    EXPECT_EQ(suite, nullptr);
    EXPECT_EQ(Difference(WithMessage("Not able to acquire AEFX Suite."), *host.Out()), "");
}

TEST(AcquireSuite, OtherFlagsAreKept) {
    for (const PF_OutFlags flags : {0, 0x8400, 0x2000400, -1}) {
        RecordingHost host(Personality::AfterEffects);
        host.Out()->out_flags = flags;
        void* suite = nullptr;
        EXPECT_EQ(AEFX_AcquireSuite(host.In(), host.Out(), kName, 1, nullptr, &suite), 516);
        EXPECT_EQ(host.Out()->out_flags, flags | 0x100);
    }
}

TEST(AcquireSuite, CallersTextIsTheFormat) {
    RecordingHost host(Personality::AfterEffects);
    void* suite = nullptr;
    EXPECT_EQ(AEFX_AcquireSuite(host.In(), host.Out(), kName, 1, "No suite 100%% sure.", &suite),
              516);
    EXPECT_EQ(Difference(WithMessage("No suite 100% sure."), *host.Out()), "");
    EXPECT_EQ(host.calls.back(), "sprintf No suite 100%% sure.");
}

TEST(AcquireSuite, NoBasicSuite) {
    RecordingHost host(Personality::Premiere);
    host.wrong.noBasicSuite = true;
    void* suite = nullptr;
    EXPECT_EQ(AEFX_AcquireSuite(host.In(), host.Out(), kName, 1, nullptr, &suite), 516);
    EXPECT_EQ(Difference(WithMessage("Not able to acquire AEFX Suite."), *host.Out()), "");
}

TEST(AcquireSuite, NameAndVersionReachTheHost) {
    RecordingHost host(Personality::Premiere);
    void* suite = nullptr;
    EXPECT_EQ(AEFX_AcquireSuite(host.In(), host.Out(), "Some Suite", -3, nullptr, &suite), 516);
    EXPECT_EQ(host.calls.front(), "AcquireSuite Some Suite -3");
    EXPECT_EQ(AEFX_ReleaseSuite(host.In(), host.Out(), "Some Suite", 12, nullptr), 0);
    EXPECT_EQ(host.calls.back(), "ReleaseSuite Some Suite 12");
}

TEST(ReleaseSuite, Returns0WhateverTheHostSays) {
    for (const SPErr result : {0, 1, -1, 516}) {
        RecordingHost host(Personality::AfterEffects);
        host.wrong.releaseResult = result;
        EXPECT_EQ(AEFX_ReleaseSuite(host.In(), host.Out(), kName, 1, "unused"), 0);
        EXPECT_EQ(Difference(RecordingHost::UntouchedOut(), *host.Out()), "");
    }
}

TEST(ReleaseSuite, NoBasicSuite) {
    RecordingHost host(Personality::Premiere);
    host.wrong.noBasicSuite = true;
    EXPECT_EQ(AEFX_ReleaseSuite(host.In(), host.Out(), kName, 1, nullptr), 516);
    EXPECT_EQ(Difference(WithMessage("Not able to release AEFX Suite."), *host.Out()), "");
    host.Reset();
    EXPECT_EQ(AEFX_ReleaseSuite(host.In(), host.Out(), kName, 1, "Own text."), 516);
    EXPECT_EQ(Difference(WithMessage("Own text."), *host.Out()), "");
}

// --- the cache ----------------------------------------------------------------------------

// Names and versions in the order of release.
struct Known {
    const char* name;
    std::vector<int> versions;
};
const Known kKnown[] = {
    {"AEGP Marker Suite", {1}},
    {"AEGP Layer Suite", {8, 10}},
    {"AEGP Stream Suite", {8, 7, 4}},
    {"AEGP Dynamic Stream Suite", {2, 3}},
    {"AEGP Keyframe Suite", {4, 3, 1}},
    {"AEGP Comp Suite", {9, 11, 14}},
    {"AEGP Proj Suite", {2, 5}},
    {"AEGP Canvas Suite", {10, 11}},
    {"AEGP Camera Suite", {2}},
    {"AEGP Register Suite", {2}},
    {"AEGP Item Suite", {11, 10, 7, 3}},
    {"AEGP PF Interface Suite", {1}},
    {"PF Path Query Suite", {1}},
    {"AEGP Memory Suite", {1}},
    {"PF Path Data Suite", {1, 1}},
    {"PF AE App Suite", {2, 5}},
    {"PF AE Adv App Suite", {2}},
    {"AEGP Light Suite", {1, 2}},
    {"AEGP Effect Suite", {1, 2, 3}},
    {"AEGP Layer Mask Suite", {5}},
    {"AEGP Mask Outline Suite", {3}},
    {"AEGP Footage Suite", {7}},
    {"AEGP Command Suite", {1}},
    {"AEGP Utility Suite", {7}},
    {"AEGP Render Suite", {1, 2}},
    {"PF ANSI Suite", {1}},
    {"PF Handle Suite", {1}},
    {"PF Fill Matte Suite", {1}},
    {"PF World Transform Suite", {1}},
    {"AEGP QueryXform Suite", {4}},
    {"AEGP Composite Suite", {2}},
    {"PF World Suite", {1}},
    {"AEGP IO In Suite", {1}},
    {"AEGP IO Out Suite", {1, 6}},
    {"AEGP Render Queue Suite", {1}},
    {"AEGP Render Queue Item Suite", {3}},
    {"AEGP Output Module Suite", {1, 2}},
    {"AEGP File Import Manager Suite", {2}},
    {"PF Sampling8 Suite", {1}},
    {"PF Sampling16 Suite", {1}},
    {"PF Iterate8 Suite", {1}},
    {"PF iterate16 Suite", {1}},
    {"PF iterateFloat Suite", {1}},
    {"AEGP Collection Suite", {2}},
    {"AEGP Text Document Suite", {1}},
    {"AEGP Sound Data Suite", {1}},
    {"AEGP Text Layer Suite", {1}},
    {"AEGP Artisan Util Suite", {1}},
    {"AEGP World Suite", {2}},
    {"AEGP Render Options Suite", {1}},
    {"AEGP Tracker Suite", {1}},
    {"AEGP Tracker Utility Suite", {1}},
    {"AE Plugin Helper Suite2", {2}},
    {"AEGP Layer Suite", {11}},
    {"PF AE Adv Item Suite", {1}},
    {"AEGP Layer Suite", {5}},
    {"AEGP Layer Mask Suite", {2}},
    {"AEGP Comp Suite", {4}},
    {"AEGP Collection Suite", {1}},
    {"AEGP Register Suite", {1}},
    {"AEGP Mask Outline Suite", {2}},
    {"PF AE Adv App Suite", {1}},
    {"AEGP Utility Suite", {3}},
    {"AEGP Render Options Suite", {2}},
    {"AEGP Proj Suite", {7}},
    {"AEGP Footage Suite", {10}},
    {"AEGP Render Queue Item Suite", {4}},
    {"AEGP Utility Suite", {10}},
    {"PF Color Settings Suite", {3, 1}},
    {"PF ColorParamSuite", {1}},
    {"PF SamplingFloat Suite", {1}},
    {"AEGP Utility Suite", {11}},
};

std::vector<std::string> KnownReleases() {
    std::vector<std::string> releases;
    for (const Known& known : kKnown)
        for (const int version : known.versions)
            releases.push_back(std::string("ReleaseSuite ") + known.name + " " +
                               std::to_string(version));
    return releases;
}

/// A cache whose slots can be set, as if suites had been acquired.
class OpenCache {
public:
    explicit OpenCache(const SPBasicSuite* basic)
        : m_cache(new (m_memory) AEGP_SuiteHandler(basic)) {}

    void Fill(std::size_t slot) {
        static int suite;
        const void* const address = &suite;
        std::memcpy(m_memory + sizeof(void*) * (1 + slot), &address, sizeof address);
    }
    AEGP_SuiteHandler& Get() { return *m_cache; }
    void Destroy() { m_cache->~AEGP_SuiteHandler(); }

private:
    alignas(AEGP_SuiteHandler) unsigned char m_memory[sizeof(AEGP_SuiteHandler)];
    AEGP_SuiteHandler* m_cache;
};

TEST(SuiteHandler, ABasicSuiteAnd101Slots) {
    EXPECT_EQ(sizeof(AEGP_SuiteHandler), 102 * sizeof(void*));
    EXPECT_EQ(AEGP_SuiteHandler::kSlots, 101u);
    EXPECT_LE(KnownReleases().size(), 101u);
}

TEST(SuiteHandler, ReleasesNothingThatWasNotAcquired) {
    RecordingHost host(Personality::Premiere);
    { const AEGP_SuiteHandler suites(host.In()->pica_basicP); }
    EXPECT_EQ(host.calls, std::vector<std::string>{});
}

TEST(SuiteHandler, ReleasesInTheOrderOfTheList) {
    const std::vector<std::string> releases = KnownReleases();
    RecordingHost host(Personality::Premiere);
    OpenCache cache(host.In()->pica_basicP);
    for (std::size_t i = 0; i < releases.size(); ++i) cache.Fill(i);
    cache.Destroy();
    EXPECT_EQ(host.calls, releases);
}

TEST(SuiteHandler, EachSlotIsOneSuite) {
    const std::vector<std::string> releases = KnownReleases();
    for (std::size_t i = 0; i < releases.size(); ++i) {
        RecordingHost host(Personality::Premiere);
        OpenCache cache(host.In()->pica_basicP);
        cache.Fill(i);
        cache.Destroy();
        EXPECT_EQ(host.calls, std::vector{releases[i]}) << "slot " << i;
    }
}

TEST(SuiteHandler, SlotsAreNotEmptiedByARelease) {
    RecordingHost host(Personality::Premiere);
    OpenCache cache(host.In()->pica_basicP);
    cache.Fill(0);
    cache.Get().ReleaseAllSuites();
    cache.Destroy();
    const std::string release = "ReleaseSuite AEGP Marker Suite 1";
    EXPECT_EQ(host.calls, (std::vector{release, release}));
}

TEST(SuiteHandler, ReleaseSuiteForwards) {
    RecordingHost host(Personality::Premiere);
    AEGP_SuiteHandler suites(host.In()->pica_basicP);
    suites.ReleaseSuite("Any Suite", 42);
    EXPECT_EQ(host.calls, std::vector<std::string>{"ReleaseSuite Any Suite 42"});
}

TEST(SuiteHandler, Throws516) {
    EXPECT_EQ(ThrownBy([] { const AEGP_SuiteHandler suites(nullptr); }), 516);
    RecordingHost host(Personality::Premiere);
    const AEGP_SuiteHandler suites(host.In()->pica_basicP);
    EXPECT_EQ(ThrownBy([&] { suites.MissingSuiteError(); }), 516);
}

}  // namespace
}  // namespace zel::test
