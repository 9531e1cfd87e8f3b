/// Every command that writes a file, with one of its calls failing: in the beginning, in
/// the middle or at the end.

#include "tests/inject/InjectTest.h"

#include <cstdlib>
#include <numeric>

namespace {

using namespace zel::test;

constexpr long kAll = 1000000;

// Which of the calls fails first.
enum class Where { First, Middle, Last };

struct Fault {
    FaultyCall call;
    const char* error;
    Where where;
    long number = 1;  // how many fail from there on
};

constexpr Fault kFaults[] = {
    {FaultyCall::Open, "EMFILE", Where::First},
    {FaultyCall::Open, "EMFILE", Where::Last},
    {FaultyCall::Read, "EIO", Where::Last},
    {FaultyCall::Read, "EINTR", Where::Middle},
    {FaultyCall::Write, "ENOSPC", Where::First, kAll},  // a disk that is full stays so
    {FaultyCall::Write, "ENOSPC", Where::Last, kAll},
    {FaultyCall::Write, "EIO", Where::Middle},
    {FaultyCall::Write, "EINTR", Where::Middle},
    {FaultyCall::Sync, "EIO", Where::First},
    {FaultyCall::Close, "EIO", Where::Middle},
    {FaultyCall::Close, "EIO", Where::Last},
    {FaultyCall::Rename, "ENOSPC", Where::First},
};

/// Numbers of the calls that fail, one at a time; all of them with ZEL_TEST_ALL_FAULTS.
std::vector<long> FirstOf(Where where, long calls) {
    if (calls == 0) return {};
    if (!std::getenv("ZEL_TEST_ALL_FAULTS"))
        return {where == Where::First ? 1 : where == Where::Middle ? (calls + 1) / 2 : calls};
    std::vector<long> all(static_cast<std::size_t>(calls));
    std::iota(all.begin(), all.end(), 1);
    return all;
}

class FileFaults : public InjectTest, public testing::WithParamInterface<WritingCommand> {};

TEST_P(FileFaults, AreToldAndLeaveTheOldFile) {
    const WritingCommand& command = GetParam();
    const Bytes expected = Expected(command);
    ASSERT_FALSE(expected.empty());
    const Words before = PutOld(command);
    const FaultyRun counted = Faulty(command.arguments, FaultyCall::Open, "EIO", kAll, 1);
    ExpectAllOrNothing(command, counted.outcome, expected, before);
    for (const FaultyCall call :
         {FaultyCall::Open, FaultyCall::Write, FaultyCall::Close, FaultyCall::Rename})
        EXPECT_GT(counted.calls[static_cast<std::size_t>(call)], 0)
            << "no " << kFaultyCallNames[static_cast<std::size_t>(call)] << " was seen";

    for (const Fault& fault : kFaults) {
        const long calls = counted.calls[static_cast<std::size_t>(fault.call)];
        for (const long first : FirstOf(fault.where, calls)) {
            SCOPED_TRACE(kFaultyCallNames[static_cast<std::size_t>(fault.call)] + std::string(" ") +
                         std::to_string(first) + " of " + std::to_string(calls) + ": " +
                         fault.error);
            PutOld(command);
            const FaultyRun run =
                Faulty(command.arguments, fault.call, fault.error, first, fault.number);
            ExpectAllOrNothing(command, run.outcome, expected, before);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, FileFaults, testing::ValuesIn(WritingCommands()),
                         [](const auto& p) { return std::string(p.param.name); });

}  // namespace
