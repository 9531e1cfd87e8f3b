#pragma once

/// The files around a module that are written from its row: the resource script of
/// Windows, and what a bundle of the Mac holds beside its program.

#include "packaging/Pipl.h"

#include <string>

namespace zel::packaging {

/// Source for the resource compiler: the property list and the version that the file
/// manager shows. `product` is the version of the whole, such as "0.1.0".
std::string WindowsScript(const Effect& effect, const std::string& product);

/// A resource file with the property list as its only resource.
Bytes MacResources(const Effect& effect, Platform platform);

std::string InfoPlist(const Effect& effect, const std::string& product);

/// Contents of PkgInfo: type and creator, without a line end.
inline constexpr const char* kPkgInfo = "eFKTFXTC";

}  // namespace zel::packaging
