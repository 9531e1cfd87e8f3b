#pragma once

/// JSON for the verbs that offer it.

#include <nlohmann/json.hpp>

#include <string>

namespace zel {

/// Indented, with a line end behind it. File names need not be UTF-8: what is not
/// becomes the replacement character.
inline std::string JsonText(const nlohmann::ordered_json& json) {
    return json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
}

}  // namespace zel
