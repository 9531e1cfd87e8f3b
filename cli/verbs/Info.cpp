/// zelfx info: what the processor offers, and which routines run on it.

#include "cli/CpuLevel.h"
#include "cli/EffectFinder.h"
#include "cli/Json.h"
#include "cli/Words.h"
#include "cli/verbs/Verbs.h"
#include "ip/detail/CopyVariants.h"
#include "ip/detail/FillVariants.h"
#include "ip/detail/LutVariants.h"
#include "ip/detail/Variants.h"

#include <cstdio>
#include <iostream>
#include <string>

namespace zel {

namespace {

constexpr Option kOptions[] = {
    {"--json", nullptr, "print as JSON"},
    kCpuOption,
};

template <class Variant>
void PrintFamily(const char* name, std::span<const Variant> variants) {
    std::string others;
    const Variant& chosen = ip::Pick(variants);
    for (const Variant& v : variants)
        if (&v != &chosen)
            others += std::string(others.empty() ? "" : ", ") + v.name +
                      (v.needs > ip::SupportedCpu() ? " (not here)" : "");
    std::printf("  %-18s %-9s also: %s\n", name, chosen.name, others.c_str());
}

/// Calls print(name, variants) for every family of routines.
template <class Print>
void ForEachFamily(Print print) {
    for (const auto* family : ip::LutFamilies()) print(family->name, family->variants);
    for (const auto* family : ip::CopyFamilies()) print(family->name, family->variants);
    print("fill", ip::FillVariants());
}

void PrintJson() {
    nlohmann::ordered_json json{{"version", ZELFX_VERSION},
                                {"levels", CpuWords()},
                                {"in_use", ip::NameOf(ip::ActiveCpu())}};
    for (const auto& folder : ModuleFolders()) json["module_folders"].push_back(folder.string());
    ForEachFamily(
        [&](const char* name, auto variants) { json["routines"][name] = ip::Pick(variants).name; });
    std::cout << JsonText(json);
}

void PrintText() {
    std::printf("zelfx %s\n", ZELFX_VERSION);
    std::printf("modules are looked for in:\n");
    for (const auto& folder : ModuleFolders()) std::printf("  %s\n", folder.string().c_str());
    std::string levels;
    for (const std::string& level : CpuWords()) levels += ' ' + level;
    std::printf("processor levels:%s\n", levels.c_str());
    std::printf("in use: %s (ZELFX_CPU or --cpu forces a lower one)\n",
                ip::NameOf(ip::ActiveCpu()));
    std::printf("routines:\n");
    ForEachFamily([](const char* name, auto variants) { PrintFamily(name, variants); });
}

int Run(const Arguments& arguments) {
    ChooseCpuLevel(arguments);
    arguments.Has("json") ? PrintJson() : PrintText();
    return 0;
}

}  // namespace

Verb InfoVerb() {
    return {"info", "Show where modules are looked for and which routines run here", kOptions, "",
            Run};
}

}  // namespace zel
