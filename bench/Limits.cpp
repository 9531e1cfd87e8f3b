#include "bench/Limits.h"

#include "ip/detail/Cpu.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <string_view>

namespace zel::bench {

namespace {

enum class Against { memcpy, memset, scalar };

/// Quotients with memcpy and memset are to be at most the limit, those with the scalar
/// routine at least.
struct Limit {
    const char* routine;
    const char* variant;  // "": the one in use
    const char* place;
    Against against;
    double limit;
    ip::Cpu needs;  // the limit is that of a processor with these instructions
};

#if ZEL_X86
constexpr ip::Cpu kBase = ip::Cpu::sse2, kWide = ip::Cpu::avx2, kFull = ip::Cpu::avx512;
#else
// Stated for x86 alone.
constexpr ip::Cpu kBase{99}, kWide{99}, kFull{99};
#endif

using enum Against;

// clang-format off
constexpr Limit kLimits[] = {
    {"lut 8",           "",     "720x486/cold",   memcpy, 1.20, kFull},
    {"lut 8",           "",     "1920x1080/cold", memcpy, 0.92, kFull},
    {"lut 8",           "",     "3840x2160/cold", memcpy, 0.92, kFull},
    {"lut 16",          "",     "1920x1080/cold", memcpy, 1.00, kFull},
    {"lut 16",          "",     "3840x2160/cold", memcpy, 1.30, kFull},
    {"lut float",       "",     "1920x1080/cold", memcpy, 1.00, kFull},
    {"lut float",       "",     "3840x2160/cold", memcpy, 1.20, kFull},
    {"copy",            "",     "720x486/cold",   memcpy, 1.00, kFull},
    {"copy",            "",     "1920x1080/cold", memcpy, 1.00, kFull},
    {"copy",            "",     "3840x2160/cold", memcpy, 1.00, kFull},
    {"BGRA8 to v210",   "",     "720x486/cold",   memcpy, 2.00, kFull},
    {"BGRA8 to v210",   "",     "1920x1080/cold", memcpy, 2.00, kFull},
    {"BGRA8 to v210",   "",     "3840x2160/cold", memcpy, 2.00, kFull},
    {"BGRA8 to DpxBE",  "",     "720x486/cold",   memcpy, 1.25, kFull},
    {"BGRA8 to DpxBE",  "",     "1920x1080/cold", memcpy, 1.25, kFull},
    {"BGRA8 to DpxBE",  "",     "3840x2160/cold", memcpy, 1.25, kFull},
    {"v210 to YCbYCr8", "",     "720x486/cold",   memcpy, 1.50, kFull},
    {"v210 to YCbYCr8", "",     "1920x1080/cold", memcpy, 1.50, kFull},
    {"v210 to YCbYCr8", "",     "3840x2160/cold", memcpy, 1.50, kFull},
    {"fill RGBA8",      "",     "720x486/cold",   memset, 1.10, kFull},
    {"fill RGBA8",      "",     "1920x1080/cold", memset, 1.10, kFull},
    {"fill RGBA8",      "",     "3840x2160/cold", memset, 1.10, kFull},
    {"fill YUYV8",      "",     "720x486/cold",   memset, 1.10, kFull},
    {"fill v210",       "",     "720x486/cold",   memset, 1.10, kFull},
    {"fill RGBA16",     "",     "1920x1080/cold", memset, 1.10, kFull},
    {"fill BGRA32Float", "",    "1920x1080/cold", memset, 1.10, kFull},

    {"lut 16",          "avx2", "1920x1080/cold", scalar, 1.70, kWide},
    {"lut 16",          "avx2", "240x135/hot",    scalar, 1.70, kWide},
    {"lut float",       "avx2", "1920x1080/cold", scalar, 3.00, kWide},
    {"lut float",       "avx2", "1920x1080/hot",  scalar, 3.00, kWide},
    {"lut float",       "avx2", "240x135/hot",    scalar, 3.00, kWide},
    {"lut float",       "sse2", "1920x1080/cold", scalar, 2.00, kBase},
    {"lut float",       "sse2", "240x135/hot",    scalar, 2.00, kBase},

    {"render/Color Balance/BGRA8", "", "1920x1080/cold", memcpy, 1.05, kFull},
    {"render/Color Balance/ARGB8", "", "1920x1080/cold", memcpy, 1.05, kFull},
    {"render/Gamma master/BGRA8",  "", "1920x1080/cold", memcpy, 1.15, kFull},
    {"render/Gamma master/ARGB8",  "", "1920x1080/cold", memcpy, 1.15, kFull},
};
// clang-format on

const Figures* Find(const Results& results, const Limit& l) {
    return results.Find(l.routine, l.variant, l.place);
}

double Reached(const Limit& l, const Figures& figures) {
    return l.against == scalar ? figures.scalar : figures.plain;
}

/// In the two decimals that are printed.
bool Holds(const Limit& l, double reached) {
    const auto hundredths = [](double x) { return std::lround(100 * x); };
    return l.against == scalar ? hundredths(reached) >= hundredths(l.limit)
                               : hundredths(reached) <= hundredths(l.limit);
}

}  // namespace

void Results::Add(const std::string& row, const Figures& figures) {
    const std::size_t caches = row.rfind('/'), size = row.rfind('/', caches - 1);
    const std::size_t variant = row.rfind('/', size - 1);
    auto& variants = m_rows[row.substr(0, variant) + row.substr(size)];
    const std::string name = row.substr(variant + 1, size - variant - 1);
    const auto found = std::ranges::find(variants, name, &Variant::name);
    if (found == variants.end())
        variants.push_back({name, figures});
    else if (figures.plainTime < found->figures.plainTime)
        found->figures = figures;
}

const Figures* Results::Find(const std::string& routine, const std::string& variant,
                             const std::string& place) const {
    const auto row = m_rows.find(routine + '/' + place);
    if (row == m_rows.end()) return nullptr;
    const auto& variants = row->second;
    if (variant.empty()) return &variants.back().figures;
    const auto found = std::ranges::find(variants, variant, &Variant::name);
    return found == variants.end() ? nullptr : &found->figures;
}

void PrintLimits(const Results& results) {
    constexpr const char* kUnits[] = {"x memcpy", "x memset", "x faster"};
    std::printf("\n%-48s %-22s %8s\n", "limits, each by the quietest measurement", "wanted",
                "reached");
    for (const Limit& l : kLimits) {
        const std::string variant = *l.variant ? std::string("/") + l.variant : "";
        std::printf("%-48s %s %.2f %-10s ", (l.routine + variant + '/' + l.place).c_str(),
                    l.against == scalar ? "at least" : "at most ", l.limit,
                    kUnits[static_cast<int>(l.against)]);
        const Figures* const figures = Find(results, l);
        if (l.needs > ip::SupportedCpu())
            std::printf("        - this processor lacks what it takes\n");
        else if (!figures)
            std::printf("        - not measured\n");
        else
            std::printf("%9.2f %s\n", Reached(l, *figures),
                        Holds(l, Reached(l, *figures)) ? "met" : "missed");
    }
}

std::string MissedRows(const Results& results) {
    std::string pattern;
    for (const Limit& l : kLimits) {
        const Figures* const figures = Find(results, l);
        if (l.needs > ip::SupportedCpu() || !figures || Holds(l, Reached(l, *figures))) continue;
        // All of its variants: the scalar one, which it may be compared with, among them.
        pattern += std::string(pattern.empty() ? "" : "|") + "^" + l.routine + "/[^/]*/" + l.place;
    }
    return pattern;
}

}  // namespace zel::bench
