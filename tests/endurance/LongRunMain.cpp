/// long_run [RENDERS]: status 0 when the memory stays constant and every result right.

#include "tests/endurance/LongRun.h"

#include <cstdio>
#include <cstdlib>
#include <exception>

int main(int argc, char** argv) {
    try {
        const long renders = argc > 1 ? std::atol(argv[1]) : 100000;
        const auto report = zel::test::RunLong(renders, [](long done, long kib) {
            std::printf("%9ld renders, %6ld KiB resident\n", done, kib);
            std::fflush(stdout);
        });
        std::printf("largest resident memory: %ld KiB in the first half, %ld in the second: %s\n",
                    report.settledKiB, report.largestKiB,
                    report.IsConstant() ? "constant" : "it grows");
        std::printf("results that differ from the first of their kind: %ld\n", report.wrong);
        return report.IsConstant() && report.wrong == 0 ? 0 : 1;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "long_run: %s\n", e.what());
        return 2;
    }
}
