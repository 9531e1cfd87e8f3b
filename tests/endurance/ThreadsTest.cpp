/// One module, many threads.

#include "tests/endurance/Effects.h"

#include <gtest/gtest.h>

#include <barrier>
#include <mutex>
#include <thread>

namespace {

using namespace zel;
using namespace zel::test;

constexpr int kThreads = 8;

/// A frame of every format, sizes and settings that differ from job to job, and what one
/// thread alone makes of it.
struct Job {
    PrPixelFormat format;
    int width, height;
    std::uint32_t seed;
    double part;
};

std::vector<Job> JobsFor(const EffectSession& session) {
    std::vector<Job> jobs;
    for (const PrPixelFormat format : session.Formats())
        for (const int width : {1, 33, 160})
            jobs.push_back({format, width, 1 + width % 7, static_cast<std::uint32_t>(width),
                            0.1 + 0.2 * static_cast<double>(jobs.size() % 5)});
    return jobs;
}

Frame Rendered(const EffectSession& session, const Job& job) {
    Frame source(job.format, job.width, job.height), result(job.format, job.width, job.height);
    Fill(source, job.seed);
    const RenderResult rendered = session.Render(result, source, SlidersAt(session, job.part));
    EXPECT_EQ(rendered.code, 0) << rendered.message;
    return result;
}

TEST(Threads, RenderThroughOneModuleAtOnce) {
    for (const auto& file : EffectFiles()) {
        SCOPED_TRACE(file);
        const EffectSession session(file, Personality::Premiere);
        const std::vector<Job> jobs = JobsFor(session);
        std::vector<Frame> expected;
        for (const Job& job : jobs) expected.push_back(Rendered(session, job));

        std::mutex mutex;
        std::vector<std::string> differences;
        std::barrier start(kThreads);
        {
            std::vector<std::jthread> threads;
            for (int t = 0; t < kThreads; ++t)
                threads.emplace_back([&, t] {
                    start.arrive_and_wait();
                    // Every thread begins with another job, so that different ones meet.
                    for (std::size_t i = 0; i < 2 * jobs.size(); ++i) {
                        const std::size_t j = (i + static_cast<std::size_t>(t) * 5) % jobs.size();
                        const std::string difference =
                            Difference(expected[j], Rendered(session, jobs[j]));
                        const std::lock_guard lock(mutex);
                        if (!difference.empty())
                            differences.push_back("job " + std::to_string(j) + ": " + difference);
                    }
                });
        }
        EXPECT_TRUE(differences.empty()) << differences.front();
    }
}

TEST(Threads, SetUpAndRenderAFreshModuleAtOnce) {
    const Job job{PrPixelFormat_BGRA_4444_16u, 33, 3, 7, 0.7};
    for (const auto& file : EffectFiles()) {
        SCOPED_TRACE(file);
        const Frame expected = Rendered(EffectSession(file, Personality::Premiere), job);
        // Behind the last session the module is unloaded, so that every round is its first.
        for (int round = 0; round < 10; ++round) {
            std::barrier start(kThreads);
            std::vector<std::string> differences(kThreads);
            {
                std::vector<std::jthread> threads;
                for (std::size_t t = 0; t < kThreads; ++t)
                    threads.emplace_back([&, t] {
                        start.arrive_and_wait();
                        const EffectSession session(file, Personality::Premiere);
                        differences[t] = Difference(expected, Rendered(session, job));
                        start.arrive_and_wait();  // nobody unloads what others are at
                    });
            }
            for (const std::string& difference : differences) EXPECT_EQ(difference, "");
        }
    }
}

}  // namespace
