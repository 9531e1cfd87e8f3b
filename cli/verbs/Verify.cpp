/// zelfx verify: are the files of a manifest there and whole?

#include "cli/Json.h"
#include "cli/frames/Manifest.h"
#include "cli/verbs/Verbs.h"
#include "headless/Error.h"

#include <iostream>

namespace zel {

namespace {

// clang-format off
constexpr Option kOptions[] = {
    {"MANIFEST",   "",      "of 'zelfx render --manifest'; several may follow", Option::Many},
    {"--json",     nullptr, "print what is wrong as JSON"},
    {"-q,--quiet", nullptr, "print nothing but what is wrong"},
};
// clang-format on

int Run(const Arguments& arguments) {
    const bool json = arguments.Has("json");
    if (!arguments.Has("MANIFEST"))
        throw Error(ErrorKind::Usage, "MANIFEST is missing (a file to check others by)");
    std::size_t checked = 0, bad = 0;
    nlohmann::ordered_json faults = nlohmann::ordered_json::array();
    for (const std::string& manifest : arguments.All("MANIFEST"))
        for (const ManifestEntry& entry : ReadManifest(manifest)) {
            ++checked;
            const std::string fault = FaultOf(entry);
            if (fault.empty()) continue;
            ++bad;
            if (json)
                faults.push_back({{"file", entry.file.string()}, {"fault", fault}});
            else
                std::cout << entry.file.string() << ' ' << fault << '\n';
        }
    if (json)
        std::cout << JsonText({{"checked", checked}, {"bad", faults}});
    else if (!arguments.Has("quiet"))
        std::cout << checked << (checked == 1 ? " file checked, " : " files checked, ")
                  << (bad == 0 ? "all as they were" : std::to_string(bad) + " bad") << '\n';
    return bad == 0 ? 0 : 1;
}

}  // namespace

Verb VerifyVerb() {
    return {"verify", "Check rendered files against a manifest", kOptions,
            "Example:\n"
            "  zelfx verify out/manifest.json\n"
            "Exit status: 0 all are whole, 1 some are not, 2 wrong usage, 3 no manifest",
            Run};
}

}  // namespace zel
