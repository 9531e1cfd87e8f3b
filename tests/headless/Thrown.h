#pragma once

/// The Error that a call throws, for a look at its kind and text.

#include "headless/Error.h"

#include <gtest/gtest.h>

#include <string>

namespace zel::test {

/// Fails the test and gives an empty text when nothing is thrown.
template <class Fn>
Error Thrown(Fn call) {
    try {
        call();
    } catch (const Error& e) {
        EXPECT_EQ(std::string(e.what()).find_first_of("\r\n"), std::string::npos) << e.what();
        return e;
    }
    ADD_FAILURE() << "no Error was thrown";
    return {ErrorKind::Other, ""};
}

inline testing::AssertionResult Says(const Error& error, const std::string& text) {
    if (std::string(error.what()).find(text) != std::string::npos)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "'" << text << "' is not in: " << error.what();
}

}  // namespace zel::test
