/// Every allocation of a session and of a render fails in turn. What leaves is an
/// exception, and what comes after is as if nothing had been.

#include "headless/Error.h"
#include "tests/endurance/Effects.h"
#include "tests/endurance/FailingHeap.h"

#include <gtest/gtest.h>

#include <new>

namespace {

using namespace zel;
using namespace zel::test;

constexpr Personality kHosts[] = {Personality::Premiere, Personality::AfterEffects};
constexpr long kMost = 100000;

/// How a call ended.
enum class End { Good, NoMemory, Other };

template <class Call>
End Ended(Call call) {
    try {
        call();
        return End::Good;
    } catch (const std::bad_alloc&) {
        return End::NoMemory;
    } catch (const Error& e) {
        // Thrown out of the module, refused by its handler, or said by the loader.
        const std::string text = e.what();
        for (const char* told : {"bad_alloc", "with error", "cannot be loaded"})
            if (text.find(told) != std::string::npos) return End::NoMemory;
        ADD_FAILURE() << text;
        return End::Other;
    }
}

TEST(Allocation, ThatFailsInARenderLeavesNothingBehind) {
    for (const auto& file : EffectFiles())
        for (const Personality host : kHosts) {
            SCOPED_TRACE(file);
            const EffectSession session(file, host);
            const ParameterValues values = SlidersAt(session, 0.6);
            const PrPixelFormat format = session.Formats().front();
            Frame source(format, 19, 3), expected(format, 19, 3), result(format, 19, 3);
            Fill(source, 1);
            session.Render(expected, source, values);
            long number = 1;
            for (; number < kMost; ++number) {
                bool failed = false;
                const End end = Ended([&] {
                    const FailingAllocation heap(number);
                    struct Watch {
                        const FailingAllocation& heap;
                        bool& failed;
                        ~Watch() { failed = heap.HasFailed(); }
                    } watch{heap, failed};
                    session.Render(result, source, values);
                });
                if (!failed) break;
                EXPECT_EQ(end, End::NoMemory) << "allocation " << number;
                Fill(result, 99);
                session.Render(result, source, values);
                EXPECT_EQ(Difference(expected, result), "") << "after allocation " << number;
            }
            EXPECT_GT(number, 3) << "a render allocates its records and its curve";
            EXPECT_LT(number, kMost);
        }
}

TEST(Allocation, ThatFailsInASetUpLeavesNothingBehind) {
    for (const auto& file : EffectFiles())
        for (const Personality host : kHosts) {
            SCOPED_TRACE(file);
            const std::size_t expected = EffectSession(file, host).Params().All().size();
            long number = 1, refused = 0;
            for (; number < kMost; ++number) {
                bool failed = false;
                const End end = Ended([&] {
                    const FailingAllocation heap(number);
                    struct Watch {
                        const FailingAllocation& heap;
                        bool& failed;
                        ~Watch() { failed = heap.HasFailed(); }
                    } watch{heap, failed};
                    const EffectSession session(file, host);
                });
                if (!failed) break;
                // The loader passes over some of its own.
                refused += end == End::NoMemory;
                const EffectSession again(file, host);
                ASSERT_EQ(again.Params().All().size(), expected) << "after allocation " << number;
            }
            EXPECT_GT(refused, 20);
            EXPECT_LT(number, kMost);
        }
}

}  // namespace
