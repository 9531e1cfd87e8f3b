#pragma once

/// Findings. They say what is wrong and end the program, as fuzzers want it.

#include <cstdio>
#include <cstdlib>
#include <string>

namespace zel::fuzz {

[[noreturn]] inline void Found(const std::string& what) {
    std::fprintf(stderr, "finding: %s\n", what.c_str());
    std::abort();
}

inline void Check(bool holds, const char* what) {
    if (!holds) Found(what);
}

/// For a difference in words; none is an empty text.
inline void CheckNone(const std::string& difference, const std::string& where) {
    if (!difference.empty()) Found(where + ": " + difference);
}

}  // namespace zel::fuzz
