/// Commands with one of their allocations failing.

#include "tests/inject/InjectTest.h"

#include <cstdlib>

namespace {

using namespace zel::test;

class NoMemory : public InjectTest, public testing::WithParamInterface<WritingCommand> {};

/// The library for TIFF uses memory that it was refused, at a few places.
bool LibraryCrashes(const WritingCommand& command) {
    return std::string_view(command.name) == "RenderTiff";
}

// A few allocations from all over the command; ZEL_TEST_ALL_FAULTS takes every one.
constexpr long kSamples = 12;

TEST_P(NoMemory, IsTold) {
    const WritingCommand& command = GetParam();
    const Bytes expected = Expected(command);
    const Words before = PutOld(command);
    constexpr long kNever = 1000000000;
    const FaultyRun counted = Faulty(command.arguments, FaultyCall::Memory, "ENOMEM", kNever, 1);
    ASSERT_EQ(counted.outcome.status, 0) << counted.outcome.err;
    const long calls = counted.calls[static_cast<std::size_t>(FaultyCall::Memory)];
    ASSERT_GT(calls, 100);
    const long step = std::getenv("ZEL_TEST_ALL_FAULTS") ? 1 : calls / kSamples;
    for (long first = 1; first <= calls; first += step) {
        SCOPED_TRACE("allocation " + std::to_string(first) + " of " + std::to_string(calls));
        PutOld(command);
        const FaultyRun run = Faulty(command.arguments, FaultyCall::Memory, "ENOMEM", first, 1);
        if (run.outcome.status < 0 && LibraryCrashes(command))
            ExpectTidyCrash(command, run.outcome, before);
        else
            ExpectAllOrNothing(command, run.outcome, expected, before);
    }
}

/// Without drawings: the libraries for those are crashed by an allocation that fails. The
/// older file stays all the same.
std::vector<WritingCommand> CommandsWithoutDrawings() {
    std::vector<WritingCommand> commands = WritingCommands();
    std::erase_if(commands, [](const WritingCommand& c) {
        const std::string_view name = c.name;
        return name == "CurveSvg" || name == "CurvePng" || name == "Scope";
    });
    return commands;
}

INSTANTIATE_TEST_SUITE_P(Commands, NoMemory, testing::ValuesIn(CommandsWithoutDrawings()),
                         [](const auto& p) { return std::string(p.param.name); });

}  // namespace
