#include "cli/Options.h"

#include "cli/Choice.h"
#include "cli/Help.h"
#include "headless/Error.h"
#include "headless/Text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstring>
#include <deque>
#include <iostream>

namespace zel {

namespace {

/// Where the parser leaves what was given for one option of the table.
struct Slot {
    const Option* option;
    std::vector<std::string> values;
    bool on = false;
};

/// The pieces between separators; none of an empty text.
std::vector<std::string> Split(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    while (!text.empty()) {
        const std::string_view piece = text.substr(0, text.find(separator));
        pieces.emplace_back(piece);
        text.remove_prefix(std::min(text.size(), piece.size() + 1));
    }
    return pieces;
}

void AddOption(CLI::App& app, Slot& slot) {
    const Option& option = *slot.option;
    if (!option.value) {
        app.add_flag(option.flags, slot.on, option.help);
        return;
    }
    CLI::Option* added = app.add_option(option.flags, slot.values, option.help);
    // One value each time, but for names that stand without a flag.
    added->type_name(option.value)
        ->allow_extra_args(option.IsPositional() && option.count == Option::Many);
    if (option.count != Option::Many) added->expected(1);
    // A repeated option overrides; a positional argument would swallow its neighbours.
    if (option.count != Option::Many && !option.IsPositional())
        added->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    if (option.count == Option::Required) added->required();
}

/// A word as its table has it, upper or lower case being the same.
std::string Spelled(const Option& option, const std::string& given) {
    const std::vector<std::string> words = option.Words();
    if (words.empty()) return given;
    const auto word = std::ranges::find(words, Lower(given), Lower);
    if (word == words.end()) Reject(option.Name(), given, Alternatives(words));
    return *word;
}

Arguments Collect(const std::deque<Slot>& slots) {
    Arguments arguments;
    for (const Slot& slot : slots) {
        if (slot.on) arguments.Add(slot.option->Key(), {"on"});
        if (slot.values.empty()) continue;
        std::vector<std::string> values;
        for (const std::string& given : slot.values) values.push_back(Spelled(*slot.option, given));
        arguments.Add(slot.option->Key(), values);
    }
    return arguments;
}

/// "there is no option '--hlep'; did you mean --help?"
std::string UnknownOption(const std::string& given, const Verb* verb) {
    std::vector<std::string> known{"--help"};
    if (!verb) known.emplace_back("--version");
    if (verb)
        for (const Option& option : verb->options)
            for (const std::string& flag : option.Flags())
                if (flag.starts_with("--")) known.push_back(flag);
    return "there is no option '" + given + "'" + DidYouMean(given, known);
}

std::string SeeHelp(const std::string& text, const Verb* verb) {
    if (text.ends_with('?')) return text;
    return text + "; see 'zelfx " + (verb ? std::string(verb->name) + " " : "") + "--help'";
}

/// What comes first is a verb, or one of the few options beside them.
void RequireVerb(std::span<const Verb> verbs, const std::string& given) {
    constexpr std::string_view options[] = {"-h", "--help", "--version"};
    std::vector<std::string> names;
    for (const Verb& verb : verbs) names.emplace_back(verb.name);
    if (std::ranges::find(names, given) != names.end()) return;
    if (std::ranges::find(options, given) != std::end(options)) return;
    if (given.starts_with('-'))
        throw Error(ErrorKind::Usage, SeeHelp(UnknownOption(given, nullptr), nullptr));
    const std::string near = DidYouMean(given, names);
    throw Error(ErrorKind::Usage, "there is no verb '" + given + "'" +
                                      (near.empty() ? "; the verbs are " + AllOf(names) : near));
}

/// What the parser found wrong, in the words of this program. `verb` is null when there
/// is none yet, and `rest` what nothing in its table takes.
std::string Complaint(const CLI::ParseError& error, std::span<const Verb> verbs, const Verb* verb,
                      const std::vector<std::string>& rest) {
    const bool tooMuch = dynamic_cast<const CLI::ExtrasError*>(&error) && !rest.empty();
    if (tooMuch && rest.front().starts_with('-')) return UnknownOption(rest.front(), verb);
    if (tooMuch) return "'" + rest.front() + "' is one argument too many";
    if (!verb) {
        std::vector<std::string> names;
        for (const Verb& v : verbs) names.emplace_back(v.name);
        return "a verb is missing: " + Alternatives(names);
    }
    const std::string text = OneLine(error.what());
    for (const Option& option : verb->options) {
        const std::string name = option.Name();
        if (dynamic_cast<const CLI::RequiredError*>(&error) && text.starts_with(name + " "))
            return name + " is missing (" + option.help + ")";
        if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) && text.starts_with(name + ":"))
            return name + " needs a value behind it: " + option.value;
    }
    return text;
}

}  // namespace

std::string Option::Key() const {
    const std::string text = flags;
    const auto dashes = text.rfind("--");
    return dashes == std::string::npos ? text : text.substr(dashes + 2);
}

std::vector<std::string> Option::Flags() const {
    if (IsPositional()) return {};
    std::vector<std::string> all = Split(flags, ',');
    std::ranges::reverse(all);
    return all;
}

std::vector<std::string> Option::Words() const {
    if (words) return words();
    return value && std::strchr(value, '|') ? Split(value, '|') : std::vector<std::string>{};
}

const std::vector<std::string>& Arguments::All(const std::string& key) const {
    static const std::vector<std::string> none;
    for (const auto& [name, values] : m_given)
        if (name == key) return values;
    return none;
}

std::optional<std::string> Arguments::Last(const std::string& key) const {
    const auto& values = All(key);
    if (values.empty()) return std::nullopt;
    return values.back();
}

bool Arguments::Is(const std::string& key, const char* word) const { return Last(key) == word; }

void Arguments::Add(const std::string& key, std::vector<std::string> values) {
    m_given.emplace_back(key, std::move(values));
}

int RunVerbs(std::span<const Verb> verbs, int argc, const char* const* argv) {
    CLI::App app{"", "zelfx"};
    app.set_version_flag("--version", "zelfx " ZELFX_VERSION);
    app.require_subcommand(1);

    if (argc > 1) RequireVerb(verbs, argv[1]);
    std::deque<std::pair<CLI::App*, std::deque<Slot>>> parsers;
    for (const Verb& verb : verbs) {
        CLI::App* sub = app.add_subcommand(verb.name, verb.summary);
        auto& slots = parsers.emplace_back(sub, std::deque<Slot>()).second;
        for (const Option& option : verb.options)
            if (!option.IsHeading()) AddOption(*sub, slots.emplace_back(Slot{&option, {}}));
    }

    const Verb* chosen = nullptr;
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        for (std::size_t i = 0; i < verbs.size(); ++i)
            if (app.got_subcommand(parsers[i].first)) chosen = &verbs[i];
        if (dynamic_cast<const CLI::CallForVersion*>(&e)) return app.exit(e);
        if (dynamic_cast<const CLI::CallForHelp*>(&e)) {
            std::cout << (chosen ? HelpOf(*chosen) : HelpOf(verbs));
            return 0;
        }
        const std::string text = Complaint(e, verbs, chosen, app.remaining(true));
        throw Error(ErrorKind::Usage, SeeHelp(text, chosen));
    }
    const auto parsed =
        std::ranges::find_if(parsers, [](const auto& p) { return p.first->parsed(); });
    return verbs[static_cast<std::size_t>(parsed - parsers.begin())].run(Collect(parsed->second));
}

}  // namespace zel
