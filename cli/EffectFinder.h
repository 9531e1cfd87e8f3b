#pragma once

/// Looking for effect modules.

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zel {

/// Folders in which modules are looked for, in this order: those of the environment
/// variable ZELFX_PATH, `modules` beside the program, `lib/zelfx/modules` of the
/// install prefix.
std::vector<std::filesystem::path> ModuleFolders();

/// Every module file in those folders, by name; of two with one name the first.
std::vector<std::filesystem::path> ModuleFiles();

/// "color_balance" of "zel_color_balance": what a person calls a module.
std::string ShortName(const std::string& stem);

/// "in 'FOLDER' or 'FOLDER'; set ZELFX_PATH to their folder", for errors.
std::string WhereModulesBelong();

/// The module for what a person typed: a path with a folder in it, a module's name with
/// or without "zel_" and suffix, or the effect's own name; in names, case, blanks and
/// punctuation do not count. Throws Error(Module) with the names that there are.
std::filesystem::path FindModule(std::string_view effect);

}  // namespace zel
