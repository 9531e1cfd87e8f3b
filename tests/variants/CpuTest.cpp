#include "ip/IpTables.h"
#include "ip/detail/LutVariants.h"
#include "ip/detail/Variants.h"
#include "tests/support/Environment.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>

namespace {

using namespace zel::ip;
using zel::test::SetEnvironment;

/// ZELFX_CPU set for the scope, and the library initialised with it.
class Forced {
public:
    explicit Forced(const char* value) {
        if (const char* const before = std::getenv("ZELFX_CPU")) m_before = before;
        SetEnvironment("ZELFX_CPU", value);
        IpInitialize();
    }
    ~Forced() {
        SetEnvironment("ZELFX_CPU", m_before ? m_before->c_str() : nullptr);
        IpInitialize();
    }
    Forced(const Forced&) = delete;
    Forced& operator=(const Forced&) = delete;

private:
    std::optional<std::string> m_before;
};

TEST(Cpu, EveryLevelOfTheProcessorCanBeForced) {
    for (const CpuLevel& level : CpuLevels()) {
        const Forced forced(level.name);
        EXPECT_EQ(ActiveCpu(), std::min(level.level, SupportedCpu())) << level.name;
    }
}

TEST(Cpu, UnknownNamesCountAsUnset) {
    for (const char* const name : {"", "AVX2", "avx", "scalar ", "fastest"}) {
        const Forced forced(name);
        EXPECT_EQ(ActiveCpu(), SupportedCpu()) << '"' << name << '"';
    }
    const Forced unset(nullptr);
    EXPECT_EQ(ActiveCpu(), SupportedCpu());
}

TEST(Cpu, NamesAndLevelsAreEachOthers) {
    for (const CpuLevel& level : CpuLevels()) {
        EXPECT_EQ(CpuNamed(level.name), level.level);
        EXPECT_STREQ(NameOf(level.level), level.name);
    }
    EXPECT_EQ(CpuNamed("avx"), std::nullopt);
}

TEST(Cpu, ScalarMeansTheReference) {
    const Forced forced("scalar");
    EXPECT_EQ(Pick(kLut8.variants).row, IpScan_Lut_8);
    EXPECT_EQ(Pick(kLut16.variants).row, IpScan_Lut_16);
    EXPECT_EQ(Pick(kLutFloat.variants).row, IpScan_Lut_Float);
}

// Pick() takes the last row that is allowed, so a list must ascend from row 0.
TEST(Cpu, ListsAscend) {
    for (const LutFamily* const family : LutFamilies()) {
        EXPECT_EQ(family->variants.front().needs, Cpu::scalar) << family->name;
        EXPECT_TRUE(std::ranges::is_sorted(family->variants, {}, &LutVariant::needs));
    }
}

}  // namespace
