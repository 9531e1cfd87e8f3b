#include "cli/EffectFinder.h"

#include "headless/Error.h"
#include "headless/Module.h"
#include "headless/Text.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <string>

#if defined(_WIN32)
#include <windows.h>
#endif

namespace zel {

namespace fs = std::filesystem;

namespace {

fs::path ProgramFolder() {
#if defined(_WIN32)
    wchar_t name[32768];
    const DWORD length = GetModuleFileNameW(nullptr, name, 32768);
    return fs::path(std::wstring(name, length)).parent_path();
#else
    std::error_code ignored;
    return fs::read_symlink("/proc/self/exe", ignored).parent_path();
#endif
}

std::vector<fs::path> SplitPathList(std::string_view list) {
#if defined(_WIN32)
    constexpr char separator = ';';
#else
    constexpr char separator = ':';
#endif
    std::vector<fs::path> folders;
    while (!list.empty()) {
        const std::string_view folder = list.substr(0, list.find(separator));
        if (!folder.empty()) folders.emplace_back(folder);
        list.remove_prefix(std::min(list.size(), folder.size() + 1));
    }
    return folders;
}

/// Letters and digits in lower case, without a leading "zel": "ZEL Color Balance" and
/// "zel_color_balance" are both "colorbalance".
std::string Folded(std::string_view name) {
    std::string folded = Lower(name);
    std::erase_if(folded, [](unsigned char c) { return !std::isalnum(c); });
    return folded.starts_with("zel") ? folded.substr(3) : folded;
}

/// A bare name is one of an effect, even where a file of that name lies about.
bool IsPath(std::string_view effect) {
    const fs::path path(effect);
    // Effects' own names have slashes too: "Gamma/Gain/Offset".
    return path.has_parent_path() && (effect.ends_with(Module::kSuffix) || path.is_absolute() ||
                                      effect.starts_with('.') || fs::exists(path));
}

}  // namespace

std::vector<fs::path> ModuleFolders() {
    std::vector<fs::path> folders;
    if (const char* list = std::getenv("ZELFX_PATH")) folders = SplitPathList(list);
    folders.push_back(ProgramFolder() / "modules");
    folders.push_back(ProgramFolder().parent_path() / "lib" / "zelfx" / "modules");
    return folders;
}

std::vector<fs::path> ModuleFiles() {
    std::vector<fs::path> files;
    for (const fs::path& folder : ModuleFolders()) {
        std::vector<fs::path> found;
        std::error_code ignored;
        for (const auto& entry : fs::directory_iterator(folder, ignored))
            if (entry.path().extension() == Module::kSuffix) found.push_back(entry.path());
        std::ranges::sort(found);
        for (const fs::path& file : found)
            if (std::ranges::none_of(
                    files, [&](const fs::path& f) { return f.filename() == file.filename(); }))
                files.push_back(file);
    }
    return files;
}

std::string ShortName(const std::string& stem) {
    return stem.starts_with("zel_") ? stem.substr(4) : stem;
}

std::string WhereModulesBelong() {
    std::vector<std::string> folders;
    for (const fs::path& folder : ModuleFolders()) folders.push_back("'" + folder.string() + "'");
    return "in " + Alternatives(folders) + "; set ZELFX_PATH to their folder";
}

fs::path FindModule(std::string_view effect) {
    if (IsPath(effect)) return fs::path(effect);
    std::string_view wanted = effect;
    if (wanted.ends_with(Module::kSuffix)) wanted.remove_suffix(std::strlen(Module::kSuffix));
    std::vector<std::string> names;
    for (const fs::path& file : ModuleFiles()) {
        const std::string stem = file.stem().string();
        if (Folded(stem) == Folded(wanted)) return file;
        names.push_back(ShortName(stem));
    }
    if (names.empty())
        throw Error(ErrorKind::Module, "there is no effect '" + std::string(effect) +
                                           "': there are no modules " + WhereModulesBelong());
    // A module in the current folder, as a last resort.
    if (wanted.size() < effect.size() && fs::exists(effect)) return fs::path(effect);
    const std::string hint = DidYouMean(wanted, names);
    throw Error(ErrorKind::Module, "there is no effect '" + std::string(effect) + "'" +
                                       (hint.empty() ? "; there is " + AllOf(names) : hint));
}

}  // namespace zel
