#include "cli/Options.h"

#include "headless/Error.h"
#include "headless/Text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <deque>
#include <iostream>

namespace zel {

namespace {

constexpr int kUsageStatus = static_cast<int>(ErrorKind::Usage);

/// Where the parser leaves what was given for one option of the table.
struct Slot {
    const Option* option;
    std::vector<std::string> values;
    bool on = false;
};

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

Arguments Collect(const std::deque<Slot>& slots) {
    Arguments arguments;
    for (const Slot& slot : slots) {
        if (slot.on) arguments.Add(slot.option->Key(), {"on"});
        if (!slot.values.empty()) arguments.Add(slot.option->Key(), slot.values);
    }
    return arguments;
}

void RequireVerb(std::span<const Verb> verbs, const std::string& given) {
    std::vector<std::string> names;
    for (const Verb& verb : verbs) names.emplace_back(verb.name);
    if (std::ranges::find(names, given) == names.end())
        throw Error(ErrorKind::Usage,
                    "there is no verb '" + given + "'; the verbs are " + AllOf(names));
}

/// What the parser found wrong, in the words of this program. `verb` is null when there
/// is none yet, and `rest` what nothing in its table takes.
std::string Complaint(const CLI::ParseError& error, std::span<const Verb> verbs, const Verb* verb,
                      const std::vector<std::string>& rest) {
    const bool tooMuch = dynamic_cast<const CLI::ExtrasError*>(&error) && !rest.empty();
    if (tooMuch && rest.front().starts_with('-')) {
        std::vector<std::string> known{"--help"};
        if (verb)
            for (const Option& option : verb->options)
                if (!option.IsPositional()) known.push_back("--" + option.Key());
        return "there is no option '" + rest.front() + "'" + DidYouMean(rest.front(), known);
    }
    if (tooMuch) return "'" + rest.front() + "' is one argument too many";
    if (!verb) {
        std::vector<std::string> names;
        for (const Verb& v : verbs) names.emplace_back(v.name);
        return "a verb is missing: " + Alternatives(names);
    }
    const std::string text = OneLine(error.what());
    for (const Option& option : verb->options) {
        const std::string name = option.IsPositional() ? option.Key() : "--" + option.Key();
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

void Arguments::Add(const std::string& key, std::vector<std::string> values) {
    m_given.emplace_back(key, std::move(values));
}

int RunVerbs(std::span<const Verb> verbs, int argc, const char* const* argv) {
    CLI::App app{"zelfx: colour-correction effects without an editor", "zelfx"};
    app.set_version_flag("--version", "zelfx " ZELFX_VERSION);
    app.require_subcommand(1);
    app.get_formatter()->column_width(32);
    app.get_formatter()->label("SUBCOMMAND", "VERB ...");
    app.get_formatter()->label("REQUIRED", "(required)");

    if (argc > 1 && argv[1][0] != '-') RequireVerb(verbs, argv[1]);
    std::deque<std::pair<CLI::App*, std::deque<Slot>>> parsers;
    for (const Verb& verb : verbs) {
        CLI::App* sub = app.add_subcommand(verb.name, verb.summary);
        sub->footer(verb.examples)->group("Verbs");
        auto& slots = parsers.emplace_back(sub, std::deque<Slot>()).second;
        for (const Option& option : verb.options)
            AddOption(*sub, slots.emplace_back(Slot{&option, {}}));
    }

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        if (e.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) return app.exit(e);
        const CLI::App* chosen = app.get_subcommands().empty() ? nullptr : app.get_subcommands()[0];
        const auto verb = std::ranges::find_if(
            verbs, [&](const Verb& v) { return chosen && chosen->get_name() == v.name; });
        std::string text =
            Complaint(e, verbs, verb == verbs.end() ? nullptr : &*verb, app.remaining(true));
        if (!text.ends_with('?'))
            text += "; see 'zelfx " + (chosen ? chosen->get_name() + " " : "") + "--help'";
        throw Error(ErrorKind::Usage, text);
    }
    for (std::size_t i = 0; i < verbs.size(); ++i)
        if (parsers[i].first->parsed()) return verbs[i].run(Collect(parsers[i].second));
    return kUsageStatus;
}

}  // namespace zel
