#pragma once

/// Verbs and their options as tables. One table feeds the parser, the help text, the
/// shells' completion and the manual page.

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace zel {

struct Option {
    const char* flags;  // "-o,--output", or the name of a positional argument: "IN"
    const char* value;  // what stands behind it: "FILE"; null for a switch, "" behind a name
    const char* help;
    enum Count { Optional, Required, Many } count = Optional;
    /// All that it takes, where that is a few words; `value` may name them: "keep|module".
    std::vector<std::string> (*words)() = nullptr;

    bool IsHeading() const { return flags[0] == '\0'; }
    bool IsPositional() const { return flags[0] != '-' && !IsHeading(); }
    /// The long flag without its dashes, "output", or the name; what Arguments go by.
    std::string Key() const;
    /// As it is typed: "--output", or the name.
    std::string Name() const { return IsPositional() ? Key() : "--" + Key(); }
    /// "--output" and "-o", the long one first; none of a name or heading.
    std::vector<std::string> Flags() const;
    /// The words that it takes; empty when it takes anything.
    std::vector<std::string> Words() const;
};

/// A row of a table that titles those below it.
constexpr Option Heading(const char* title) { return {"", nullptr, title}; }

/// What was given on the command line, as text; verbs check and convert.
class Arguments {
public:
    bool Has(const std::string& key) const { return !All(key).empty(); }
    const std::vector<std::string>& All(const std::string& key) const;
    /// The last one given; null when there is none.
    std::optional<std::string> Last(const std::string& key) const;
    /// True when the last one given is `word`; the parser puts the words of an option's
    /// table into the spelling that they have there.
    bool Is(const std::string& key, const char* word) const;

    void Add(const std::string& key, std::vector<std::string> values);

private:
    std::vector<std::pair<std::string, std::vector<std::string>>> m_given;
};

struct Verb {
    const char* name;
    const char* summary;
    std::span<const Option> options;
    const char* examples;  // shown behind the help; may be empty
    int (*run)(const Arguments&);
};

/// Parses the command line with the verbs' tables and runs the verb. Returns the exit
/// status; help and version go to standard output. Throws Error(Usage).
int RunVerbs(std::span<const Verb> verbs, int argc, const char* const* argv);

}  // namespace zel
