#include "cli/CpuLevel.h"

#include "headless/Error.h"
#include "headless/Text.h"
#include "ip/IpTables.h"
#include "ip/detail/Cpu.h"

#include <cstdlib>

namespace zel {

namespace {

constexpr const char* kVariable = "ZELFX_CPU";

void RequireLevel(const std::string& where, const std::string& name) {
    const auto level = ip::CpuNamed(name);
    if (level && *level <= ip::SupportedCpu()) return;
    std::vector<std::string> names;
    for (const ip::CpuLevel& l : ip::CpuLevels())
        if (l.level <= ip::SupportedCpu()) names.emplace_back(l.name);
    throw Error(ErrorKind::Usage, where + " cannot be '" + name + "'" +
                                      (level ? ", which this processor lacks" : "") +
                                      ": it takes " + Alternatives(names));
}

}  // namespace

void ChooseCpuLevel(const Arguments& arguments) {
    if (const auto given = arguments.Last("cpu")) {
        RequireLevel("--cpu", *given);
#if defined(_WIN32)
        _putenv_s(kVariable, given->c_str());
#else
        setenv(kVariable, given->c_str(), 1);
#endif
    } else if (const char* const forced = std::getenv(kVariable); forced && *forced) {
        RequireLevel(kVariable, forced);
    }
    // Modules read the variable when they are set up.
    IpInitialize();
}

}  // namespace zel
