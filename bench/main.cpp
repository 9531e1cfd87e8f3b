/// Prints one table, then what of it the library is held to. All options of Google
/// Benchmark count; besides:
///   --json=FILE   writes everything that was measured
/// The program stays on one processor.

#include "bench/Limits.h"
#include "ip/IpTables.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <optional>
#include <string_view>

#if defined(__linux__)
#include <sched.h>
#endif

namespace {

using namespace zel::bench;

/// The last processor that the program may use: the first ones serve most interrupts.
void StayOnOneProcessor() {
#if defined(__linux__)
    cpu_set_t allowed;
    if (sched_getaffinity(0, sizeof allowed, &allowed) != 0) return;
    for (std::size_t cpu = CPU_SETSIZE; cpu-- > 0;) {
        if (!CPU_ISSET(cpu, &allowed)) continue;
        cpu_set_t one;
        CPU_ZERO(&one);
        CPU_SET(cpu, &one);
        sched_setaffinity(0, sizeof one, &one);
        return;
    }
#endif
}

/// JSON in the form of Google Benchmark, over several runs.
class Json {
public:
    explicit Json(const std::string& file) : m_out(file) {
        m_reporter.SetOutputStream(&m_out);
        m_reporter.SetErrorStream(&m_out);
    }
    ~Json() {
        if (m_started) m_reporter.Finalize();
    }
    Json(const Json&) = delete;
    Json& operator=(const Json&) = delete;

    void Report(const benchmark::BenchmarkReporter::Context& context) {
        if (!m_started) m_reporter.ReportContext(context);
        m_started = true;
    }
    void Report(const std::vector<benchmark::BenchmarkReporter::Run>& runs) {
        m_reporter.ReportRuns(runs);
    }

private:
    std::ofstream m_out;
    benchmark::JSONReporter m_reporter;
    bool m_started = false;
};

class Table : public benchmark::BenchmarkReporter {
public:
    explicit Table(Json* json) : m_json(json) {}

    bool ReportContext(const Context& context) override {
        if (m_json) m_json->Report(context);
        m_name = static_cast<int>(context.name_field_width);
        std::printf("%-*s %12s %8s %8s\n", m_name, "routine/variant/size/caches", "median us",
                    "x plain", "x scalar");
        return true;
    }

    void ReportRuns(const std::vector<Run>& runs) override {
        if (m_json) m_json->Report(runs);
        for (const Run& run : runs) {
            if (run.error_occurred)
                std::printf("%-*s %s\n", m_name, run.benchmark_name().c_str(),
                            run.error_message.c_str());
            else
                Print(run);
        }
        std::fflush(stdout);
    }

    Results results;

private:
    static std::optional<double> Counter(const Run& run, std::string_view name) {
        const auto found = run.counters.find(std::string(name));
        if (found == run.counters.end()) return {};
        return found->second.value;
    }

    void Print(const Run& run) {
        const std::string& row = run.run_name.function_name;
        const double seconds = run.real_accumulated_time / static_cast<double>(run.iterations);
        const auto memcpy = Counter(run, "x_memcpy"), memset = Counter(run, "x_memset");
        const auto plain = memcpy ? memcpy : memset, scalar = Counter(run, "x_scalar");
        std::printf("%-*s %12.1f", m_name, row.c_str(), seconds * 1e6);
        for (const auto& quotient : {plain, scalar})
            quotient ? std::printf(" %8.2f", *quotient) : std::printf(" %8s", "");
        std::printf("\n");
        if (plain) results.Add(row, {seconds / *plain, *plain, scalar.value_or(0)});
    }

    Json* m_json;
    int m_name = 0;
};

/// Takes --json=FILE out of the arguments.
std::optional<std::string> TakeJsonOption(int& argc, char** argv) {
    constexpr std::string_view kOption = "--json=";
    char** const end = argv + argc;
    char** const found =
        std::find_if(argv, end, [=](std::string_view a) { return a.starts_with(kOption); });
    if (found == end) return {};
    std::string file = *found + kOption.size();
    std::move(found + 1, end, found);
    --argc;
    return file;
}

}  // namespace

int main(int argc, char** argv) {
    constexpr int kRounds = 4;  // more than this many quiet moments are not to be hoped for
    IpInitialize();
    StayOnOneProcessor();
    const auto file = TakeJsonOption(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    std::optional<Json> json;
    if (file) json.emplace(*file);
    Table table(json ? &*json : nullptr);
    benchmark::RunSpecifiedBenchmarks(&table);
    for (int round = 0; round < kRounds; ++round) {
        const std::string missed = MissedRows(table.results);
        if (missed.empty()) break;
        std::printf("\nonce more, since a limit was missed:\n");
        benchmark::RunSpecifiedBenchmarks(&table, missed);
    }
    PrintLimits(table.results);
}
