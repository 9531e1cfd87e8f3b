#pragma once

/// A wish to run an effect in a process of its own, so that nothing it does ends or
/// hangs the host.

#include <chrono>
#include <functional>
#include <string>

namespace zel {

struct Isolation {
    std::chrono::seconds limit{60};  // for any one command, before the effect is given up
    /// Told of what goes wrong in the set-down, when results can no longer be spoiled.
    std::function<void(const std::string&)> note = {};
};

}  // namespace zel
