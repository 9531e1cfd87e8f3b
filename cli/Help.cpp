#include "cli/Help.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace zel {

namespace {

constexpr std::size_t kWidth = 80;
constexpr std::size_t kWidestColumn = 30;  // a longer name gets a line of its own

/// `name` and behind it, from `column` on, the text: broken between words.
std::string Row(const std::string& name, const std::string& text, std::size_t column) {
    std::string rows, line = "  " + name;
    if (line.size() + 2 > column) rows = std::exchange(line, "") + '\n';
    line.resize(column, ' ');
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const bool first = line.size() == column;
        if (!first && line.size() + 1 + word.size() > kWidth) {
            rows += line + '\n';
            line.assign(column, ' ');
            line += word;
        } else {
            line += (first ? "" : " ") + word;
        }
    }
    return rows + line + '\n';
}

/// Long flags stand below each other, whether a short one precedes them or not.
std::string Indented(const Option& option, bool anyShort) {
    const bool longOnly = anyShort && !option.IsPositional() && option.Flags().size() == 1;
    return (longOnly ? "    " : "") + SignatureOf(option);
}

}  // namespace

std::string SignatureOf(const Option& option) {
    if (option.IsPositional()) return option.Key() + (option.count == Option::Many ? "..." : "");
    std::string text;
    for (const std::string& flag : option.Flags()) text = flag + (text.empty() ? "" : ", " + text);
    return option.value ? text + ' ' + option.value : text;
}

std::string UsageOf(const Verb& verb) {
    std::string text = std::string("zelfx ") + verb.name, required;
    bool optional = false;
    for (const Option& option : verb.options) {
        if (option.IsHeading()) continue;
        if (option.IsPositional())
            text += option.count == Option::Required ? ' ' + option.Key()
                                                     : " [" + SignatureOf(option) + ']';
        else if (option.count == Option::Required)
            required += ' ' + option.Flags().back() + ' ' + option.value;
        else
            optional = true;
    }
    return text + required + (optional ? " [options]" : "");
}

std::string HelpOf(const Verb& verb) {
    bool anyShort = false;
    std::size_t column = 0;
    for (const Option& option : verb.options) anyShort = anyShort || option.Flags().size() > 1;
    for (const Option& option : verb.options)
        if (const std::size_t end = Indented(option, anyShort).size() + 4; end <= kWidestColumn)
            column = std::max(column, end);

    std::string text = UsageOf(verb) + '\n' + verb.summary + ".\n";
    if (!verb.options.empty() && !verb.options.front().IsHeading()) text += '\n';
    for (const Option& option : verb.options)
        text += option.IsHeading() ? std::string(option.help) + ":\n"
                                   : Row(Indented(option, anyShort), option.help, column);
    if (*verb.examples) text += std::string("\n") + verb.examples + '\n';
    return text;
}

std::string HelpOf(std::span<const Verb> verbs) {
    std::string text = "zelfx VERB [arguments]\nColour-correction effects without an editor.\n\n";
    for (const Verb& verb : verbs) text += Row(verb.name, verb.summary, 15);
    return text +
           "\n'zelfx VERB --help' tells the options of a verb, 'man zelfx' everything;\n"
           "'zelfx --version' the version. Without installing, modules are looked for in\n"
           "the folders of ZELFX_PATH.\n";
}

}  // namespace zel
