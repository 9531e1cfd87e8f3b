#pragma once

/// The look that a command line asks for: effects in a row, each with its setting. What
/// verbs that take a look have in common.

#include "cli/Isolate.h"
#include "headless/EffectSession.h"

#include <deque>
#include <filesystem>
#include <string>

namespace zel {

struct ChainLink {
    EffectSession session;
    ParameterValues values;

    ChainLink(const std::filesystem::path& module, Personality host,
              const std::optional<Isolation>& isolation)
        : session(module, host, isolation), values(session.Params()) {}
    ChainLink(const ChainLink&) = delete;
    ChainLink& operator=(const ChainLink&) = delete;
};

/// In the order in which a picture goes through; never empty.
using Chain = std::deque<ChainLink>;

// clang-format off
inline constexpr Option kEffectOption    {"-e,--effect",     "EFFECT",      "effect or module; in a chain the one -s is for"};
inline constexpr Option kSetOption       {"-s,--set",        "NAME=VALUE",  "a parameter of --effect, else of the last", Option::Many};
inline constexpr Option kPresetOption    {"-p,--preset",     "FILE",        "effect with its setting; several: a chain", Option::Many};
inline constexpr Option kSavePresetOption{"--save-preset",   "FILE",        "write effect and setting, for --preset"};
inline constexpr Option kHostOption      {"--host",          "premiere|ae", "editor to play (default: premiere)"};
inline constexpr Option kToLinearOption  {"--log-to-linear", nullptr,       "Log/Linear Conversion: check box off"};
inline constexpr Option kToLogOption     {"--linear-to-log", nullptr,       "Log/Linear Conversion: check box on"};
// clang-format on

/// The chain of the arguments: first what stands at LOOK (effects, or presets: *.json),
/// then every --preset. An --effect that none of these is comes last. --set and the
/// direction of Log/Linear Conversion act on --effect, else on the last. --host is the
/// editor to play; --isolate gives every effect a process. Throws Error.
Chain ChainFrom(const Arguments& arguments);

/// Does --save-preset, if it was given.
void SavePresetIfAsked(const Arguments& arguments, const Chain& chain);

/// "ZEL Color Balance, then Gamma/Gain/Offset".
std::string NamesOf(const Chain& chain);

/// "Highlights/Red 12.5, Shadows/RGB -5; every parameter at its default": by effect,
/// what is not at its default.
std::string SettingsOf(const Chain& chain);

}  // namespace zel
