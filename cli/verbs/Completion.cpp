/// zelfx completion: a script that lets a shell complete command lines.

#include "cli/Completion.h"
#include "cli/verbs/Verbs.h"

#include <iostream>

namespace zel {

namespace {

std::vector<std::string> Shells() { return {"bash", "zsh"}; }

constexpr Option kOptions[] = {
    {"SHELL", "", "bash or zsh", Option::Required, Shells},
};

int Run(const Arguments& arguments) {
    std::cout << (arguments.Is("SHELL", "bash") ? BashCompletion : ZshCompletion)(AllVerbs());
    return 0;
}

}  // namespace

Verb CompletionVerb() {
    return {"completion", "Write a shell's completion script", kOptions,
            "Example:\n"
            "  source <(zelfx completion bash)\n"
            "Packages bring the scripts along; this is for a program that was not installed.",
            Run};
}

}  // namespace zel
