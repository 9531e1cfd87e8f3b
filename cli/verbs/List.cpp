/// zelfx list: the effects that are there.

#include "cli/EffectFinder.h"
#include "cli/Isolate.h"
#include "cli/Json.h"
#include "cli/verbs/Verbs.h"
#include "headless/EffectSession.h"
#include "headless/Error.h"

#include <algorithm>
#include <cstdio>
#include <iostream>

namespace zel {

namespace {

constexpr Option kOptions[] = {
    {"--json", nullptr, "print as JSON"},
    {"--names", nullptr, "print what to call them, one a line"},
    kIsolateOption,
    kIsolateLimitOption,
};

struct Found {
    std::string name, module, file;
    std::size_t parameters;
};

int Run(const Arguments& arguments) {
    std::vector<Found> effects;
    bool failed = false;
    const auto isolation = IsolationFrom(arguments);
    for (const auto& file : ModuleFiles()) {
        try {
            const EffectSession session(file, Personality::Premiere, isolation);
            const auto all = session.Params().All();
            effects.push_back(
                {session.Name(), file.stem().string(), file.string(),
                 static_cast<std::size_t>(std::ranges::count_if(all, &Parameter::IsSettable))});
        } catch (const Error& e) {
            std::cerr << "zelfx: " << e.what() << '\n';
            failed = true;
        }
    }
    if (arguments.Has("json")) {
        auto list = nlohmann::ordered_json::array();
        for (const Found& e : effects)
            list.push_back({{"name", e.name},
                            {"module", e.module},
                            {"file", e.file},
                            {"parameters", e.parameters}});
        std::cout << JsonText(list);
    } else if (arguments.Has("names")) {
        for (const Found& e : effects) std::cout << ShortName(e.module) << '\n';
    } else {
        for (const Found& e : effects)
            std::printf("%-28s %-32s %3zu parameters\n", e.name.c_str(), e.module.c_str(),
                        e.parameters);
    }
    if (effects.empty() && !failed)
        throw Error(ErrorKind::Module, "there are no effect modules " + WhereModulesBelong());
    return failed || effects.empty() ? static_cast<int>(ErrorKind::Module) : 0;
}

}  // namespace

Verb ListVerb() { return {"list", "List the effects that are there", kOptions, "", Run}; }

}  // namespace zel
