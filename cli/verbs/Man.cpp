/// zelfx man: the manual page.

#include "cli/ManPage.h"
#include "cli/verbs/Verbs.h"

#include <iostream>

namespace zel {

namespace {

int Run(const Arguments&) {
    std::cout << ManPage(AllVerbs());
    return 0;
}

}  // namespace

Verb ManVerb() {
    return {"man",
            "Write the manual page",
            {},
            "Example:\n"
            "  zelfx man | man -l -",
            Run};
}

}  // namespace zel
