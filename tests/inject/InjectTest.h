#pragma once

/// Commands that write a file, run where something fails.

#include "tests/cli/CliTest.h"

#include <array>

namespace zel::test {

/// A command of zelfx and the file that it writes.
struct WritingCommand {
    const char* name;
    Words arguments;
    std::string output;
};
void PrintTo(const WritingCommand& command, std::ostream* out);

/// One per kind of file that zelfx writes.
const std::vector<WritingCommand>& WritingCommands();

/// How often a program made each kind of call; in the order of Faults.cpp.
enum class FaultyCall { Open, Read, Write, Sync, Close, Rename, Memory };
constexpr std::size_t kFaultyCalls = 7;
constexpr const char* kFaultyCallNames[] = {"open",  "read",   "write", "sync",
                                            "close", "rename", "memory"};

class InjectTest : public CliTest {
protected:
    /// Makes a folder "work" with the inputs of the commands.
    InjectTest();

    fs::path Work(const std::string& name = "") const { return In("work") / name; }

    /// Runs a program in the work folder for at most two minutes; then it is killed.
    Outcome Limited(const Words& command, RunOptions options = {}) const;

    struct FaultyRun {
        Outcome outcome;
        std::array<long, kFaultyCalls> calls{};  // 0 when a signal ended the program
    };

    /// Runs zelfx; of its calls, `number` from the `first` on fail with `error`.
    FaultyRun Faulty(const Words& arguments, FaultyCall call, const char* error, long first,
                     long number) const;

    /// What the command writes when nothing fails. Leaves no file.
    Bytes Expected(const WritingCommand& command) const;

    /// Puts an older file where the command writes and returns what is there then.
    Words PutOld(const WritingCommand& command) const;

    /// Either the file is as expected and the status 0, or the file and the folder are as
    /// before, and the program has told in one line what is wrong.
    void ExpectAllOrNothing(const WritingCommand& command, const Outcome& outcome,
                            const Bytes& expected, const Words& before) const;

    /// The program was ended by a signal, said so, and left file and folder as before.
    void ExpectTidyCrash(const WritingCommand& command, const Outcome& outcome,
                         const Words& before) const;

    Words WorkListing() const;

private:
    bool SamePicture(const std::string& output, const Bytes& expected) const;
};

}  // namespace zel::test
