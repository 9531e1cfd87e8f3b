#include "cli/ManPage.h"

#include "cli/Help.h"

#include <sstream>
#include <string_view>

namespace zel {

namespace {

/// Text as roff takes it: hyphens that can be copied, nothing that reads as a request.
std::string Roff(std::string_view text) {
    std::string roff;
    for (const char c : text) {
        if (c == '\\')
            roff += "\\e";
        else if (c == '-')
            roff += "\\-";
        else if ((c == '.' || c == '\'') && (roff.empty() || roff.back() == '\n'))
            roff += std::string("\\&") + c;
        else
            roff += c;
    }
    return roff;
}

/// Flags bold, what stands behind them in italics.
std::string Signature(const Option& option) {
    std::string text;
    for (const std::string& flag : option.Flags())
        text = "\\fB" + Roff(flag) + "\\fR" + (text.empty() ? "" : ", " + text);
    if (option.IsPositional()) return "\\fI" + Roff(SignatureOf(option)) + "\\fR";
    return option.value ? text + " \\fI" + Roff(option.value) + "\\fR" : text;
}

std::string WordsOf(const Option& option) {
    std::string text;
    for (const std::string& word : option.Words()) text += (text.empty() ? "" : ", ") + word;
    // Where the value names them, they have been read.
    const bool named =
        option.value && std::string_view(option.value).find('|') != std::string::npos;
    return text.empty() || named ? "" : " One of " + Roff(text) + ".";
}

/// What stands below a verb's help: indented lines are commands.
std::string Examples(const char* examples) {
    std::string text;
    std::istringstream lines(examples);
    bool command = false;
    for (std::string line; std::getline(lines, line);) {
        const bool indented = line.starts_with("  ");
        if (indented != command) text += indented ? ".RS\n.nf\n" : ".fi\n.RE\n";
        if (!indented && text.empty()) text += ".PP\n";
        command = indented;
        text += Roff(indented ? line.substr(2) : line) + '\n';
    }
    return command ? text + ".fi\n.RE\n" : text;
}

std::string Section(const Verb& verb) {
    std::string text = std::string(".SS ") + verb.name + "\n.nf\n.B " + Roff(UsageOf(verb)) +
                       "\n.fi\n.PP\n" + Roff(verb.summary) + ".\n";
    for (const Option& option : verb.options)
        text += option.IsHeading() ? ".PP\n.B " + Roff(option.help) + "\n"
                                   : ".TP\n" + Signature(option) + '\n' + Roff(option.help) + '.' +
                                         WordsOf(option) + '\n';
    return text + Examples(verb.examples);
}

constexpr const char* kDescription =
    R"(.SH DESCRIPTION
.B zelfx
takes pictures through colour\-correction effects without an editor: it loads the same
effect modules, hands them frames as an editor does, and writes what they render.
A look is one effect with its setting, or several in a row. It can be saved as a preset,
seen as a curve, measured, and handed to other programs as a table.
.PP
Results go to standard output, messages to standard error. The same command writes the
same bytes every time.
)";

constexpr const char* kRest =
    R"(.SH EXIT STATUS
.TP
.B 0
Done; for
.BR compare ,
the pictures are the same.
.TP
.B 1
Failed: output, memory, the machine; for
.BR compare ,
the pictures differ.
.TP
.B 2
Wrong usage.
.TP
.B 3
A picture, preset or other input that cannot be read.
.TP
.B 4
No such effect, or the effect failed.
.TP
.B 5
Frames of a sequence were missing.
.PP
A render that is ended by a signal finishes the frames under way, leaves nothing half
written, and then ends by that signal.
.SH ENVIRONMENT
.TP
.B ZELFX_PATH
Folders, separated by colons, in which modules are looked for first. Then come the
folder
.I modules
beside the program and
.I lib/zelfx/modules
of the prefix that it is installed in.
.TP
.B ZELFX_CPU
The highest instruction set to use, as
.B zelfx info
names them. The results are the same with every one.
.SH SEE ALSO
.BR ffmpeg (1)
)";

}  // namespace

std::string ManPage(std::span<const Verb> verbs) {
    std::string text =
        ".\\\" written by 'zelfx man'\n"
        ".TH ZELFX 1 \"\" \"zelfx " ZELFX_VERSION
        "\" \"User commands\"\n"
        ".SH NAME\nzelfx \\- colour\\-correction effects without an editor\n"
        ".SH SYNOPSIS\n.B zelfx\n.I verb\n.RI [ arguments ]\n.br\n"
        ".B zelfx\n.I verb\n.B \\-\\-help\n.br\n"
        ".B zelfx \\-\\-version\n";
    text += kDescription;
    text += ".SH VERBS\n";
    for (const Verb& verb : verbs) text += Section(verb);
    return text + kRest;
}

}  // namespace zel
