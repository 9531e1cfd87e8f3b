#pragma once

/// A look in a file: one effect and its parameters, as JSON.
///   {"effect": "ZEL Color Balance", "version": 1, "parameters": {"Highlights/Red": 12.5}}
/// What is not in the file is at its default; what the effect does not have is an error.

#include "headless/Parameters.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zel {

struct Preset {
    enum class Type { Number, Boolean, Other };

    struct Entry {
        std::string name;
        Type type;
        double value;      // 0 or 1 for a boolean
        std::string text;  // as the file has it
    };

    std::filesystem::path file;
    std::string effect;
    std::vector<Entry> entries;

    /// Puts the entries into `values`, a list of this preset's effect. Throws
    /// Error(Input) for an unknown or repeated parameter, a wrong type or a value out of
    /// range.
    void Apply(ParameterValues& values) const;
};

/// Throws Error(Input) when the file is missing or not such a text.
Preset LoadPreset(const std::filesystem::path& file);

/// Writes what is not at its default. Throws Error(Other).
void SavePreset(const std::filesystem::path& file, const std::string& effect,
                const ParameterValues& values);

}  // namespace zel
