/// Prints one table, or what --benchmark_format asks for; --benchmark_out writes JSON.

#include "ip/IpTables.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace {

class Table : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& context) override {
        m_name = static_cast<int>(context.name_field_width);
        std::printf("%-*s %12s %8s %8s\n", m_name, "routine/variant/size/caches", "median us",
                    "x plain", "x scalar");
        return true;
    }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.error_occurred) {
                std::printf("%-*s %s\n", m_name, run.benchmark_name().c_str(),
                            run.error_message.c_str());
                continue;
            }
            std::printf("%-*s %12.1f", m_name, run.run_name.function_name.c_str(),
                        run.real_accumulated_time / static_cast<double>(run.iterations) * 1e6);
            for (const auto& names : kColumns) {
                const auto counter = std::ranges::find_first_of(
                    run.counters, names, {}, [](const auto& c) { return c.first; });
                if (counter == run.counters.end())
                    std::printf(" %8s", "");
                else
                    std::printf(" %8.2f", counter->second.value);
            }
            std::printf("\n");
            std::fflush(stdout);
        }
    }

private:
    // "Plain" is memcpy or, for fills, memset.
    static constexpr std::string_view kColumns[][2] = {{"x_memcpy", "x_memset"},
                                                       {"x_scalar", "x_scalar"}};
    int m_name = 0;
};

}  // namespace

int main(int argc, char** argv) {
    IpInitialize();
    const bool formatGiven = std::any_of(argv, argv + argc, [](std::string_view argument) {
        return argument.starts_with("--benchmark_format");
    });
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    Table table;
    benchmark::RunSpecifiedBenchmarks(formatGiven ? nullptr : &table);
}
