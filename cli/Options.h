#pragma once

/// Verbs and their options as tables. One table feeds the parser and the help text.

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

    bool IsPositional() const { return flags[0] != '-'; }
    /// The long flag without its dashes, "output", or the name; what Arguments go by.
    std::string Key() const;
};

/// What was given on the command line, as text; verbs check and convert.
class Arguments {
public:
    bool Has(const std::string& key) const { return !All(key).empty(); }
    const std::vector<std::string>& All(const std::string& key) const;
    /// The last one given; null when there is none.
    std::optional<std::string> Last(const std::string& key) const;

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
/// status; help and version go to standard output, complaints to standard error.
int RunVerbs(std::span<const Verb> verbs, int argc, const char* const* argv);

}  // namespace zel
