#pragma once

#include <optional>

namespace zel::test {

/// The int that `command` throws, if it throws one. Effects report a missing basic suite
/// this way.
template <class Command>
std::optional<int> ThrownBy(Command command) {
    try {
        command();
    } catch (int thrown) {
        return thrown;
    }
    return std::nullopt;
}

}  // namespace zel::test
