#pragma once

/// Child processes for tests of programs.

#include <cstdio>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace zel::test {

/// A command line, or part of one.
using Words = std::vector<std::string>;

inline Words operator+(Words words, const Words& more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

struct Outcome {
    int status;            // exit status; -signal when a signal ended the program
    std::string out, err;  // what it printed, each on its own
    long peakKiB;          // largest resident memory
};

struct RunOptions {
    std::filesystem::path folder = {};  // to run in; empty: this one
    std::vector<std::pair<std::string, std::string>> environment = {};  // set on top of ours
    std::filesystem::path out = {};  // a file in place of Outcome::out
};

/// A program under way. One that nobody waited for is killed.
class RunningProgram {
public:
    /// Starts it, found through PATH unless its name has a folder.
    explicit RunningProgram(const Words& command, const RunOptions& options = {});
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    void Signal(int signal) const;

    /// Throws std::runtime_error when it could not be started. Once.
    Outcome Wait();

private:
    std::string m_name;
    std::FILE *m_out, *m_err;
    int m_pid = -1;
};

/// Runs a program, found through PATH unless its name has a folder. Throws
/// std::runtime_error when it cannot be started.
Outcome RunProgram(const Words& command, const RunOptions& options = {});

}  // namespace zel::test
