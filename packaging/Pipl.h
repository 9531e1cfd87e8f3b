#pragma once

/// The resource from which a host learns what a module is, before it loads it: a list of
/// properties, in the form of each platform.

#include "packaging/Effects.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zel::packaging {

using Bytes = std::vector<std::uint8_t>;

/// Who reads the resource. On the Mac it is big-endian, whatever the processor.
enum class Platform {
    Windows64,
    Mac32,  // hosts of the interface's generation 12
    Mac64,  // Intel and ARM, generation 13
};

inline constexpr std::uint16_t kPiplId = 16000;

/// One property as it lies in the resource, header and padding included.
struct Property {
    std::string key;  // in reading order
    Bytes bytes;
};

/// The properties of an effect, in the customary order.
std::vector<Property> PiplProperties(const Effect& effect, Platform platform);

/// What comes before the properties: version, count and, on Windows, a leading word.
Bytes PiplHeader(std::size_t properties, Platform platform);

/// The whole resource.
Bytes Pipl(const Effect& effect, Platform platform);

}  // namespace zel::packaging
