/// Every command that writes a file, where there is no room for it: under a limit on the
/// size of files, and on a real disk of a few pages, which takes the right to mount one.

#include "tests/inject/InjectTest.h"

namespace {

using namespace zel::test;

class NoRoom : public InjectTest, public testing::WithParamInterface<WritingCommand> {
protected:
    /// Runs the command as "$@" of a shell script and expects it to fail if its file has
    /// more than `room` bytes.
    void ExpectTold(Words script, std::size_t room) {
        const WritingCommand& command = GetParam();
        const Bytes expected = Expected(command);
        const Words before = PutOld(command);
        script.insert(script.end(), {"sh", ZELFX_PROGRAM});
        script.insert(script.end(), command.arguments.begin(), command.arguments.end());
        const Outcome run = Limited(script);
        if (fs::is_directory(In("after"))) {
            fs::remove_all(Work());
            fs::rename(In("after"), Work());
        }
        ExpectAllOrNothing(command, run, expected, before);
        if (expected.size() <= room) return;
        EXPECT_EQ(run.status, 1);
        EXPECT_NE(run.err.find("cannot write '" + command.output + "'"), std::string::npos)
            << run.err;
    }
};

TEST_P(NoRoom, UnderALimitOnTheSizeOfFiles) {
    ExpectTold({"sh", "-c", "trap '' XFSZ; ulimit -f 2; exec \"$@\" >/dev/null"}, 1024);
}

// The inputs, the older file and a filler leave one page. What is there afterwards is
// copied, since the disk goes away with the process that mounted it.
constexpr const char* kOnFullDisk = R"(
mkdir ../disk ../after
mount -t tmpfs -o size=128k tmpfs ../disk
cp -a . ../disk
cd ../disk
head -c 256k /dev/zero >filler 2>/dev/null
truncate -s -4096 filler
"$@"
status=$?
rm filler
cp -a . ../after
exit $status
)";

TEST_P(NoRoom, OnAFullDisk) {
    if (Limited({"unshare", "-m", "mount", "-t", "tmpfs", "tmpfs", "."}).status != 0)
        GTEST_SKIP() << "no right to mount a disk";
    ExpectTold({"unshare", "-m", "sh", "-c", kOnFullDisk}, 4096);
}

INSTANTIATE_TEST_SUITE_P(Commands, NoRoom, testing::ValuesIn(WritingCommands()),
                         [](const auto& p) { return std::string(p.param.name); });

}  // namespace
