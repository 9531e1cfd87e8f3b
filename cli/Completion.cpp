#include "cli/Completion.h"

#include <algorithm>
#include <string_view>

namespace zel {

namespace {

/// What completes a value.
enum class Kind { Nothing, Words, Files, Effects, Looks, Parameters };

Kind KindOf(const Option& option) {
    struct Row {
        std::string_view value;
        Kind kind;
    };
    // clang-format off
    constexpr Row rows[] = {
        {"EFFECT",     Kind::Effects},
        {"LOOK",       Kind::Looks},
        {"NAME=VALUE", Kind::Parameters},
        {"FILE",       Kind::Files},
        {"IN",         Kind::Files},
        {"OUT",        Kind::Files},
        {"A",          Kind::Files},
        {"B",          Kind::Files},
        {"MANIFEST",   Kind::Files},
    };
    // clang-format on
    if (!option.Words().empty()) return Kind::Words;
    const std::string value = option.IsPositional() ? option.Key() : option.value;
    const auto* row = std::ranges::find(rows, value, &Row::value);
    return row == std::end(rows) ? Kind::Nothing : row->kind;
}

std::string Joined(const std::vector<std::string>& words, const char* between) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : between) + word;
    return text;
}

// --- bash -----------------------------------------------------------------------

std::string BashAction(const Option& option) {
    switch (KindOf(option)) {
        case Kind::Words: return "_zelfx_words '" + Joined(option.Words(), " ") + "'";
        case Kind::Files: return "_zelfx_files";
        case Kind::Effects: return "_zelfx_effects";
        case Kind::Looks: return "_zelfx_effects; _zelfx_files";
        case Kind::Parameters: return "_zelfx_parameters";
        default: return ":";
    }
}

std::string BashCase(const Verb& verb) {
    std::string flags = "--help", values, names;
    int position = 0;
    for (const Option& option : verb.options) {
        if (option.IsHeading()) continue;
        if (option.IsPositional()) {
            const std::string at = option.count == Option::Many ? "*" : std::to_string(++position);
            names += "        " + at + ") " + BashAction(option) + " ;;\n";
            continue;
        }
        flags += ' ' + Joined(option.Flags(), " ");
        if (option.value)
            values += "        " + Joined(option.Flags(), "|") + ") " + BashAction(option) +
                      "; return ;;\n";
    }
    std::string text = std::string("    ") + verb.name + ")\n";
    if (!values.empty()) text += "        case $before in\n" + values + "        esac\n";
    text += "        [[ $word == -* ]] && { _zelfx_words '" + flags + "'; return; }\n";
    if (!names.empty()) text += "        case $(_zelfx_position) in\n" + names + "        esac\n";
    return text + "        ;;\n";
}

constexpr const char* kBashHead =
    R"sh(# bash completion for zelfx, as 'zelfx completion bash' writes it

# The functions share the variables of _zelfx: word is the one to complete, before the
# one that it may be the value of.
_zelfx_words() {
    COMPREPLY+=($(compgen -W "$1" -- "$word"))
}
_zelfx_files() {
    compopt -o filenames
    mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -f -- "$word")
}
_zelfx_effects() {
    _zelfx_words "$("$program" list --names 2>/dev/null)"
}
_zelfx_parameters() {
    local i effect=
    [[ ${COMP_WORDS[1]} == @(curve|export) ]] && effect=${COMP_WORDS[2]}
    for ((i = 2; i < COMP_CWORD; ++i)); do
        [[ ${COMP_WORDS[i]} == @(-e|--effect) ]] && effect=${COMP_WORDS[i + 1]}
    done
    compopt -o nospace
    _zelfx_words "$("$program" describe "$effect" --names 2>/dev/null | sed 's/$/=/')"
}
# Which of the arguments without a flag the word is, from 1.
_zelfx_position() {
    local i position=1
    for ((i = 2; i < COMP_CWORD; ++i)); do
        case ${COMP_WORDS[i]} in
)sh";

constexpr const char* kBashMiddle = R"sh(        -*|=) ;;
        *) [[ ${COMP_WORDS[i - 1]} == = ]] || ((++position)) ;;
        esac
    done
    echo $position
}
_zelfx() {
    local program=$1 word=$2 before=$3
    COMPREPLY=()
    # '=' is a word of its own to the shell.
    if [[ $word == = ]]; then
        word=
        before=${COMP_WORDS[COMP_CWORD - 1]}
    elif [[ $before == = ]]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    [[ $before != "$3" && $before != --* ]] && return
)sh";

}  // namespace

std::string BashCompletion(std::span<const Verb> verbs) {
    std::string names, cases;
    std::vector<std::string> valued;
    for (const Verb& verb : verbs) {
        names += std::string(verb.name) + ' ';
        cases += BashCase(verb);
        for (const Option& option : verb.options)
            if (option.value)
                for (const std::string& flag : option.Flags())
                    if (std::ranges::find(valued, flag) == valued.end()) valued.push_back(flag);
    }
    return kBashHead + ("        " + Joined(valued, "|")) + ") ((++i)) ;;\n" + kBashMiddle +
           "    if ((COMP_CWORD == 1)); then\n        _zelfx_words '" + names +
           "--help --version'\n        return\n    fi\n    case ${COMP_WORDS[1]} in\n" + cases +
           "    esac\n}\ncomplete -F _zelfx zelfx\n";
}

// --- zsh ------------------------------------------------------------------------

namespace {

/// Inside of single quotes, and without what ends a field of _arguments.
std::string ZshText(std::string_view text, std::string_view special) {
    std::string quoted;
    for (const char c : text) {
        if (c == '\'')
            quoted += "'\\'";
        else if (special.find(c) != std::string_view::npos)
            quoted += '\\';
        quoted += c;
    }
    return quoted;
}

std::string ZshAction(const Option& option) {
    switch (KindOf(option)) {
        case Kind::Words: return "(" + Joined(option.Words(), " ") + ")";
        case Kind::Files: return "_files";
        case Kind::Effects: return "_zelfx_effects";
        case Kind::Looks: return "_zelfx_looks";
        case Kind::Parameters: return "_zelfx_parameters";
        default: return " ";
    }
}

std::string ZshSpec(const Option& option) {
    const std::string help = ZshText(option.help, ":[]\\");
    if (option.IsPositional()) {
        const bool many = option.count == Option::Many;
        return std::string("'") + (many ? "*" : "") + ":" + help + ":" + ZshAction(option) + "'";
    }
    const std::vector<std::string> flags = option.Flags();
    const std::string once = option.count == Option::Many ? "*" : "(" + Joined(flags, " ") + ")";
    std::string text = "'" + once + "'";
    text += flags.size() > 1 ? "{" + Joined(flags, ",") + "}" : flags.front();
    text += "'[" + help + "]";
    if (option.value) text += ":" + ZshText(option.value, ":\\") + ":" + ZshAction(option);
    return text + "'";
}

constexpr const char* kZshHead = R"sh(#compdef zelfx
# zsh completion for zelfx, as 'zelfx completion zsh' writes it

_zelfx_effects() {
    local -a effects=(${(f)"$($program list --names 2>/dev/null)"})
    compadd -a effects
}
_zelfx_looks() {
    _zelfx_effects
    _files -g '*.json'
}
_zelfx_parameters() {
    local -i flag=${words[(I)-e|--effect]}
    local effect=$words[flag?flag+1:2]
    local -a names=(${(f)"$($program describe $effect --names 2>/dev/null)"})
    compadd -S = -a names
}
_zelfx() {
    local program=$words[1]
    local -a verbs=(
)sh";

}  // namespace

std::string ZshCompletion(std::span<const Verb> verbs) {
    std::string text = kZshHead;
    for (const Verb& verb : verbs)
        text += std::string("        '") + verb.name + ":" + ZshText(verb.summary, ":\\") + "'\n";
    text +=
        "    )\n"
        "    if (( CURRENT == 2 )); then\n"
        "        _describe verb verbs\n"
        "        return\n"
        "    fi\n"
        "    local verb=$words[2]\n"
        "    shift words\n"
        "    (( --CURRENT ))\n"
        "    case $verb in\n";
    for (const Verb& verb : verbs) {
        text += std::string("    ") + verb.name + ")\n        _arguments -s";
        for (const Option& option : verb.options)
            if (!option.IsHeading()) text += " \\\n            " + ZshSpec(option);
        text += " \\\n            '(- *)'{-h,--help}'[print help]' ;;\n";
    }
    return text + "    esac\n}\n_zelfx \"$@\"\n";
}

}  // namespace zel
