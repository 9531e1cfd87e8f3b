/// zelfx info: what the processor offers, and which routines run on it.

#include "cli/verbs/Verbs.h"
#include "ip/IpTables.h"
#include "ip/detail/CopyVariants.h"
#include "ip/detail/FillVariants.h"
#include "ip/detail/LutVariants.h"
#include "ip/detail/Variants.h"

#include <cstdio>
#include <iostream>
#include <string>

namespace zel {

namespace {

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

int Run(const Arguments&) {
    IpInitialize();
    std::string levels;
    for (const ip::CpuLevel& l : ip::CpuLevels())
        if (l.level <= ip::SupportedCpu()) levels += std::string(" ") + l.name;
    std::printf("processor levels:%s\n", levels.c_str());
    std::printf("in use: %s (ZELFX_CPU forces a lower one)\n", ip::NameOf(ip::ActiveCpu()));
    std::printf("routines:\n");
    for (const auto* family : ip::LutFamilies()) PrintFamily(family->name, family->variants);
    for (const auto* family : ip::CopyFamilies()) PrintFamily(family->name, family->variants);
    PrintFamily("fill", ip::FillVariants());
    return 0;
}

}  // namespace

Verb InfoVerb() {
    return {"info", "Show what this processor offers and which routines run on it", {}, "", Run};
}

}  // namespace zel
