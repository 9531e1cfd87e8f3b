#include "ip/Ip.h"

#include <gtest/gtest.h>

namespace {

/// Frame routines run as they do in a host: with the variants that the processor has, or
/// that ZELFX_CPU asks for. Before this they would run the reference rows.
class Initialized : public testing::Environment {
    void SetUp() override { IpInitialize(); }
};

const testing::Environment* const g_initialized =
    testing::AddGlobalTestEnvironment(new Initialized);

}  // namespace
