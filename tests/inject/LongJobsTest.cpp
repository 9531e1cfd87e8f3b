/// Sequences and videos, with one of the calls failing in zelfx, or in every ffmpeg that it
/// starts: what has a final name is whole, and doing it again completes the work.

#include "tests/inject/InjectTest.h"

#include <cstdlib>
#include <map>
#include <numeric>

namespace {

using namespace zel::test;

constexpr long kOnce = 1, kFromThenOn = 1000000;

struct Fault {
    FaultyCall call;
    const char* error;
    long number;
};

constexpr Fault kFaults[] = {
    {FaultyCall::Open, "EMFILE", kOnce},
    {FaultyCall::Read, "EIO", kFromThenOn},
    {FaultyCall::Read, "EINTR", kOnce},
    {FaultyCall::Write, "ENOSPC", kFromThenOn},
    {FaultyCall::Write, "EIO", kOnce},
    {FaultyCall::Write, "EINTR", kOnce},
    {FaultyCall::Sync, "EIO", kOnce},
    {FaultyCall::Close, "EIO", kOnce},
    {FaultyCall::Rename, "ENOSPC", kFromThenOn},
};

class LongJobs : public InjectTest {
protected:
    /// Numbers of the calls that fail, one at a time; all of them with ZEL_TEST_ALL_FAULTS.
    static std::vector<long> FirstOf(long calls) {
        if (calls == 0) return {};
        if (!std::getenv("ZEL_TEST_ALL_FAULTS")) return {1, calls / 2 + 1, calls};
        std::vector<long> all(static_cast<std::size_t>(calls));
        std::iota(all.begin(), all.end(), 1);
        return all;
    }

    /// How often the command makes each call when none fails.
    std::array<long, kFaultyCalls> Calls(const Words& arguments) const {
        const FaultyRun run = Faulty(arguments, FaultyCall::Memory, "ENOMEM", 1L << 40, 1);
        EXPECT_EQ(run.outcome.status, 0) << run.outcome.err;
        return run.calls;
    }

    static std::string Text(const Fault& fault, long first) {
        return std::string(kFaultyCallNames[static_cast<std::size_t>(fault.call)]) + " " +
               std::to_string(first) + ": " + fault.error;
    }

    void ExpectTold(const Outcome& outcome) {
        ++m_failed;
        EXPECT_TRUE(outcome.status == 1 || outcome.status == 3)
            << "status " << outcome.status << ": " << outcome.err;
        EXPECT_TRUE(outcome.err.starts_with("zelfx: ")) << outcome.err;
    }

    /// Calls that are never reached would let everything pass.
    void ExpectFailures(int least) const { EXPECT_GE(m_failed, least); }

private:
    int m_failed = 0;
};

// --- sequences ------------------------------------------------------------------

class FaultsInSequences : public LongJobs {
protected:
    using Files = std::map<std::string, Bytes>;

    FaultsInSequences() {
        for (const char* name : {"in.1.png", "in.2.png", "in.3.png", "in.4.png"})
            fs::copy_file(Work("in.png"), Work(name));
        Empty();
    }

    void Empty() const {
        fs::remove_all(Work("graded"));
        fs::create_directory(Work("graded"));
    }

    Files Graded() const {
        Files files;
        for (const auto& entry : fs::directory_iterator(Work("graded")))
            files[entry.path().filename().string()] = ReadFile(entry.path());
        return files;
    }
};

TEST_F(FaultsInSequences, LeaveWholeFramesAndCanBeMadeUpFor) {
    const Words render{
        "render",     "in.#.png",   "graded/", "-e",        "color_balance",   "--jobs", "2",
        "--manifest", "graded/all", "--log",   "log.jsonl", "--skip-existing", "--quiet"};
    const auto calls = Calls(render);
    const Files expected = Graded();
    ASSERT_EQ(expected.size(), 5u);
    for (const Fault& fault : kFaults)
        for (const long first : FirstOf(calls[static_cast<std::size_t>(fault.call)])) {
            SCOPED_TRACE(Text(fault, first));
            Empty();
            const FaultyRun run = Faulty(render, fault.call, fault.error, first, fault.number);
            if (run.outcome.status == 0)
                EXPECT_TRUE(Graded() == expected) << "status 0, but not all is there";
            else
                ExpectTold(run.outcome);
            for (const auto& [name, bytes] : Graded())
                EXPECT_TRUE(expected.contains(name) && expected.at(name) == bytes) << name;

            Words again{ZELFX_PROGRAM};
            again.insert(again.end(), render.begin(), render.end());
            const Outcome rerun = Limited(again);
            EXPECT_EQ(rerun.status, 0) << rerun.err;
            EXPECT_TRUE(Graded() == expected) << "the second run did not complete it";
        }
    ExpectFailures(15);
}

// --- videos ---------------------------------------------------------------------

class FaultsInVideos : public LongJobs {
protected:
    FaultsInVideos() {
        Limited({"ffmpeg", "-v", "error", "-f", "lavfi", "-i",
                 "testsrc2=size=96x64:rate=25:duration=0.4", "-f", "lavfi", "-i",
                 "sine=duration=0.4", "-c:v", "ffv1", "-pix_fmt", "yuv420p", "-c:a", "pcm_s16le",
                 "in.mkv"});
    }

    /// A checksum of every packet, picture and sound.
    std::string Packets() const {
        return Limited(
                   {"ffmpeg", "-v", "error", "-i", "out.mkv", "-map", "0", "-f", "framemd5", "-"})
            .out;
    }
};

TEST_F(FaultsInVideos, LeaveTheOldFileOrAWholeOne) {
    const WritingCommand command{"Video",
                                 {"render", "in.mkv", "out.mkv", "-e", "color_balance", "--codec",
                                  "ffv1", "--jobs", "2", "--quiet"},
                                 "out.mkv"};
    Calls(command.arguments);
    const std::string expected = Packets();
    ASSERT_NE(expected.find("\n1,"), std::string::npos) << "no sound: " << expected;
    const Words before = PutOld(command);
    const Bytes old = ReadFile(Work("out.mkv"));
    // The programs that are started count their calls for themselves.
    for (const Fault& fault : kFaults)
        for (const long first : {1, 2, 3, 5, 8}) {
            SCOPED_TRACE(Text(fault, first));
            PutOld(command);
            const FaultyRun run =
                Faulty(command.arguments, fault.call, fault.error, first, fault.number);
            EXPECT_EQ(WorkListing(), before);
            if (run.outcome.status == 0) {
                EXPECT_EQ(Packets(), expected);
                continue;
            }
            ExpectTold(run.outcome);
            EXPECT_EQ(ReadFile(Work("out.mkv")), old) << "the older file has changed";
        }
    ExpectFailures(8);
}

}  // namespace
